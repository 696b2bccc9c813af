// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vemo/decimal_number.h"

// Whole numbers as programmers use them: in bases of a power of two, and as bits.
namespace vemo {

// The whole number that this one is but for rounding, which is within 10^-30 of it, or 10^-36 of its size, but at most
// 10^-6; nothing when it is none.
std::optional<DecimalNumber> nearlyWhole(const DecimalNumber& number);

// The same, but for other numbers the number without its fraction.
DecimalNumber wholeNumber(const DecimalNumber& number);

// All digits of a whole number's magnitude, in lower case.
std::u16string digitsInBase(const DecimalNumber& whole, unsigned bitsPerDigit);
// The number with these digits; not-a-number when it is out of range.
DecimalNumber numberFromDigits(std::u16string_view digits, unsigned bitsPerDigit);

// The whole number in two's complement; nothing from 2^64 in magnitude on.
std::optional<std::uint64_t> bitsOf(const DecimalNumber& number);

}  // namespace vemo
