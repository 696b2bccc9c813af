// SPDX-License-Identifier: MIT
#include "decimal/decimal_math.h"
#include "decimal/precise.h"

namespace vemo {

namespace {

// True for numbers so small that the first two terms of a series give 80 digits, while the exact formula would lose as
// many.
bool isTiny(const Precise& x) {
    return abs(x) < 1e-20;
}

Precise hyperbolicSine(const Precise& x) {
    if (isTiny(x)) return x + x * x * x / 6;
    const Precise power = exponential(x);
    return (power - 1 / power) / 2;
}

Precise hyperbolicCosine(const Precise& x) {
    const Precise power = exponential(abs(x));
    return (power + 1 / power) / 2;
}

Precise hyperbolicTangent(const Precise& x) {
    if (isTiny(x)) return x - x * x * x / 3;
    const Precise square = exponential(-2 * abs(x));
    const Precise tangent = (1 - square) / (1 + square);
    return x < 0 ? Precise(-tangent) : tangent;
}

DecimalNumber inverse(const Precise& x) {
    return x.is_zero() ? DecimalNumber::notANumberValue() : decimal(1 / x);
}

// The inverse sine and tangent are asked for within -1 to 1 only, the tangent's ends excluded.
DecimalNumber inverseSine(const Precise& x) {
    const Precise magnitude = abs(x);
    if (magnitude > 1) return DecimalNumber::notANumberValue();
    if (isTiny(x)) return decimal(x - x * x * x / 6);
    const Precise area = logarithm(magnitude + squareRoot(magnitude * magnitude + 1));
    return decimal(x < 0 ? Precise(-area) : area);
}

DecimalNumber inverseCosine(const Precise& x) {
    if (x < 1) return DecimalNumber::notANumberValue();
    return decimal(logarithm(x + squareRoot((x - 1) * (x + 1))));
}

DecimalNumber inverseTangent(const Precise& x) {
    if (abs(x) >= 1) return DecimalNumber::notANumberValue();
    if (isTiny(x)) return decimal(x + x * x * x / 3);
    return decimal(logarithm((1 + x) / (1 - x)) / 2);
}

// The function of the argument's inverse.
template <class Function>
DecimalNumber ofInverse(const DecimalNumber& value, Function function) {
    if (value.notANumber() || value.isZero()) return DecimalNumber::notANumberValue();
    return function(Precise(1 / precise(value)));
}

}  // namespace

DecimalNumber mxSinh(const DecimalNumber& value) {
    return value.notANumber() ? value : decimal(hyperbolicSine(precise(value)));
}
DecimalNumber mxCosh(const DecimalNumber& value) {
    return value.notANumber() ? value : decimal(hyperbolicCosine(precise(value)));
}
DecimalNumber mxTanh(const DecimalNumber& value) {
    return value.notANumber() ? value : decimal(hyperbolicTangent(precise(value)));
}
DecimalNumber mxCsch(const DecimalNumber& value) {
    return value.notANumber() ? value : inverse(hyperbolicSine(precise(value)));
}
DecimalNumber mxSech(const DecimalNumber& value) {
    return value.notANumber() ? value : inverse(hyperbolicCosine(precise(value)));
}
DecimalNumber mxCoth(const DecimalNumber& value) {
    return value.notANumber() ? value : inverse(hyperbolicTangent(precise(value)));
}

DecimalNumber mxAsinh(const DecimalNumber& value) {
    return value.notANumber() ? value : inverseSine(precise(value));
}
DecimalNumber mxAcosh(const DecimalNumber& value) {
    return value.notANumber() ? value : inverseCosine(precise(value));
}
DecimalNumber mxAtanh(const DecimalNumber& value) {
    return value.notANumber() ? value : inverseTangent(precise(value));
}
DecimalNumber mxAcsch(const DecimalNumber& value) {
    return ofInverse(value, inverseSine);
}
DecimalNumber mxAsech(const DecimalNumber& value) {
    return ofInverse(value, inverseCosine);
}
DecimalNumber mxAcoth(const DecimalNumber& value) {
    return ofInverse(value, inverseTangent);
}

}  // namespace vemo
