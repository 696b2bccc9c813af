// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

// A stretch of a text, in UTF-16 units.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;

    std::size_t end() const { return location + length; }
    std::u16string_view in(std::u16string_view text) const { return text.substr(location, length); }
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

// Ill-formed input becomes U+FFFD.
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view text);

// Language-independent lower case.
std::u16string lowercased(std::u16string_view text);

// The questions below are asked for every character of a line. Most characters are of ASCII, and are answered here.
namespace beyond_ascii {
char16_t lowercasedUnit(char16_t character);
bool isLetter(char16_t character);
bool isWhitespace(char16_t character);
}  // namespace beyond_ascii

// True for "0" to "9" alone.
constexpr bool isAsciiDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}
// Lower case of one unit, so that positions stay the same.
inline char16_t lowercasedUnit(char16_t character) {
    if (character >= 0x80) return beyond_ascii::lowercasedUnit(character);
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 0x20) : character;
}
inline bool isLetter(char16_t character) {
    if (character >= 0x80) return beyond_ascii::isLetter(character);
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}
// True for white space and line breaks, as Unicode has them.
inline bool isWhitespace(char16_t character) {
    if (character >= 0x80) return beyond_ascii::isWhitespace(character);
    return character == u' ' || (character >= 9 && character <= 13);
}
bool hasLetter(std::u16string_view text);
bool isCjk(char16_t character);  // of a script that puts no blanks between words
std::u16string_view trimmed(std::u16string_view text);
// As phrases are stored: in lower case, with one blank between words and none around them.
std::u16string spoken(std::u16string_view text);
std::u16string joined(const std::vector<std::u16string>& parts, std::u16string_view separator);

// Replaces letters, digits and signs of full width by those of ASCII. The length stays the same.
std::u16string foldedWidth(std::u16string_view text);

// Every line with a tab before and a line feed after it; nothing for an empty text.
std::u16string indentLines(std::u16string_view text);

// The lines of a text. Terminators are LF, CR, CRLF, U+0085, U+2028 and U+2029; one at the very end
// starts no further line.
std::vector<TextRange> lineRanges(std::u16string_view text);

// `format` with the argument in place of its first "%@"; nothing when it has none.
std::optional<std::u16string> formatted(std::u16string_view format, std::u16string_view argument);

// True for the same characters, composed or not.
bool canonicallyEqual(std::u16string_view a, std::u16string_view b);

// User-perceived characters (grapheme clusters), counted up to `limit`.
std::size_t graphemeCount(std::u16string_view text, std::size_t limit);

}  // namespace vemo
