// SPDX-License-Identifier: MIT
#pragma once

#include "vemo/decimal_number.h"

// Mathematical functions on decimals. The engine calls these; the C functions of vemo/mx_decimal.h, where
// each is documented, wrap them. They round half to even at 38 digits, return not-a-number outside their
// domain, always end, and are safe on any thread.
namespace vemo {

inline constexpr RoundingBehavior mxBehavior{RoundingMode::bankers, RoundingBehavior::noScale};

// Constants, to 38 digits.
const DecimalNumber& mxEpsilon();  // 10^-64
const DecimalNumber& mxPhi();
const DecimalNumber& mxPi();
const DecimalNumber& mx2Pi();
const DecimalNumber& mxPi_2();
const DecimalNumber& mxPi_4();
const DecimalNumber& mxSqrt2();
const DecimalNumber& mxE();
const DecimalNumber& mxLog2e();
const DecimalNumber& mxLog10e();
const DecimalNumber& mxLn2();
const DecimalNumber& mxLn10();

DecimalNumber mxAdd(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxSubtract(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxMultiply(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxDivide(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxNegated(const DecimalNumber& value);
DecimalNumber mxInverse(const DecimalNumber& value);
DecimalNumber mxAbsoluteValue(const DecimalNumber& value);
DecimalNumber mxAverage2(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxMod(const DecimalNumber& a, const DecimalNumber& b);
DecimalNumber mxMod2Pi(const DecimalNumber& value);
DecimalNumber mxLeftShift(const DecimalNumber& value, const DecimalNumber& amount);
DecimalNumber mxRightShift(const DecimalNumber& value, const DecimalNumber& amount);
bool mxIsInteger(const DecimalNumber& value);
bool mxIsProbablyEqual(const DecimalNumber& a, const DecimalNumber& b);

DecimalNumber mxSqrt(const DecimalNumber& value);
DecimalNumber mxNthRoot(const DecimalNumber& value, const DecimalNumber& degree);
DecimalNumber mxPower(const DecimalNumber& base, const DecimalNumber& exponent);
DecimalNumber mxLn(const DecimalNumber& value);
DecimalNumber mxNthLog(const DecimalNumber& value, const DecimalNumber& base);
DecimalNumber mxLog10(const DecimalNumber& value);
DecimalNumber mxFactorial(const DecimalNumber& value);

DecimalNumber mxSin(const DecimalNumber& radians);
DecimalNumber mxCos(const DecimalNumber& radians);
DecimalNumber mxTan(const DecimalNumber& radians);
DecimalNumber mxCsc(const DecimalNumber& radians);
DecimalNumber mxSec(const DecimalNumber& radians);
DecimalNumber mxCot(const DecimalNumber& radians);
DecimalNumber mxAsin(const DecimalNumber& value);
DecimalNumber mxAcos(const DecimalNumber& value);
DecimalNumber mxAtan(const DecimalNumber& value);
DecimalNumber mxAcsc(const DecimalNumber& value);
DecimalNumber mxAsec(const DecimalNumber& value);
DecimalNumber mxAcot(const DecimalNumber& value);

// Of angles in degrees and giving them: the sine of 30 is 0.5, and the arcsine of that is 30.
DecimalNumber sineOfDegrees(const DecimalNumber& degrees);
DecimalNumber cosineOfDegrees(const DecimalNumber& degrees);
DecimalNumber tangentOfDegrees(const DecimalNumber& degrees);
DecimalNumber arcsineInDegrees(const DecimalNumber& value);
DecimalNumber arccosineInDegrees(const DecimalNumber& value);
DecimalNumber arctangentInDegrees(const DecimalNumber& value);

DecimalNumber mxSinh(const DecimalNumber& value);
DecimalNumber mxCosh(const DecimalNumber& value);
DecimalNumber mxTanh(const DecimalNumber& value);
DecimalNumber mxCsch(const DecimalNumber& value);
DecimalNumber mxSech(const DecimalNumber& value);
DecimalNumber mxCoth(const DecimalNumber& value);
DecimalNumber mxAsinh(const DecimalNumber& value);
DecimalNumber mxAcosh(const DecimalNumber& value);
DecimalNumber mxAtanh(const DecimalNumber& value);
DecimalNumber mxAcsch(const DecimalNumber& value);
DecimalNumber mxAsech(const DecimalNumber& value);
DecimalNumber mxAcoth(const DecimalNumber& value);

}  // namespace vemo
