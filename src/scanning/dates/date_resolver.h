// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "platform/time_zones.h"
#include "scanning/dates/date_detector.h"
#include "scanning/dates/date_grammar.h"

namespace vemo {

// Turns what a text says of days and times into instants, seen from a moment in a zone.
struct ResolvedDates {
    std::vector<DetectedDate> dates;
    std::vector<TextRange> nonexistent;  // readings without an instant, such as February 30
};
ResolvedDates resolvedDates(std::vector<DateReading> readings, Date now, const TimeZoneRules& localZone);

}  // namespace vemo
