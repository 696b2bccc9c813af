// SPDX-License-Identifier: MIT
#include <algorithm>

#include "decimal/decimal_math.h"
#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

DecimalNumber one() {
    return DecimalNumber::fromInt64(1);
}
DecimalNumber two() {
    return DecimalNumber::fromInt64(2);
}

bool isBelow(const DecimalNumber& a, const DecimalNumber& b) {
    return DecimalNumber::compare(a, b).value_or(0) < 0;
}

DecimalNumber shifted(DecimalNumber value, const DecimalNumber& amount, bool left) {
    DecimalNumber count = amount.integer();
    if (value.notANumber() || count.notANumber()) return DecimalNumber::notANumberValue();
    if (count.isNegative()) {
        left = !left;
        count = mxNegated(count);
    }
    // Ends early once further steps cannot matter, so a huge amount costs no more than the range allows.
    for (std::uint64_t steps = count.toUInt64(); steps > 0; --steps) {
        if (value.notANumber() || value.isZero() || value.isNegative()) break;
        if (!left && isBelow(value, one())) break;
        value = left ? mxMultiply(value, two()) : mxDivide(value, two());
    }
    return isBelow(value, one()) ? DecimalNumber() : value;
}

UInt128 productModulo(UInt128 a, UInt128 b, UInt128 modulus) {
    UInt256 quotient;
    UInt256 remainder;
    divide(UInt256(widened<UInt256>(a) * widened<UInt256>(b)), widened<UInt256>(modulus), quotient, remainder);
    return narrowed(remainder);
}

// The exact remainder, with the sign of a; b is not zero. However large the quotient, no digit of it is needed.
DecimalNumber truncatedRemainder(const DecimalNumber& a, const DecimalNumber& b) {
    const auto result = [&a](UInt128 mantissa, int exponent) {
        return DecimalNumber::fromParts(highHalf(mantissa), lowHalf(mantissa), exponent, a.isNegative());
    };
    UInt128 mantissa = mantissaOf(a);
    UInt128 divisor = mantissaOf(b);
    int distance = a.exponent() - b.exponent();
    if (distance < 0) {
        // Of a divisor that reaches further than 38 digits at the smaller exponent, nothing fits into a.
        if (digitCount(divisor) - distance > DecimalNumber::maxDigits) return a;
        return result(mantissa % (divisor * powerOfTen<UInt128>(-distance)), a.exponent());
    }
    mantissa %= divisor;
    constexpr int longestStep = 38;
    for (; distance > 0 && mantissa != 0; distance -= longestStep) {
        mantissa = productModulo(mantissa, powerOfTen<UInt128>(std::min(distance, longestStep)), divisor);
    }
    return result(mantissa, b.exponent());
}

}  // namespace

DecimalNumber mxAdd(const DecimalNumber& a, const DecimalNumber& b) {
    return a.adding(b, mxBehavior);
}
DecimalNumber mxSubtract(const DecimalNumber& a, const DecimalNumber& b) {
    return a.subtracting(b, mxBehavior);
}
DecimalNumber mxMultiply(const DecimalNumber& a, const DecimalNumber& b) {
    return a.multiplying(b, mxBehavior);
}
DecimalNumber mxDivide(const DecimalNumber& a, const DecimalNumber& b) {
    return a.dividing(b, mxBehavior);
}

DecimalNumber mxNegated(const DecimalNumber& value) {
    return mxSubtract(DecimalNumber(), value);
}

DecimalNumber mxInverse(const DecimalNumber& value) {
    return mxDivide(one(), value);
}

DecimalNumber mxAbsoluteValue(const DecimalNumber& value) {
    return value.isNegative() ? mxNegated(value) : value;
}

DecimalNumber mxAverage2(const DecimalNumber& a, const DecimalNumber& b) {
    return mxDivide(mxAdd(a, b), two());
}

DecimalNumber mxMod(const DecimalNumber& a, const DecimalNumber& b) {
    if (a.notANumber() || b.notANumber() || b.isZero()) return DecimalNumber::notANumberValue();
    const DecimalNumber rest = truncatedRemainder(a, b);
    return rest.isZero() || rest.isNegative() == b.isNegative() ? rest : mxAdd(rest, b);
}

DecimalNumber mxMod2Pi(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    // From the remainder on its own side of zero, so that small negative angles keep their digits.
    const DecimalNumber rest = truncatedRemainder(value, mx2Pi());
    if (isBelow(mxPi(), rest)) return mxSubtract(rest, mx2Pi());
    return isBelow(mxNegated(mxPi()), rest) ? rest : mxAdd(rest, mx2Pi());
}

DecimalNumber mxLeftShift(const DecimalNumber& value, const DecimalNumber& amount) {
    return shifted(value, amount, true);
}

DecimalNumber mxRightShift(const DecimalNumber& value, const DecimalNumber& amount) {
    return shifted(value, amount, false);
}

bool mxIsInteger(const DecimalNumber& value) {
    return !value.notANumber() && value == value.integer();
}

bool mxIsProbablyEqual(const DecimalNumber& a, const DecimalNumber& b) {
    return isBelow(mxAbsoluteValue(mxSubtract(a, b)), mxEpsilon());
}

}  // namespace vemo
