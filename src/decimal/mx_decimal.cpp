// SPDX-License-Identifier: MIT
// The C interface: each function converts its arguments, calls its C++ twin and converts the result.
#include "vemo/mx_decimal.h"

#include <algorithm>

#include "decimal/decimal_math.h"

using vemo::DecimalNumber;

static_assert(sizeof(MxDecimal) == 20, "the layout is part of the interface");

namespace {

DecimalNumber number(const MxDecimal& d) {
    if (d.length == 0) return d.isNegative ? DecimalNumber::notANumberValue() : DecimalNumber();
    std::uint64_t halves[2] = {0, 0};
    const unsigned words = std::min<unsigned>(d.length, 8);
    for (unsigned i = 0; i < words; ++i) halves[i / 4] |= std::uint64_t{d.mantissa[i]} << (i % 4 * 16);
    return DecimalNumber::fromParts(halves[1], halves[0], d.exponent, d.isNegative != 0);
}

MxDecimal packed(const DecimalNumber& value) {
    MxDecimal result{};
    if (value.notANumber()) {
        result.isNegative = 1;
        return result;
    }
    if (value.isZero()) return result;
    const std::uint64_t halves[2] = {value.mantissaLow(), value.mantissaHigh()};
    for (unsigned i = 0; i < 8; ++i) {
        result.mantissa[i] = static_cast<std::uint16_t>(halves[i / 4] >> (i % 4 * 16));
        if (result.mantissa[i] != 0) result.length = (i + 1) & 15U;
    }
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): the field holds eight signed bits.
    result.exponent = static_cast<std::int8_t>(value.exponent());
    result.isNegative = value.isNegative() ? 1 : 0;
    result.isCompact = 1;
    return result;
}

}  // namespace

#define VEMO_CONSTANT(name, value) \
    MxDecimal name(void) {         \
        return packed(value);      \
    }
#define VEMO_UNARY(name)                          \
    MxDecimal MxDecimal##name(MxDecimal d) {      \
        return packed(vemo::mx##name(number(d))); \
    }
#define VEMO_BINARY(name)                                    \
    MxDecimal MxDecimal##name(MxDecimal a, MxDecimal b) {    \
        return packed(vemo::mx##name(number(a), number(b))); \
    }

extern "C" {

VEMO_CONSTANT(MxDecimalNAN, DecimalNumber::notANumberValue())
VEMO_CONSTANT(MxDecimalEpsilon, vemo::mxEpsilon())
VEMO_CONSTANT(MxDecimalNegativeOne, DecimalNumber::fromInt64(-1))
VEMO_CONSTANT(MxDecimalZero, DecimalNumber())
VEMO_CONSTANT(MxDecimalOne, DecimalNumber::fromInt64(1))
VEMO_CONSTANT(MxDecimalTwo, DecimalNumber::fromInt64(2))
VEMO_CONSTANT(MxDecimalPhi, vemo::mxPhi())
VEMO_CONSTANT(MxDecimalPi, vemo::mxPi())
VEMO_CONSTANT(MxDecimal2Pi, vemo::mx2Pi())
VEMO_CONSTANT(MxDecimalPi_2, vemo::mxPi_2())
VEMO_CONSTANT(MxDecimalPi_4, vemo::mxPi_4())
VEMO_CONSTANT(MxDecimalSqrt2, vemo::mxSqrt2())
VEMO_CONSTANT(MxDecimalE, vemo::mxE())
VEMO_CONSTANT(MxDecimalLog2e, vemo::mxLog2e())
VEMO_CONSTANT(MxDecimalLog10e, vemo::mxLog10e())
VEMO_CONSTANT(MxDecimalLn2, vemo::mxLn2())
VEMO_CONSTANT(MxDecimalLn10, vemo::mxLn10())

MxDecimal MxDecimalFromInteger(int64_t value) {
    return packed(DecimalNumber::fromInt64(value));
}
MxDecimal MxDecimalFromDouble(double value) {
    return packed(DecimalNumber::fromDouble(value));
}
uint64_t MxUIntegerFromDecimal(MxDecimal d) {
    return number(d).toUInt64();
}
float MxFloatFromDecimal(MxDecimal d) {
    return static_cast<float>(number(d).toDouble());
}
double MxDoubleFromDecimal(MxDecimal d) {
    return number(d).toDouble();
}

bool MxDecimalIsNegative(MxDecimal d) {
    return number(d).isNegative();
}
bool MxDecimalIsInteger(MxDecimal d) {
    return vemo::mxIsInteger(number(d));
}
bool MxDecimalIsProbablyEqual(MxDecimal a, MxDecimal b) {
    return vemo::mxIsProbablyEqual(number(a), number(b));
}

void MxDecimalNegate(MxDecimal* d) {
    *d = packed(vemo::mxNegated(number(*d)));
}
void MxDecimalInvert(MxDecimal* d) {
    *d = MxDecimalInverse(*d);
}

VEMO_BINARY(Add)
VEMO_BINARY(Subtract)
VEMO_BINARY(Multiply)
VEMO_BINARY(Divide)
VEMO_BINARY(Average2)
VEMO_UNARY(AbsoluteValue)
VEMO_UNARY(Inverse)
VEMO_BINARY(Mod)
VEMO_UNARY(Mod2Pi)
VEMO_UNARY(Sqrt)
VEMO_BINARY(NthRoot)
VEMO_BINARY(Power)
VEMO_UNARY(Ln)
VEMO_BINARY(NthLog)
VEMO_UNARY(Log10)
VEMO_UNARY(Factorial)
VEMO_BINARY(LeftShift)
VEMO_BINARY(RightShift)
VEMO_UNARY(Sin)
VEMO_UNARY(Cos)
VEMO_UNARY(Tan)
VEMO_UNARY(Csc)
VEMO_UNARY(Sec)
VEMO_UNARY(Cot)
VEMO_UNARY(Asin)
VEMO_UNARY(Acos)
VEMO_UNARY(Atan)
VEMO_UNARY(Acsc)
VEMO_UNARY(Asec)
VEMO_UNARY(Acot)
VEMO_UNARY(Sinh)
VEMO_UNARY(Cosh)
VEMO_UNARY(Tanh)
VEMO_UNARY(Csch)
VEMO_UNARY(Sech)
VEMO_UNARY(Coth)
VEMO_UNARY(Asinh)
VEMO_UNARY(Acosh)
VEMO_UNARY(Atanh)
VEMO_UNARY(Acsch)
VEMO_UNARY(Asech)
VEMO_UNARY(Acoth)

}  // extern "C"
