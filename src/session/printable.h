// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo::session {

// True for a character that would change the state of a terminal or the order of what it shows.
bool isControl(char32_t code);

// UTF-8 text without anything that would change the state of a terminal or the order of what it shows: control
// characters and bidirectional overrides become the replacement character, marks of direction go, and tabs become
// blanks.
std::string printable(std::string_view text);

// The same for text of several lines: line feeds stay.
std::string printableLines(std::string_view text);

// JSON text with such characters as escapes, which mean the same; it has them in strings only.
std::string escapedJson(std::string_view json);

}  // namespace vemo::session
