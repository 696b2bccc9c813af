// SPDX-License-Identifier: MIT
#include "base/composed_text.h"

#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace vemo {

namespace {

// Those of letters, and of kana.
bool isMark(char16_t c) {
    return c >= 0x300 && (c <= 0x36f || c == 0x3099 || c == 0x309a);
}

std::u16string composed(std::u16string_view letter) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* rules = unorm2_getNFCInstance(&status);
    std::u16string result(letter.size() + 1, u'\0');  // composing makes nothing longer
    const std::int32_t length =
        U_FAILURE(status) ? 0
                          : unorm2_normalize(rules, letter.data(), static_cast<std::int32_t>(letter.size()),
                                             result.data(), static_cast<std::int32_t>(result.size()), &status);
    if (U_FAILURE(status) || static_cast<std::size_t>(length) > letter.size()) return std::u16string(letter);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

}  // namespace

std::optional<ComposedText> composedText(std::u16string_view text) {
    if (std::none_of(text.begin(), text.end(), isMark)) return std::nullopt;
    ComposedText result;
    for (std::size_t i = 0, end = 0; i < text.size(); i = end) {
        const bool pair = U16_IS_LEAD(text[i]) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1]);
        end = i + (pair ? 2 : 1);
        const std::size_t marks = end;
        while (end < text.size() && isMark(text[end])) ++end;
        const std::u16string_view letter = text.substr(i, end - i);
        const std::u16string units = end == marks ? std::u16string(letter) : composed(letter);
        for (std::size_t k = 0; k < units.size(); ++k) result.places.push_back(i + k);
        result.text += units;
    }
    result.places.push_back(text.size());
    return result;
}

}  // namespace vemo
