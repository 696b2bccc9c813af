// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/function_ref.h"

namespace vemo {

// The bytes of a regular file; nothing when it can't be read or holds more than `most`.
std::optional<std::string> readFileAtMost(const std::filesystem::path& path, std::size_t most);

// The files below a folder that are `wanted`, in the order of their paths. What can't be read is left out, and so is
// what comes after so many entries that no such folder was meant, which is logged.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder,
                                              FunctionRef<bool(const std::filesystem::path&)> wanted,
                                              const std::function<void(std::string_view)>& log);

// Who may read a file that was not there before.
enum class NewFile { forOwner, forEverybody };

// Puts a file in the place of an earlier one, whole or not at all: whoever reads meanwhile, even after a loss of
// power, sees the old bytes or the new ones. A link keeps leading to it, and an earlier file its permissions. False
// when it could not be written, which `problem` then explains; the earlier file is untouched.
bool replaceFile(const std::filesystem::path& path, std::string_view bytes, NewFile created = NewFile::forOwner,
                 std::string* problem = nullptr);

// Removes the files that processes left beside this one when they were ended while they replaced it. Files that are
// still being written are left alone.
void removeLeftovers(const std::filesystem::path& path);

}  // namespace vemo
