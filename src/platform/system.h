// SPDX-License-Identifier: MIT
#pragma once

#include "vemo/environment.h"

namespace vemo {

// The environment with everything left open taken from the system: locale and language from LC_ALL,
// LC_NUMERIC and LANG, the time zone from the host, the real clock, the cache folder from XDG_CACHE_HOME or HOME.
Environment withDefaults(Environment environment);

}  // namespace vemo
