// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "options.h"

namespace vemo::cli {

// Answers the text of the options' file now, and whenever the file has changed, until it is interrupted or an answer
// fails; gives the exit status.
int watch(const Options& options, const std::string& text, const std::function<int(const std::string&)>& answer);

}  // namespace vemo::cli
