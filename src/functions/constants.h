// SPDX-License-Identifier: MIT
#pragma once

#include "vemo/context.h"

namespace vemo {

// Sets the variables pi, \u03c0, e and r.
void registerConstants(Context& context);

}  // namespace vemo
