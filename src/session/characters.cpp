// SPDX-License-Identifier: MIT
#include "session/characters.h"

#include <wchar.h>

#include "session/printable.h"

namespace vemo::session {

namespace {

constexpr char32_t joiner = 0x200d;

bool isModifier(char32_t code) {
    return code >= 0x1f3fb && code <= 0x1f3ff;  // tones of skin
}

bool isFlagLetter(char32_t code) {
    return code >= 0x1f1e6 && code <= 0x1f1ff;
}

}  // namespace

Character characterAt(std::u16string_view text, std::size_t at) {
    const char16_t unit = text[at];
    if (unit < 0xd800 || unit > 0xdfff) return {unit, 1};
    const char16_t next = at + 1 < text.size() ? text[at + 1] : u'\0';
    if (unit > 0xdbff || next < 0xdc00 || next > 0xdfff) return {0xfffd, 1};
    return {0x10000 + ((char32_t(unit) - 0xd800) << 10) + (char32_t(next) - 0xdc00), 2};
}

std::size_t columnsOf(char32_t code) {
    if (isControl(code)) return 1;
    const int width = wcwidth(static_cast<wchar_t>(code));
    return width > 0 ? static_cast<std::size_t>(width) : 0;
}

std::size_t columnsOf(std::u16string_view text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        columns += columnsOf(character.code);
        i += character.length;
    }
    return columns;
}

std::size_t nextStop(std::u16string_view text, std::size_t at) {
    if (at >= text.size()) return text.size();
    Character last = characterAt(text, at);
    at += last.length;
    for (bool paired = false; at < text.size();) {
        const Character next = characterAt(text, at);
        const bool flag = !paired && isFlagLetter(last.code) && isFlagLetter(next.code);
        if (columnsOf(next.code) > 0 && last.code != joiner && !isModifier(next.code) && !flag) break;
        paired = paired || flag;
        at += next.length;
        last = next;
    }
    return at;
}

std::size_t previousStop(std::u16string_view text, std::size_t at) {
    std::size_t stop = 0;
    for (std::size_t next = nextStop(text, 0); next < at; next = nextStop(text, next)) stop = next;
    return stop;
}

}  // namespace vemo::session
