// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"

namespace vemo {

// A function of the numbers of its first arguments; the result keeps the first one's marks.
using UnaryFormula = DecimalNumber (*)(const DecimalNumber&);
using BinaryFormula = DecimalNumber (*)(const DecimalNumber&, const DecimalNumber&);
std::shared_ptr<const Function> unaryFunction(UnaryFormula formula);
std::shared_ptr<const Function> binaryFunction(BinaryFormula formula);
// Rounds to whole numbers, or to so many digits after the point as a second value says.
std::shared_ptr<const Function> roundFunction();
// The value, which was rounded to so many digits after the point, marked so that all of them are shown.
Value showingDigits(const Value& value, std::int64_t digits);

// The formulas of lines. Outside their domain: not-a-number.
namespace formulas {

DecimalNumber squareRoot(const DecimalNumber& x);
DecimalNumber cubeRoot(const DecimalNumber& x);
DecimalNumber root(const DecimalNumber& degree, const DecimalNumber& x);  // odd degrees of negative numbers too
DecimalNumber logarithm(const DecimalNumber& base, const DecimalNumber& x);
// Of what is whole but for rounding, that whole number: "floor (7 / 3 * 3)" is 7.
DecimalNumber ceiling(const DecimalNumber& x);
DecimalNumber floor(const DecimalNumber& x);

}  // namespace formulas

}  // namespace vemo
