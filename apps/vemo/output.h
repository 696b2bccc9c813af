// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo::cli {

// Writes all of it to standard output. False where that can't be, which has been said, but for a reader that is gone.
bool writeOutput(std::string_view text);

// A line on standard error, "vemo: …", in which no character controls the terminal.
void complain(std::string_view message);

}  // namespace vemo::cli
