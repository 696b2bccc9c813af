// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vemo::session {

// A name of a file with the home folder in place of a "~" at its beginning.
std::filesystem::path expanded(const std::string& name);

// Writes a file so that it is there as a whole, or stays as it was; a link keeps leading to it, and an existing file
// its permissions. Says why it can't be; nothing when it was written.
std::string replaceFile(const std::filesystem::path& file, std::string_view text);

}  // namespace vemo::session
