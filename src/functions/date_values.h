// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/time_zones.h"
#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

// A date-time value. Its instant is arranged so that the local time zone shows on it the time that the clocks of its
// own zone show: moving it to another zone shifts the instant.
Value dateValue(Date instant);

// `dayValue` stands for a whole day, whatever the time of day of the instant; `timeValue` for a time, of a zone where
// that is known.
Value dayValue(Date instant);
Value timeValue(Date instant, const TimeZone* zone);
bool isDay(const Value& date);

// The rules of the local time zone; null where the context doesn't know it.
std::shared_ptr<const TimeZoneRules> localZone(Context& context);

// The same time of day so many days later, as calendar and clock show it.
Date daysLater(Date instant, double days, const TimeZoneRules* local);
// A date-time so many seconds later by the clocks of its own zone.
Date secondsLater(const Value& dateTime, double seconds, const TimeZoneRules* local);
// How many days the calendar has from one instant to another.
double daysBetween(Date start, Date end, const TimeZoneRules& local);

// The time that the local clock shows, taken as one of a place: 9:00 of London, told here. Nothing when the value has
// no date or a zone is unknown.
std::optional<Value> placedInTimeZone(const Value& dateTime, const TimeZone& place, Context& context);

// A date-time moved from its time zone to another, by the offsets of its own day; by those of the current time
// where the context doesn't know the local zone. Nothing when the value has no date or no zone, or when a zone is
// unknown.
std::optional<Value> movedToTimeZone(const Value& dateTime, const TimeZone& target, Context& context);

}  // namespace vemo
