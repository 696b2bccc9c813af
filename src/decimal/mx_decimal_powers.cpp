// SPDX-License-Identifier: MIT
// Roots, powers, logarithms and the factorial.
#include <cmath>

#include "decimal/decimal_math.h"
#include "decimal/decimal_power.h"

namespace vemo {

namespace {

constexpr int newtonSteps = 50;

// Beyond e^±240 a power of e is cut at the smallest exponent or does not fit at all.
constexpr int largestExponentOfE = 240;

bool isPositive(const DecimalNumber& value) {
    return !value.notANumber() && !value.isZero() && !value.isNegative();
}

bool isOdd(const DecimalNumber& integer) {
    return integer.exponent() == 0 && (integer.mantissaLow() & 1) != 0;
}

// Newton's iteration from `x`, until `power` of the estimate is the value or the estimate stands still.
template <class Step, class Power>
DecimalNumber newton(const DecimalNumber& value, DecimalNumber x, Step step, Power power) {
    for (int i = 0; i < newtonSteps; ++i) {
        const DecimalNumber next = step(x);
        if (next == x) break;
        x = next;
        if (x.notANumber() || mxIsProbablyEqual(power(x), value)) break;
    }
    return x;
}

// ln(x) = 2 artanh((x - 1) / (x + 1)), which converges fast near 1.
DecimalNumber lnNearOne(const DecimalNumber& value) {
    constexpr RoundingBehavior eightyDigits{RoundingMode::bankers, 80};
    const DecimalNumber one = DecimalNumber::fromInt64(1);
    const DecimalNumber y = mxDivide(mxSubtract(value, one), mxAdd(value, one));
    const auto vanishes = [&](const DecimalNumber& number) { return number.rounding(eightyDigits).isZero(); };
    DecimalNumber sum = y;
    DecimalNumber power = y;
    for (int n = 3; n <= 93; n += 2) {
        const DecimalNumber factor = mxInverse(DecimalNumber::fromInt64(n));
        power = mxMultiply(power, y);
        if (vanishes(power)) break;
        power = mxMultiply(power, y);
        if (vanishes(power)) break;
        const DecimalNumber term = mxMultiply(factor, power);
        if (vanishes(term)) break;
        sum = mxAdd(sum, term);
    }
    return mxMultiply(DecimalNumber::fromInt64(2), sum);
}

}  // namespace

DecimalNumber mxSqrt(const DecimalNumber& value) {
    if (!isPositive(value)) return DecimalNumber::notANumberValue();
    // From the double's root the iteration converges for every number; from far away 50 steps are too few.
    return newton(
        value, DecimalNumber::fromDouble(std::sqrt(value.toDouble())),
        [&](const DecimalNumber& x) { return mxAverage2(mxDivide(value, x), x); },
        [](const DecimalNumber& x) { return mxMultiply(x, x); });
}

DecimalNumber mxNthRoot(const DecimalNumber& value, const DecimalNumber& degree) {
    if (!isPositive(value) || degree.notANumber()) return DecimalNumber::notANumberValue();
    const DecimalNumber less = mxSubtract(degree, DecimalNumber::fromInt64(1));
    return newton(
        value, value,
        [&](const DecimalNumber& x) {
            return mxDivide(mxAdd(mxMultiply(less, x), mxDivide(value, mxPower(x, less))), degree);
        },
        [&](const DecimalNumber& x) { return mxPower(x, degree); });
}

DecimalNumber mxPower(const DecimalNumber& base, const DecimalNumber& exponent) {
    if (base.notANumber() || exponent.notANumber()) return DecimalNumber::notANumberValue();
    if (exponent.isZero()) return DecimalNumber::fromInt64(1);
    if (!exponent.isNegative() && mxIsInteger(exponent)) {
        std::uint64_t power = exponent.toUInt64();
        if (power == UINT64_MAX && !isOdd(exponent)) --power;  // clamped, keep the parity
        return base.raising(power, mxBehavior);
    }
    return DecimalNumber::fromDouble(std::pow(base.toDouble(), exponent.toDouble()));
}

DecimalNumber mxLn(const DecimalNumber& value) {
    if (!isPositive(value)) return DecimalNumber::notANumberValue();
    const double x = value.toDouble();
    if (x >= 0.4 && x <= 1.5) return lnNearOne(value);
    auto k = static_cast<int>(x > 1.5 ? std::ceil(std::log(x)) : std::floor(std::log(x)));
    if (k < -largestExponentOfE) return mxNegated(mxLn(mxInverse(value)));
    DecimalNumber power = mxPower(mxE(), DecimalNumber::fromInt64(k));
    if (power.notANumber() && k > largestExponentOfE) power = mxPower(mxE(), DecimalNumber::fromInt64(--k));
    return mxAdd(DecimalNumber::fromInt64(k), mxLn(mxDivide(value, power)));
}

DecimalNumber mxNthLog(const DecimalNumber& value, const DecimalNumber& base) {
    return mxDivide(mxLn(value), mxLn(base));
}

DecimalNumber mxLog10(const DecimalNumber& value) {
    static const DecimalNumber lnOfTen = mxLn(DecimalNumber::fromInt64(10));
    return mxDivide(mxLn(value), lnOfTen);
}

DecimalNumber mxFactorial(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    const DecimalNumber one = DecimalNumber::fromInt64(1);
    if (!mxIsInteger(value)) return DecimalNumber::fromDouble(std::tgamma(value.toDouble() + 1));
    DecimalNumber result = one;
    // Counts down, so that a factorial out of range overflows within some eighty steps.
    for (DecimalNumber counter = mxAbsoluteValue(value); DecimalNumber::compare(counter, one).value_or(0) > 0;
         counter = mxSubtract(counter, one)) {
        result = mxMultiply(result, counter);
        if (result.notANumber()) break;
    }
    return result;
}

}  // namespace vemo
