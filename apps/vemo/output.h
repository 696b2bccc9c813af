// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo::cli {

// Writes everything to standard output. False when that can't be done; the person has been told then, unless the reader
// is gone.
bool writeOutput(std::string_view text);

// A line on standard error, "vemo: …", in which no character controls the terminal.
void complain(std::string_view message);

}  // namespace vemo::cli
