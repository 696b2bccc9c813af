// SPDX-License-Identifier: MIT
#pragma once

#include "vemo/environment.h"

namespace vemo {

// The environment with everything left open taken from the system: locale and language from LC_ALL,
// LC_NUMERIC and LANG, the time zone from the host, the real clock.
Environment withDefaults(Environment environment);

}  // namespace vemo
