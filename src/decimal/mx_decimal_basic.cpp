// SPDX-License-Identifier: MIT
#include "decimal/decimal_math.h"

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
    return mxSubtract(a, mxMultiply(b, mxDivide(a, b).integer()));
}

DecimalNumber mxMod2Pi(const DecimalNumber& value) {
    const DecimalNumber remainder = mxMod(value, mx2Pi());
    return isBelow(mxPi(), remainder) ? mxSubtract(remainder, mx2Pi()) : remainder;
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
