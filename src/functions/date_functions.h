// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "functions/function.h"

namespace vemo {

// Dates, times and time zones. "Now" is the current time of the context, never the clock: lines that use it are
// calculated again when it changes.
std::shared_ptr<const Function> todayFunction();
std::shared_ptr<const Function> yesterdayFunction();
std::shared_ptr<const Function> tomorrowFunction();
std::shared_ptr<const Function> timeFunction();           // now, in the local time zone
std::shared_ptr<const Function> localTimeZoneFunction();  // a time zone
std::shared_ptr<const Function> gmtFunction();            // a time zone, so many hours ahead of Greenwich
std::shared_ptr<const Function> fromUnixTimeFunction();   // the UTC time of a Unix timestamp

}  // namespace vemo
