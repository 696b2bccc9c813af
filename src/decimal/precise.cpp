// SPDX-License-Identifier: MIT
#include "decimal/precise.h"

#include "decimal/decimal_rounding.h"

namespace vemo {

namespace {

// Past every exponent that a decimal or its inverse can have.
constexpr int hopelessExponent = 300;

// e^±1000 is far beyond every decimal.
constexpr int largestPowerOfE = 1000;

using UInt2048 = WideInteger<2048>;

// An angle × 10^angleScale is an integer for every decimal. A decimal of 165 digits spoils as many of pi's.
constexpr int angleScale = 330;

const UInt2048& scaledHalfPi() {
    static const UInt2048 value(
        "157079632679489661923132169163975144209858469968755291048747229615390820314310449931401741"
        "267105853399107404325664115332354692230477529111586267970406424055872514205135096926055277"
        "982231147447746519098221440548783296672306423782411689339158263560095457282428346173017430"
        "5227163324106696803630124570636862293503303157794087440760460");
    return value;
}

Precise preciseFraction(const UInt2048& scaledAngle) {
    static const Precise unit(powerOfTen<UInt2048>(angleScale));
    return Precise(scaledAngle) / unit;
}

Precise withPowerOfTen(const Precise& value, int exponent) {
    const Precise power(powerOfTen<UInt2048>(std::abs(exponent)));
    return exponent < 0 ? Precise(value / power) : Precise(value * power);
}

// How far the angle is from the nearest multiple of pi / 2, and which multiple that is, modulo 4.
struct ReducedAngle {
    Precise rest;
    unsigned quarters = 0;
};

ReducedAngle reduced(const DecimalNumber& radians) {
    const Precise whole = precise(radians);
    if (abs(whole) < 0.5) return {whole, 0};
    const UInt2048& quarter = scaledHalfPi();
    const UInt2048 magnitude =
        widened<UInt2048>(mantissaOf(radians)) * powerOfTen<UInt2048>(radians.exponent() + angleScale);
    UInt2048 count;
    UInt2048 rest;
    divide(magnitude, quarter, count, rest);
    const bool nearerToNext = rest > quarter - rest;
    if (nearerToNext) {
        ++count;
        rest = quarter - rest;
    }
    ReducedAngle result{preciseFraction(rest), static_cast<unsigned>(count & UInt2048(3))};
    if (nearerToNext != radians.isNegative()) result.rest = -result.rest;
    if (radians.isNegative()) result.quarters = (4 - result.quarters) % 4;
    return result;
}

}  // namespace

Precise precise(const DecimalNumber& value) {
    Precise result(value.mantissaHigh());
    result = ldexp(result, 64) + value.mantissaLow();
    if (value.isNegative()) result = -result;
    return withPowerOfTen(result, value.exponent());
}

DecimalNumber decimal(const Precise& value) {
    constexpr int digits = 60;
    if (!isfinite(value)) return DecimalNumber::notANumberValue();
    if (value.is_zero()) return DecimalNumber();
    // The number of digits before the point, or one less.
    const double top = static_cast<double>(value.backend().exponent()) * 0.30102999566398120;
    if (top > hopelessExponent) return DecimalNumber::notANumberValue();
    if (top < -hopelessExponent) return DecimalNumber();
    const int exponent = static_cast<int>(std::floor(top)) - digits;
    const Precise scaled = withPowerOfTen(abs(value), -exponent) + 0.5;
    return rounded(ExactDecimal<UInt256>{static_cast<UInt256>(scaled), exponent, value < 0, Tail::none},
                   {RoundingMode::bankers, RoundingBehavior::noScale}, nullptr);
}

Precise preciseHalfPi() {
    static const Precise value = preciseFraction(scaledHalfPi());
    return value;
}

Precise squareRoot(const Precise& value) {
    return sqrt(value);
}

Precise arctangent(const Precise& value) {
    if (value < 0) return -arctangent(-value);
    return value > 1 ? Precise(preciseHalfPi() - atan(Precise(1 / value))) : Precise(atan(value));
}

Precise logarithm(const Precise& value) {
    return log(value);
}

Precise exponential(const Precise& value) {
    if (abs(value) < largestPowerOfE) return exp(value);
    return value < 0 ? Precise(0) : std::numeric_limits<Precise>::infinity();
}

SineAndCosine sineAndCosine(const DecimalNumber& radians) {
    const ReducedAngle angle = reduced(radians);
    const Precise sine = sin(angle.rest);
    const Precise cosine = cos(angle.rest);
    switch (angle.quarters) {
        case 1:
            return {cosine, -sine};
        case 2:
            return {-sine, -cosine};
        case 3:
            return {-cosine, sine};
        default:
            return {sine, cosine};
    }
}

}  // namespace vemo
