// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

// The "type" of words that stand for numbers only beside certain others; it is gone once that is decided.
namespace vemo::number_word {

inline constexpr std::u16string_view fraction = u"fraction_word";  // "half of 80"
inline constexpr std::u16string_view addend = u"addend_word";      // "1 and a half hours", "2 heures et demie"
inline constexpr std::u16string_view mixed = u"mixed_word";        // "one and a half hours"
inline constexpr std::u16string_view separator = u"separator";     // between the values of a function
inline constexpr std::u16string_view power = u"power";             // raised digits: "5\u00b2"
inline constexpr std::u16string_view factorial = u"factorial";     // "10!"
inline constexpr std::u16string_view count = u"count_word";        // "two cups"
inline constexpr std::u16string_view currency = u"currency_word";  // "45 kr": the codes that it may mean follow
inline constexpr std::u16string_view multiple = u"multiple_word";  // "twice 15"

}  // namespace vemo::number_word
