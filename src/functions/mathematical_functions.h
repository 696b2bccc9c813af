// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"

namespace vemo {

class UnitConverter;

// A function of the numbers of its first arguments; the result keeps the first one's marks.
using UnaryFormula = DecimalNumber (*)(const DecimalNumber&);
using BinaryFormula = DecimalNumber (*)(const DecimalNumber&, const DecimalNumber&);
std::shared_ptr<const Function> unaryFunction(UnaryFormula formula);
std::shared_ptr<const Function> binaryFunction(BinaryFormula formula);

// Of an angle, in radians unless it has another unit; the result has no unit.
std::shared_ptr<const Function> trigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter);
// An angle in degrees.
std::shared_ptr<const Function> inverseTrigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter);

// The formulas that compute in double precision, to about 16 digits. Outside their domain: not-a-number.
namespace formulas {
DecimalNumber squareRoot(const DecimalNumber& x);
DecimalNumber cubeRoot(const DecimalNumber& x);
DecimalNumber root(const DecimalNumber& degree, const DecimalNumber& x);  // odd degrees of negative numbers too
DecimalNumber logarithm(const DecimalNumber& base, const DecimalNumber& x);
DecimalNumber naturalLogarithm(const DecimalNumber& x);
DecimalNumber sine(const DecimalNumber& radians);
DecimalNumber cosine(const DecimalNumber& radians);
DecimalNumber tangent(const DecimalNumber& radians);
DecimalNumber arctangent(const DecimalNumber& x);
DecimalNumber ceiling(const DecimalNumber& x);
DecimalNumber floor(const DecimalNumber& x);
}  // namespace formulas

}  // namespace vemo
