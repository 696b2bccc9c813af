// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/locale_info.h"
#include "vemo/decimal_number.h"

namespace vemo {

// What the digits of a literal look like, whatever number they were read as.

bool isDigits(std::u16string_view text, std::size_t shortest, std::size_t longest);
bool isYear(std::u16string_view text);  // 1900 to 2199

// True for digits that the locale would not group so: "1 10", "2,50" in English, "4, 120".
bool isOddlyJoined(std::u16string_view literal, const LocaleInfo& locale);

// The amount of money that a literal without blanks shows in the way of other places: two digits after the last mark,
// and groups of three before it, where the locale has other marks for either ("12,50" and "1.250,00" in English).
std::optional<DecimalNumber> foreignAmount(std::u16string_view literal, const LocaleInfo& locale);

}  // namespace vemo
