// SPDX-License-Identifier: MIT
#pragma once

#include "vemo/context.h"

namespace vemo {

// Sets the variables pi, \u03c0, e and r.
void registerConstants(Context& context);
// True for one of these names that still has its own value.
bool isBuiltInConstant(std::u16string_view name, const Value& value);

}  // namespace vemo
