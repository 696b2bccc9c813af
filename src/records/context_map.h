// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "base/layered_map.h"
#include "base/text.h"
#include "vemo/context.h"
#include "vemo/context_keys.h"

namespace vemo {

// Entries by key.
class ContextMap : public LayeredMap<IsEquatable> {
public:
    ContextMap() = default;
    explicit ContextMap(LayeredMap map) : LayeredMap(std::move(map)) {}
};

namespace context_keys {
inline constexpr std::u16string_view names = u"hidden_names_";  // written by contexts alone
inline constexpr std::u16string_view label = u"hidden_label_";  // Value: the result of the line with this label
}  // namespace context_keys

// The letters, and the digits after them, with which a variable's name or a text begins: what a line must mention to
// use the name. Empty for names that begin with a sign: they are rare, and share one key.
inline std::u16string_view nameHead(std::u16string_view text) {
    const auto isLetter = [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c == u'$' ||
               (c >= 0x80 && !isWhitespace(c));
    };
    const auto letters = std::find_if_not(text.begin(), text.end(), isLetter);
    if (letters == text.begin()) return {};
    return {text.begin(), std::find_if_not(letters, text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; })};
}

// The key of a number that changes whenever a name comes or goes that begins with the head and has more after it. A
// line that mentions the head depends on the key, and so is calculated again then.
inline std::u16string namesKey(std::u16string_view head) {
    return std::u16string(context_keys::names).append(head);
}

// The key of a label's result, given the label without its colon; empty for words that no line below can use.
inline std::u16string labelKey(std::u16string_view words) {
    constexpr std::size_t longest = 64;  // longer ones are sentences
    words = trimmed(words);
    if (words.empty() || words.size() > longest || !isLetter(words.front())) return {};
    return std::u16string(context_keys::label).append(lowercased(words));
}

}  // namespace vemo
