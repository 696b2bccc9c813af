// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"
#include "functions/reduction.h"

namespace vemo {

// Functions that look back at earlier lines. "The block" is the run of lines with a result right above. Sum and
// average remember the latest block, so that a longer one costs what is new in it. Not synchronised.
std::shared_ptr<const Function> sumToken(const Reduction& reduction);
std::shared_ptr<const Function> avgToken(const Reduction& reduction);
std::shared_ptr<const Function> prevToken();  // the line above

// The values of the block above, the newest first. The line depends on them.
std::vector<Value> blockAbove(Context& context);

}  // namespace vemo
