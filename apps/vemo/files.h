// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace vemo::cli {

// The bytes of a file; nothing when it can't be read, a folder for one.
std::optional<std::string> readFile(const std::string& path);
// All of standard input.
std::optional<std::string> readInput();

}  // namespace vemo::cli
