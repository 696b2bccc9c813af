// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"

namespace vemo {

class UnitConverter;

enum class AngleRatio { sine, cosine, tangent };

// A function of an angle, in radians unless it has another unit; the result has no unit. An angle within 10^-15, or
// that part of its size, of a multiple of a right angle other than 0 counts as that: the sine of pi, of which people
// have as many digits, is 0.
std::shared_ptr<const Function> trigonometricFunction(AngleRatio ratio, const UnitConverter& unitConverter);

// A function that gives an angle in degrees, by a formula that does.
std::shared_ptr<const Function> inverseTrigonometricFunction(DecimalNumber (*formula)(const DecimalNumber&));

}  // namespace vemo
