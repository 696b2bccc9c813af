// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>

namespace vemo::session {

// The bytes of a file. Nothing when it can't be read, as a folder can't, or holds more than `most`.
std::optional<std::string> readFile(const std::string& path, std::size_t most = static_cast<std::size_t>(-1));
// Tells one state of a file from another, and from a file that took its place.
struct FileStamp {
    ino_t node = 0;
    off_t size = 0;
    time_t seconds = 0;
    long nanoseconds = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
FileStamp stampOf(const std::string& file);

// All of standard input.
std::optional<std::string> readInput();

}  // namespace vemo::session
