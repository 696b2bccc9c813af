// SPDX-License-Identifier: MIT
#include "decimal/decimal_math.h"
#include "decimal/precise.h"

namespace vemo {

namespace {

// True for the cosine of an odd multiple of pi / 2, which is exactly zero when it is rounded to 34 digits after the
// point.
bool standsUpright(const Precise& cosine) {
    return decimal(cosine).rounding({RoundingMode::bankers, 34}).isZero();
}

DecimalNumber quotient(const Precise& dividend, const Precise& divisor) {
    return divisor.is_zero() ? DecimalNumber::notANumberValue() : decimal(dividend / divisor);
}

bool isSine(const Precise& value) {
    return abs(value) <= 1;
}

Precise arcsine(const Precise& value) {
    if (abs(value) == 1) return value * preciseHalfPi();
    return arctangent(value / squareRoot((1 - value) * (1 + value)));
}

Precise radiansOf(const DecimalNumber& degrees) {
    static const DecimalNumber turn = DecimalNumber::fromInt64(360);
    return precise(mxMod(degrees, turn)) * preciseHalfPi() / 90;
}

DecimalNumber inDegrees(const Precise& radians) {
    return decimal(radians * 90 / preciseHalfPi());
}

}  // namespace

DecimalNumber mxSin(const DecimalNumber& radians) {
    return radians.notANumber() ? radians : decimal(sineAndCosine(radians).sine);
}

DecimalNumber mxCos(const DecimalNumber& radians) {
    return radians.notANumber() ? radians : decimal(sineAndCosine(radians).cosine);
}

DecimalNumber mxTan(const DecimalNumber& radians) {
    if (radians.notANumber()) return radians;
    const auto [sine, cosine] = sineAndCosine(radians);
    return standsUpright(cosine) ? DecimalNumber::notANumberValue() : quotient(sine, cosine);
}

DecimalNumber mxCsc(const DecimalNumber& radians) {
    return radians.notANumber() ? radians : quotient(1, sineAndCosine(radians).sine);
}

DecimalNumber mxSec(const DecimalNumber& radians) {
    return radians.notANumber() ? radians : quotient(1, sineAndCosine(radians).cosine);
}

DecimalNumber mxCot(const DecimalNumber& radians) {
    if (radians.notANumber()) return radians;
    const auto [sine, cosine] = sineAndCosine(radians);
    return standsUpright(cosine) ? DecimalNumber::notANumberValue() : quotient(cosine, sine);
}

DecimalNumber mxAsin(const DecimalNumber& value) {
    if (value.notANumber() || !isSine(precise(value))) return DecimalNumber::notANumberValue();
    return decimal(arcsine(precise(value)));
}

DecimalNumber mxAcos(const DecimalNumber& value) {
    if (value.notANumber() || !isSine(precise(value))) return DecimalNumber::notANumberValue();
    return decimal(preciseHalfPi() - arcsine(precise(value)));
}

DecimalNumber mxAtan(const DecimalNumber& value) {
    return value.notANumber() ? value : decimal(arctangent(precise(value)));
}

DecimalNumber mxAsec(const DecimalNumber& value) {
    if (value.notANumber() || value.isZero()) return DecimalNumber::notANumberValue();
    const Precise cosine = 1 / precise(value);
    return isSine(cosine) ? decimal(preciseHalfPi() - arcsine(cosine)) : DecimalNumber::notANumberValue();
}

DecimalNumber mxAcsc(const DecimalNumber& value) {
    if (value.notANumber() || value.isZero()) return DecimalNumber::notANumberValue();
    const Precise sine = 1 / precise(value);
    return isSine(sine) ? decimal(arcsine(sine)) : DecimalNumber::notANumberValue();
}

DecimalNumber mxAcot(const DecimalNumber& value) {
    return value.notANumber() ? value : decimal(preciseHalfPi() - arctangent(precise(value)));
}

DecimalNumber sineOfDegrees(const DecimalNumber& degrees) {
    return degrees.notANumber() ? degrees : decimal(sin(radiansOf(degrees)));
}

DecimalNumber cosineOfDegrees(const DecimalNumber& degrees) {
    return degrees.notANumber() ? degrees : decimal(cos(radiansOf(degrees)));
}

DecimalNumber tangentOfDegrees(const DecimalNumber& degrees) {
    if (degrees.notANumber()) return degrees;
    const Precise radians = radiansOf(degrees);
    const Precise cosine = cos(radians);
    return standsUpright(cosine) ? DecimalNumber::notANumberValue() : quotient(sin(radians), cosine);
}

DecimalNumber arcsineInDegrees(const DecimalNumber& value) {
    if (value.notANumber() || !isSine(precise(value))) return DecimalNumber::notANumberValue();
    return inDegrees(arcsine(precise(value)));
}

DecimalNumber arccosineInDegrees(const DecimalNumber& value) {
    if (value.notANumber() || !isSine(precise(value))) return DecimalNumber::notANumberValue();
    return inDegrees(preciseHalfPi() - arcsine(precise(value)));
}

DecimalNumber arctangentInDegrees(const DecimalNumber& value) {
    return value.notANumber() ? value : inDegrees(arctangent(precise(value)));
}

}  // namespace vemo
