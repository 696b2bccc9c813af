// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

// The "type" of words that stand for numbers only beside certain others; it is gone once that is decided.
namespace vemo::number_word {

inline constexpr std::u16string_view fraction = u"fraction_word";    // "half of 80"
inline constexpr std::u16string_view numerator = u"numerator_word";  // "two thirds of 90"

}  // namespace vemo::number_word
