// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

// The "type" of words that stand for numbers only beside certain others; it is gone once that is decided.
namespace vemo::number_word {

inline constexpr std::u16string_view fraction = u"fraction_word";    // "half of 80"
inline constexpr std::u16string_view numerator = u"numerator_word";  // "two thirds of 90"
inline constexpr std::u16string_view addend = u"addend_word";        // "1 and a half hours", "2 heures et demie"
inline constexpr std::u16string_view mixed = u"mixed_word";          // "one and a half hours"

}  // namespace vemo::number_word
