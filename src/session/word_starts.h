// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace vemo::session {

// Where the last words of the text begin, up to four with one blank between them, the longest stretch first: what a
// completion may replace. Nothing where the text ends in a blank or sign.
std::vector<std::size_t> wordStarts(std::u16string_view text);

// True in any case of the letters of ASCII.
bool beginsWith(std::u16string_view text, std::u16string_view beginning);

}  // namespace vemo::session
