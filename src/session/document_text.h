// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vemo::session {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

// The offset of the first byte that is not UTF-8, or nothing.
std::optional<std::size_t> firstInvalidByte(std::string_view text);

}  // namespace vemo::session
