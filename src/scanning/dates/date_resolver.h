// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "platform/time_zones.h"
#include "scanning/dates/date_detector.h"
#include "scanning/dates/date_grammar.h"

namespace vemo {

// Turns what a text says of days and times into instants, seen from a moment in a zone. A reading without an instant,
// such as February 30, is left out.
std::vector<DetectedDate> resolvedDates(std::vector<DateReading> readings, Date now, const TimeZoneRules& localZone);

}  // namespace vemo
