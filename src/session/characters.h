// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace vemo::session {

// A character of UTF-16 text: a surrogate pair is one, and half of one is the replacement character.
struct Character {
    char32_t code = 0;
    std::size_t length = 1;  // in units
};

Character characterAt(std::u16string_view text, std::size_t at);

// Columns on a terminal of a character as it is shown: what controls a terminal takes one, as its replacement does.
std::size_t columnsOf(char32_t code);
std::size_t columnsOf(std::u16string_view text);

// Where the cursor stops next to `at`, to the right and to the left: it steps over a character together with what
// combines with it or is joined to it.
std::size_t nextStop(std::u16string_view text, std::size_t at);
std::size_t previousStop(std::u16string_view text, std::size_t at);

}  // namespace vemo::session
