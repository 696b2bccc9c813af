// SPDX-License-Identifier: MIT
#pragma once

#include <boost/multiprecision/cpp_bin_float.hpp>

#include "vemo/decimal_number.h"

// What the mathematical functions calculate with: a hundred digits, so that whatever one of them loses on the way
// to its 38 is far below the last digit.
namespace vemo {

using Precise = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<100>, boost::multiprecision::et_off>;

// The argument must be a number.
Precise precise(const DecimalNumber& value);

// Half to even at 38 digits. What is within 60 digits of a number with fewer counts as that number, so the cube
// root of 125 is 5. Too large, infinite and not-a-number give not-a-number.
DecimalNumber decimal(const Precise& value);

Precise preciseHalfPi();
Precise squareRoot(const Precise& value);
Precise arctangent(const Precise& value);
Precise logarithm(const Precise& value);    // of a positive number
Precise exponential(const Precise& value);  // infinite or 0 where no decimal reaches

struct SineAndCosine {
    Precise sine;
    Precise cosine;
};
// Of any decimal: the angle is reduced by as many digits of pi as it takes.
SineAndCosine sineAndCosine(const DecimalNumber& radians);

}  // namespace vemo
