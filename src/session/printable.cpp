// SPDX-License-Identifier: MIT
#include "session/printable.h"

#include <cstdio>

namespace vemo::session {

namespace {

constexpr std::string_view replacement = "\xef\xbf\xbd";

struct Character {
    char32_t code = 0;
    std::size_t length = 1;
};

// The character at a place, of three bytes at the most: longer ones are harmless, and are passed over byte by byte. So
// is the beginning of one that is not whole, as a file's name may have it: a control may stand right after it.
Character characterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
    const auto continues = [&](std::size_t i) { return at + i < text.size() && (byte(i) & 0xc0u) == 0x80; };
    const unsigned char first = byte(0);
    if (first >= 0xc2 && first < 0xe0 && continues(1)) return {((first & 0x1fu) << 6) | (byte(1) & 0x3fu), 2};
    if (first >= 0xe0 && first < 0xf0 && continues(1) && continues(2))
        return {((first & 0x0fu) << 12) | ((byte(1) & 0x3fu) << 6) | (byte(2) & 0x3fu), 3};
    return {first < 0x80 ? first : char32_t(0xfffd), 1};
}

bool isDirectionMark(char32_t code) {
    return code == 0x200e || code == 0x200f || code == 0x061c;
}

std::string cleaned(std::string_view text, bool keepsLineFeeds) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        if (character.code == U'\t')
            result += "    ";
        else if (isControl(character.code) && !(keepsLineFeeds && character.code == U'\n'))
            result += replacement;
        else if (!isDirectionMark(character.code))
            result += text.substr(i, character.length);
        i += character.length;
    }
    return result;
}

}  // namespace

bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029 ||
           (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

std::string printable(std::string_view text) {
    return cleaned(text, false);
}

std::string printableLines(std::string_view text) {
    return cleaned(text, true);
}

std::string escapedJson(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    for (std::size_t i = 0; i < json.size();) {
        const Character character = characterAt(json, i);
        if (character.code >= 0x20 && (isControl(character.code) || isDirectionMark(character.code))) {
            char escape[7];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character.code & 0xffff));
            result += escape;
        } else {
            result += json.substr(i, character.length);
        }
        i += character.length;
    }
    return result;
}

}  // namespace vemo::session
