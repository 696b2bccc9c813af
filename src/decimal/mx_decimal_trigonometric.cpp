// SPDX-License-Identifier: MIT
#include "decimal/decimal_series.h"

namespace vemo {

namespace {

DecimalNumber one() {
    return smallInteger(1);
}

bool isAboveOne(const DecimalNumber& value) {
    return DecimalNumber::compare(mxAbsoluteValue(value), one()).value_or(0) > 0;
}

// tan(atan(x) / 2)
DecimalNumber halvedArgument(const DecimalNumber& x) {
    return mxDivide(x, mxAdd(one(), mxSqrt(mxAdd(one(), mxMultiply(x, x)))));
}

}  // namespace

const DecimalNumber& seriesFactorial(unsigned number) {
    static const auto factorials = [] {
        std::array<DecimalNumber, 52> result;
        for (unsigned i = 0; i < result.size(); ++i) result[i] = mxFactorial(smallInteger(i));
        return result;
    }();
    return factorials[number];
}

DecimalNumber mxSin(const DecimalNumber& radians) {
    const DecimalNumber x = mxMod2Pi(radians);
    if (x.notANumber()) return x;
    return sumSeries(x, x, 3, 45, SeriesSign::alternating, SeriesStop::onFailure, seriesFactorial);
}

DecimalNumber mxCos(const DecimalNumber& radians) {
    const DecimalNumber x = mxMod2Pi(radians);
    if (x.notANumber()) return x;
    return sumSeries(one(), x, 2, 44, SeriesSign::alternating, SeriesStop::onFailure, seriesFactorial);
}

DecimalNumber mxTan(const DecimalNumber& radians) {
    // Rounded, the cosine of an odd multiple of pi / 2 is exactly zero.
    return mxDivide(mxSin(radians), mxCos(radians).rounding({RoundingMode::bankers, 34}));
}

DecimalNumber mxCsc(const DecimalNumber& radians) {
    return mxInverse(mxSin(radians));
}
DecimalNumber mxSec(const DecimalNumber& radians) {
    return mxInverse(mxCos(radians));
}
DecimalNumber mxCot(const DecimalNumber& radians) {
    return mxInverse(mxTan(radians));
}

DecimalNumber mxAsin(const DecimalNumber& value) {
    if (value.notANumber() || isAboveOne(value)) return DecimalNumber::notANumberValue();
    if (value == one()) return mxPi_2();
    if (mxAbsoluteValue(value) == one()) return mxNegated(mxPi_2());
    return mxAtan(mxDivide(value, mxSqrt(mxSubtract(one(), mxMultiply(value, value)))));
}

DecimalNumber mxAcos(const DecimalNumber& value) {
    return mxSubtract(mxPi_2(), mxAsin(value));
}

DecimalNumber mxAtan(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    // Near 1 the series needs more terms than it has: halving the angle first makes all digits good.
    static const DecimalNumber small = DecimalNumber::parse("0.2");
    DecimalNumber x = value;
    unsigned factor = 1;
    while (DecimalNumber::compare(mxAbsoluteValue(x), small) == 1) {
        const DecimalNumber half = halvedArgument(x);
        // A square out of range: the angle is a right one to all digits.
        if (half.notANumber()) return value.isNegative() ? mxNegated(mxPi_2()) : mxPi_2();
        x = half;
        factor *= 2;
    }
    const DecimalNumber angle = sumSeries(x, x, 3, 149, SeriesSign::alternating, SeriesStop::onUnderflow, smallInteger);
    return mxMultiply(smallInteger(factor), angle);
}

DecimalNumber mxAsec(const DecimalNumber& value) {
    return mxAcos(mxInverse(value));
}
DecimalNumber mxAcsc(const DecimalNumber& value) {
    return mxSubtract(mxPi_2(), mxAsec(value));
}
DecimalNumber mxAcot(const DecimalNumber& value) {
    return mxSubtract(mxPi_2(), mxAtan(value));
}

}  // namespace vemo
