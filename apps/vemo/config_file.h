// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "options.h"
#include "vemo/result.h"

namespace vemo::cli {

// The options with what the configuration file says, before the command line, which wins. A failure says in one line
// what is wrong: file, line and key.
Result<Options> readConfig(const std::string& file, Options options);

}  // namespace vemo::cli
