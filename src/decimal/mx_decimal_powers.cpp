// SPDX-License-Identifier: MIT
// Roots, powers and logarithms.
#include "decimal/decimal_math.h"
#include "decimal/precise.h"

namespace vemo {

namespace {

bool isPositive(const DecimalNumber& value) {
    return !value.notANumber() && !value.isZero() && !value.isNegative();
}

bool isOdd(const DecimalNumber& integer) {
    return integer.exponent() == 0 && (integer.mantissaLow() & 1) != 0;
}

bool fitsAnInteger(const DecimalNumber& value) {
    return value.toUInt64() < UINT64_MAX;
}

// The exponent is not zero.
DecimalNumber powerByLogarithm(const DecimalNumber& base, const DecimalNumber& exponent) {
    if (base.isZero()) return exponent.isNegative() ? DecimalNumber::notANumberValue() : base;
    const DecimalNumber result = decimal(exponential(logarithm(precise(mxAbsoluteValue(base))) * precise(exponent)));
    return base.isNegative() && isOdd(exponent) ? mxNegated(result) : result;
}

}  // namespace

DecimalNumber mxSqrt(const DecimalNumber& value) {
    return isPositive(value) ? decimal(squareRoot(precise(value))) : DecimalNumber::notANumberValue();
}

DecimalNumber mxNthRoot(const DecimalNumber& value, const DecimalNumber& degree) {
    if (!isPositive(value) || degree.notANumber() || degree.isZero()) return DecimalNumber::notANumberValue();
    return decimal(exponential(logarithm(precise(value)) / precise(degree)));
}

DecimalNumber mxPower(const DecimalNumber& base, const DecimalNumber& exponent) {
    if (base.notANumber() || exponent.notANumber()) return DecimalNumber::notANumberValue();
    if (exponent.isZero()) return DecimalNumber::fromInt64(1);
    if (!mxIsInteger(exponent)) {
        return base.isNegative() ? DecimalNumber::notANumberValue() : powerByLogarithm(base, exponent);
    }
    const DecimalNumber count = mxAbsoluteValue(exponent);
    if (!fitsAnInteger(count)) return powerByLogarithm(base, exponent);
    DecimalStatus status;
    const DecimalNumber power = base.raising(count.toUInt64(), mxBehavior, &status);
    if (!exponent.isNegative()) return power;
    // Rounded once, where the positive power has all its digits: 2^-55 is an exact tie.
    return status == DecimalStatus::exact ? mxInverse(power) : powerByLogarithm(base, exponent);
}

DecimalNumber mxLn(const DecimalNumber& value) {
    return isPositive(value) ? decimal(logarithm(precise(value))) : DecimalNumber::notANumberValue();
}

DecimalNumber mxNthLog(const DecimalNumber& value, const DecimalNumber& base) {
    if (!isPositive(value) || !isPositive(base)) return DecimalNumber::notANumberValue();
    const Precise divisor = logarithm(precise(base));
    return divisor.is_zero() ? DecimalNumber::notANumberValue() : decimal(logarithm(precise(value)) / divisor);
}

DecimalNumber mxLog10(const DecimalNumber& value) {
    static const Precise lnOfTen = logarithm(10);
    return isPositive(value) ? decimal(logarithm(precise(value)) / lnOfTen) : DecimalNumber::notANumberValue();
}

}  // namespace vemo
