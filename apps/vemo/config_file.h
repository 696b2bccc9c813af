// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "options.h"
#include "vemo/result.h"

namespace vemo::cli {

// $XDG_CONFIG_HOME/vemo/config.toml, else ~/.config/vemo/config.toml; empty without a home.
std::string configFile();

// The options with what the file says, before the command line, which wins. Files it names are found from its folder. A
// missing file is no fault. A failure says in one line what is wrong: file, line and key.
Result<Options> readConfig(const std::string& file, Options options);

}  // namespace vemo::cli
