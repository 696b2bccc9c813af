// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string>

namespace vemo::session {

// The bytes of a file; nothing when it can't be read, a folder for one, or holds more than `most`.
std::optional<std::string> readFile(const std::string& path, std::size_t most = static_cast<std::size_t>(-1));
// What tells one state of a file from another, a file that took its place for one.
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
