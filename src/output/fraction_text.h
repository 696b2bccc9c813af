// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "vemo/decimal_number.h"

namespace vemo {

// A number that is not negative as a fraction in lowest terms: "3/8", "2 3/8", "5". Nothing for a number that no
// fraction with a denominator up to ten thousand gives.
std::optional<std::u16string> fractionText(const DecimalNumber& number);

}  // namespace vemo
