// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"
#include "functions/reduction.h"

namespace vemo {

// Functions that look back at earlier lines: sum and average at the run of lines with a result right above. They
// remember the latest one, so that a longer one costs what is new in it. Not synchronised.
std::shared_ptr<const Function> sumToken(const Reduction& reduction);
std::shared_ptr<const Function> avgToken(const Reduction& reduction);
std::shared_ptr<const Function> prevToken();  // the line above

}  // namespace vemo
