// SPDX-License-Identifier: MIT
#include <cmath>

#include "decimal/decimal_series.h"

namespace vemo {

namespace {

bool isInUnitInterval(const DecimalNumber& value) {
    const auto order = DecimalNumber::compare(mxAbsoluteValue(value), smallInteger(1));
    return order && *order <= 0;
}

// Where the series have all their digits.
bool isSmall(const DecimalNumber& value) {
    return DecimalNumber::compare(mxAbsoluteValue(value), smallInteger(2)).value_or(1) <= 0;
}

// e^x: an integer power times the series of the fraction.
DecimalNumber exponential(const DecimalNumber& value) {
    const DecimalNumber whole = mxAbsoluteValue(value).integer();
    const DecimalNumber rest = mxSubtract(mxAbsoluteValue(value), whole);
    const DecimalNumber power = mxMultiply(mxPower(mxE(), whole), mxAdd(mxCosh(rest), mxSinh(rest)));
    return value.isNegative() ? mxInverse(power) : power;
}

// 0 when what grows with the value is too large.
DecimalNumber inverseOfGrowing(const DecimalNumber& value, const DecimalNumber& function) {
    return function.notANumber() && !value.notANumber() ? DecimalNumber() : mxInverse(function);
}

}  // namespace

DecimalNumber mxSinh(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    if (isSmall(value)) return sumSeries(value, value, 3, 51, SeriesSign::same, SeriesStop::never, seriesFactorial);
    const DecimalNumber power = exponential(value);
    return mxDivide(mxSubtract(power, mxInverse(power)), smallInteger(2));
}

DecimalNumber mxCosh(const DecimalNumber& value) {
    if (value.notANumber()) return value;
    if (isSmall(value)) {
        return sumSeries(smallInteger(1), value, 2, 50, SeriesSign::same, SeriesStop::never, seriesFactorial);
    }
    const DecimalNumber power = exponential(value);
    return mxDivide(mxAdd(power, mxInverse(power)), smallInteger(2));
}

DecimalNumber mxTanh(const DecimalNumber& value) {
    constexpr unsigned flat = 60;  // beyond it the result is 1 in all digits
    if (DecimalNumber::compare(mxAbsoluteValue(value), smallInteger(flat)).value_or(0) > 0)
        return value.isNegative() ? smallInteger(1).negative() : smallInteger(1);
    return mxDivide(mxSinh(value), mxCosh(value));
}
DecimalNumber mxCsch(const DecimalNumber& value) {
    return inverseOfGrowing(value, mxSinh(value));
}
DecimalNumber mxSech(const DecimalNumber& value) {
    return inverseOfGrowing(value, mxCosh(value));
}
DecimalNumber mxCoth(const DecimalNumber& value) {
    return mxInverse(mxTanh(value));
}

DecimalNumber mxAsinh(const DecimalNumber& value) {
    if (!isInUnitInterval(value)) return DecimalNumber::notANumberValue();
    DecimalNumber sum = value;
    DecimalNumber coefficient = smallInteger(1);
    PowerSequence powers(value, 3);
    for (unsigned n = 1; n <= 17; n += 2) {
        coefficient = mxDivide(mxMultiply(coefficient, smallInteger(n)), smallInteger(n + 1));
        const DecimalNumber term = mxDivide(mxMultiply(coefficient, powers.current(mxBehavior)), smallInteger(n + 2));
        sum = n % 4 == 1 ? mxSubtract(sum, term) : mxAdd(sum, term);
        powers.advance();
    }
    return sum;
}

DecimalNumber mxAcosh(const DecimalNumber& value) {
    return DecimalNumber::fromDouble(std::acosh(value.toDouble()));
}

DecimalNumber mxAtanh(const DecimalNumber& value) {
    if (!isInUnitInterval(value)) return DecimalNumber::notANumberValue();
    return sumSeries(value, value, 3, 19, SeriesSign::same, SeriesStop::never, smallInteger);
}

DecimalNumber mxAcsch(const DecimalNumber& value) {
    return mxAsinh(mxInverse(value));
}
DecimalNumber mxAsech(const DecimalNumber& value) {
    return mxAcosh(mxInverse(value));
}
DecimalNumber mxAcoth(const DecimalNumber& value) {
    return mxAtanh(mxInverse(value));
}

}  // namespace vemo
