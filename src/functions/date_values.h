// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

// A date-time value. Its instant is arranged so that the local time zone shows on it the time that the clocks of its
// own zone show: moving it to another zone shifts the instant.
Value dateValue(Date instant);

// A date-time moved from its time zone to another, by the difference of their offsets at the current time of the
// context. Nothing when the value has no date or no zone, or when a zone is unknown.
std::optional<Value> movedToTimeZone(const Value& dateTime, const TimeZone& target, Context& context);

}  // namespace vemo
