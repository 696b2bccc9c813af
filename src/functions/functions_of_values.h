// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"
#include "functions/reduction.h"

namespace vemo {

// Functions of any number of values in brackets. The first four, with none, are of the lines right above.
std::shared_ptr<const Function> minimumToken(const Reduction& reduction);
std::shared_ptr<const Function> maximumToken(const Reduction& reduction);
std::shared_ptr<const Function> medianToken(const Reduction& reduction);
std::shared_ptr<const Function> countToken();
// Of whole numbers.
std::shared_ptr<const Function> greatestDivisor();
std::shared_ptr<const Function> leastMultiple();

}  // namespace vemo
