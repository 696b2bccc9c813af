// SPDX-License-Identifier: MIT
#pragma once

#include "decimal/wide_integer.h"
#include "vemo/decimal_number.h"

namespace vemo {

// What an integer leaves out of the exact value, as a part of its last unit.
enum class Tail : std::uint8_t { none, belowHalf, half, aboveHalf };

// The exact result of an operation: ±(coefficient + tail) × 10^exponent. With a tail, the coefficient
// has 38 digits or more.
template <class Integer>
struct ExactDecimal {
    Integer coefficient;
    int exponent = 0;
    bool negative = false;
    Tail tail = Tail::none;
};

// Rounds once, to 38 digits, to the scale and to the smallest exponent together.
DecimalNumber rounded(const ExactDecimal<UInt128>& exact, RoundingBehavior behavior, DecimalStatus* status);
DecimalNumber rounded(const ExactDecimal<UInt256>& exact, RoundingBehavior behavior, DecimalStatus* status);

inline DecimalNumber failed(DecimalStatus reason, DecimalStatus* status) {
    if (status) *status = reason;
    return DecimalNumber::notANumberValue();
}

inline UInt128 mantissaOf(const DecimalNumber& number) {
    return joinHalves(number.mantissaHigh(), number.mantissaLow());
}

}  // namespace vemo
