// SPDX-License-Identifier: MIT
#pragma once

#include "decimal/decimal_rounding.h"

namespace vemo {

// A positive number cut to a fixed number of digits, with a bound on what the cuts have taken away.
template <class Mantissa>
struct TruncatedDecimal {
    Mantissa mantissa;
    int exponent = 0;
    bool cut = false;
    double relativeError = 0;  // in units of the mantissa's last digit when it starts with 1
};

// base^start, base^(start+2), base^(start+4)…, each the correctly rounded power (as `raising` gives it)
// for one multiplication, which is what a power series asks for.
class PowerSequence {
public:
    // The base is a number, start at least 1.
    PowerSequence(const DecimalNumber& base, unsigned start);

    DecimalNumber current(RoundingBehavior behavior, DecimalStatus* status = nullptr) const;
    void advance();  // by two

private:
    DecimalNumber base_;
    unsigned power_;
    TruncatedDecimal<UInt256> value_;
    TruncatedDecimal<UInt256> square_;
    bool outOfRange_ = false;
};

}  // namespace vemo
