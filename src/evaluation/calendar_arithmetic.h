// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

class UnitConverter;

// A date so much later, or earlier for a `sign` of -1, as calendars count it: months and years end at the last day of a
// shorter month, workdays are Monday to Friday, whole days and weeks keep the time of day. A day stays one unless the
// duration is shorter than a day. Nothing for what is no duration; not-a-number beyond the years of the calendar.
std::optional<Value> shiftedByCalendar(const Value& date, const Value& duration, int sign,
                                       const UnitConverter& converter, Context& context);

// The sum of two durations, with the months, days and seconds that were written in it, where calendars count some of
// them.
Value withParts(const Value& sum, const Value& left, const Value& right, const UnitConverter& converter,
                Context& context);
// True for a duration that leads from a day to a day.
bool isOfWholeDays(const Value& duration, const UnitConverter& converter, Context& context);

// The time from one date to another in a unit of time; without one, in weeks or what is shorter, and from a year on in
// years. Two days are whole days apart; months and years are those of the calendar, and what is left over counts as
// days of 30 a month and 365 a year. Nothing for what is no unit of time.
std::optional<Value> calendarDifference(const Value& from, const Value& to, std::optional<std::u16string_view> unit,
                                        const UnitConverter& converter, Context& context);

// Full years from one date to another.
std::optional<Value> fullYears(const Value& from, const Value& to, Context& context);

// The number of the week by ISO 8601: weeks begin on Monday, the first one holds January 4.
std::optional<Value> weekNumber(const Value& date, Context& context);

// The present moment, and today.
std::optional<Value> presentTime(Context& context);
std::optional<Value> presentDay(Context& context);

}  // namespace vemo
