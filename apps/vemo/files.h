// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vemo::cli {

// The bytes of a file; nothing when it can't be read, a folder for one, or holds more than `most`.
std::optional<std::string> readFile(const std::string& path, std::size_t most = static_cast<std::size_t>(-1));
// All of standard input.
std::optional<std::string> readInput();

}  // namespace vemo::cli
