/* SPDX-License-Identifier: MIT */
#ifndef VEMO_MX_DECIMAL_H
#define VEMO_MX_DECIMAL_H

#include <stdbool.h>
#include <stdint.h>

/*
 * Decimal arithmetic with 38 significant digits for C programs.
 *
 * Every operation rounds half to even at 38 digits; roots, powers, logarithms, the factorial and the trigonometric
 * and hyperbolic functions err by at most 10^-36 × max(1, |result|). A result too large, a division by zero, an
 * argument outside a function's domain and any operation on not-a-number give not-a-number; a result too small is 0.
 * Nothing fails otherwise, every call takes bounded time, and every function may be called from any thread.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* The engine's version: "major.minor" as a number, and the whole text, ended by a zero. */
extern const double VemoEngineVersionNumber;
extern const unsigned char VemoEngineVersionString[];

/*
 * ± mantissa × 10^exponent, the mantissa's least significant word first. Words past `length` are ignored.
 * A length of 0 is zero or, when negative, not-a-number.
 */
typedef struct MxDecimal {
    signed int exponent : 8;
    unsigned int length : 4; /* words of the mantissa in use, 0 to 8 */
    unsigned int isNegative : 1;
    unsigned int isCompact : 1; /* no trailing zeros that the exponent could take; not needed on input */
    unsigned int reserved : 18;
    uint16_t mantissa[8];
} MxDecimal;

/* Constants, correct to 38 digits. Epsilon is 10^-64. */
MxDecimal MxDecimalNAN(void);
MxDecimal MxDecimalEpsilon(void);
MxDecimal MxDecimalNegativeOne(void);
MxDecimal MxDecimalZero(void);
MxDecimal MxDecimalOne(void);
MxDecimal MxDecimalTwo(void);
MxDecimal MxDecimalPhi(void); /* golden ratio */
MxDecimal MxDecimalPi(void);
MxDecimal MxDecimal2Pi(void);
MxDecimal MxDecimalPi_2(void); /* pi / 2 */
MxDecimal MxDecimalPi_4(void); /* pi / 4 */
MxDecimal MxDecimalSqrt2(void);
MxDecimal MxDecimalE(void);
MxDecimal MxDecimalLog2e(void);
MxDecimal MxDecimalLog10e(void);
MxDecimal MxDecimalLn2(void);
MxDecimal MxDecimalLn10(void);

/*
 * Conversions. An integer is taken exactly, a double as the shortest decimal (at most 17 digits) that reads
 * back as it. To an integer, the fraction is dropped and the value clamped to the range; not-a-number gives 0.
 */
MxDecimal MxDecimalFromInteger(int64_t value);
MxDecimal MxDecimalFromDouble(double value);
uint64_t MxUIntegerFromDecimal(MxDecimal d);
float MxFloatFromDecimal(MxDecimal d);
double MxDoubleFromDecimal(MxDecimal d);

/* Predicates: below zero; without a fraction; closer to each other than epsilon. Not-a-number satisfies none. */
bool MxDecimalIsNegative(MxDecimal d);
bool MxDecimalIsInteger(MxDecimal d);
bool MxDecimalIsProbablyEqual(MxDecimal a, MxDecimal b);

/* In place, through a valid pointer: d × -1 and 1 ÷ d. */
void MxDecimalNegate(MxDecimal* d);
void MxDecimalInvert(MxDecimal* d);

/* Arithmetic. Average2 is (a + b) ÷ 2, Inverse 1 ÷ d. */
MxDecimal MxDecimalAdd(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalSubtract(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalMultiply(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalDivide(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalAverage2(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalAbsoluteValue(MxDecimal d);
MxDecimal MxDecimalInverse(MxDecimal d);

/*
 * Remainder of floored division, exact however large the quotient, with the sign of b. Mod2Pi takes it by the
 * constant MxDecimal2Pi and moves it to (-pi, pi].
 */
MxDecimal MxDecimalMod(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalMod2Pi(MxDecimal x);

/* Roots of positive numbers; the degree may be any number but 0. */
MxDecimal MxDecimalSqrt(MxDecimal d);
MxDecimal MxDecimalNthRoot(MxDecimal d, MxDecimal n);

/* A power; negative numbers have those with integer exponents. 0^0 is 1. */
MxDecimal MxDecimalPower(MxDecimal base, MxDecimal exponent);

/* Logarithms of positive numbers. NthLog is the logarithm of a to the base b. */
MxDecimal MxDecimalLn(MxDecimal d);
MxDecimal MxDecimalNthLog(MxDecimal a, MxDecimal b);
MxDecimal MxDecimalLog10(MxDecimal d);

/* |d|! for an integer, else the gamma function of d + 1. */
MxDecimal MxDecimalFactorial(MxDecimal d);

/*
 * value × 2^amount and value ÷ 2^amount, the amount rounded down to an integer; a negative one shifts the
 * other way. A result below 1 becomes 0.
 */
MxDecimal MxDecimalLeftShift(MxDecimal value, MxDecimal amount);
MxDecimal MxDecimalRightShift(MxDecimal value, MxDecimal amount);

/*
 * Trigonometric functions of an angle in radians of any size. Tan and Cot are not-a-number where the cosine is 0
 * when rounded to 34 digits after the point.
 */
MxDecimal MxDecimalSin(MxDecimal x);
MxDecimal MxDecimalCos(MxDecimal x);
MxDecimal MxDecimalTan(MxDecimal x);
MxDecimal MxDecimalCsc(MxDecimal x);
MxDecimal MxDecimalSec(MxDecimal x);
MxDecimal MxDecimalCot(MxDecimal x);

/* Their inverses, in radians. Asin and Acos take -1 to 1, Asec and Acsc the rest. */
MxDecimal MxDecimalAsin(MxDecimal x);
MxDecimal MxDecimalAcos(MxDecimal x);
MxDecimal MxDecimalAtan(MxDecimal x);
MxDecimal MxDecimalAcsc(MxDecimal x);
MxDecimal MxDecimalAsec(MxDecimal x);
MxDecimal MxDecimalAcot(MxDecimal x);

/* Hyperbolic functions. */
MxDecimal MxDecimalSinh(MxDecimal x);
MxDecimal MxDecimalCosh(MxDecimal x);
MxDecimal MxDecimalTanh(MxDecimal x);
MxDecimal MxDecimalCsch(MxDecimal x);
MxDecimal MxDecimalSech(MxDecimal x);
MxDecimal MxDecimalCoth(MxDecimal x);

/*
 * Their inverses. Asinh takes -1 to 1 and Atanh what lies between (Acsch and Acoth the rest), Acosh 1 and more,
 * Asech what is above 0 and up to 1.
 */
MxDecimal MxDecimalAsinh(MxDecimal x);
MxDecimal MxDecimalAcosh(MxDecimal x);
MxDecimal MxDecimalAtanh(MxDecimal x);
MxDecimal MxDecimalAcsch(MxDecimal x);
MxDecimal MxDecimalAsech(MxDecimal x);
MxDecimal MxDecimalAcoth(MxDecimal x);

#ifdef __cplusplus
}
#endif

#endif
