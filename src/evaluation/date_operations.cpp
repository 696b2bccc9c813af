// SPDX-License-Identifier: MIT
#include "evaluation/date_operations.h"

#include <algorithm>
#include <cmath>

#include "evaluation/calendar_arithmetic.h"
#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "units/time_units.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

using Seconds = std::chrono::duration<double>;

// Whole seconds, rounded towards the past; nothing for what is no duration.
std::optional<DecimalNumber> wholeSeconds(const Value& duration, const UnitConverter& converter, Context& context) {
    const auto converted = converter.convert(duration, timeUnits.front().id, context);
    const auto seconds = converted ? converted->decimal() : std::nullopt;
    if (!seconds || seconds->notANumber()) return std::nullopt;
    return seconds->integer();
}

bool isCountOfDays(const Value& duration) {
    return duration.is(Attribute::unit, u"day") || duration.is(Attribute::unit, u"week");
}
// Workdays are counted on the calendar; as a length of time each has eight hours.
bool isCountOfWorkdays(const Value& duration) {
    const auto count = duration.decimal();
    return duration.is(Attribute::unit, u"workday") && count && count->integer() == *count;
}
bool isLonger(const Value& duration) {
    return duration.is(Attribute::unit, u"month") || duration.is(Attribute::unit, u"year");
}

// A day stays one when whole days are added, a time keeps its zone. Whole days and weeks keep the time of day across
// clock changes.
Value shifted(const Value& date, const DecimalNumber& seconds, const Value& duration, Context& context) {
    const Date from = *date.date();
    const double count = seconds.toDouble();
    if (!isInCalendar(from + Seconds(count))) return Value(DecimalNumber::notANumberValue());
    const auto local = localZone(context);
    const bool wholeDays = std::fmod(count, secondsPerDay) == 0;
    const bool staysDay = isDay(date) && wholeDays && (isCountOfDays(duration) || isLonger(duration));
    const Date to = wholeDays && (staysDay || isCountOfDays(duration))
                        ? daysLater(from, count / secondsPerDay, local.get())
                        : secondsLater(date, count, local.get());
    if (staysDay) return dayValue(to);
    const Value time = isDay(date) ? timeValue(to, context.get<TimeZone>(context_keys::currentTimeZone))
                                   : date.with(to).without(Attribute::decimal);
    // In "now + 3 h in JST" the zone was handed to the duration.
    const TimeZone* target = duration.timeZone();
    const auto moved = target ? movedToTimeZone(time, *target, context) : std::nullopt;
    return moved ? *moved : time;
}

}  // namespace

std::optional<Value> DateAndDecimalAdditionOperation::calculate(const Value& left, const Value& right,
                                                                Context& context) const {
    const bool leftIsDate = left.has(Attribute::date);
    const bool rightIsDate = right.has(Attribute::date);
    if (leftIsDate && rightIsDate) return Value(DecimalNumber::notANumberValue());
    if (!leftIsDate && !rightIsDate) return std::nullopt;
    const Value &date = leftIsDate ? left : right, &duration = leftIsDate ? right : left;
    if (isCountOfWorkdays(duration)) return shiftedByCalendar(date, duration, 1, unitConverter_, context);
    const auto seconds = wholeSeconds(duration, unitConverter_, context);
    if (!seconds) return std::nullopt;
    return shifted(date, *seconds, duration, context);
}

std::optional<Value> DateAndDecimalSubtractionOperation::calculate(const Value& left, const Value& right,
                                                                   Context& context) const {
    const auto date = left.date();
    if (!date || right.has(Attribute::date)) return std::nullopt;
    if (isCountOfWorkdays(right)) return shiftedByCalendar(left, right, -1, unitConverter_, context);
    const auto seconds = wholeSeconds(right, unitConverter_, context);
    if (!seconds) return std::nullopt;
    return shifted(left, seconds->negative(), right, context);
}

std::optional<Value> DateSubtractionOperation::calculate(const Value& left, const Value& right,
                                                         Context& context) const {
    const auto end = left.date();
    const auto start = right.date();
    if (!end || !start) return std::nullopt;
    const auto local = isDay(left) && isDay(right) ? localZone(context) : nullptr;
    const double seconds = local ? daysBetween(*start, *end, *local) * secondsPerDay : Seconds(*end - *start).count();
    const TimeUnit* unit = &timeUnits.back();
    while (unit != &timeUnits.front() && std::abs(seconds) < static_cast<double>(unit->seconds)) --unit;
    const double count = seconds / static_cast<double>(unit->seconds);
    return Value(DecimalNumber::fromDouble(count)).with(unit->id, Attribute::unit);
}

std::optional<Value> DurationAdditionOperation::calculate(const Value& left, const Value& right,
                                                          Context& context) const {
    const TimeUnit* larger = nullptr;
    for (const Value* value : {&left, &right}) {
        const auto unit = value->string(Attribute::unit);
        if (!unit || !value->has(Attribute::decimal)) return std::nullopt;
        const auto found =
            std::find_if(timeUnits.begin(), timeUnits.end(), [&](const TimeUnit& u) { return u.id == *unit; });
        if (found == timeUnits.end()) return std::nullopt;
        if (!larger || found->seconds > larger->seconds) larger = &*found;
    }
    if (right.is(Attribute::unit, larger->id) && left.is(Attribute::unit, larger->id)) return std::nullopt;
    // In the smaller unit nothing is rounded; seconds may have a fraction.
    const auto a = unitConverter_.convert(left, timeUnits.front().id, context);
    const auto b = unitConverter_.convert(right, timeUnits.front().id, context);
    if (!a || !b) return std::nullopt;
    constexpr int fractionDigits = 9;  // of seconds: the amounts may have been rounded
    const DecimalNumber sum =
        a->decimal()->adding(subtracts_ ? b->decimal()->negative() : *b->decimal()).round(fractionDigits);
    if (!(sum.integer() == sum)) return std::nullopt;  // larger units show whole seconds only
    const auto result = unitConverter_.convert(a->without(Attribute::precision).with(sum), larger->id, context);
    return result && !subtracts_ ? withParts(*result, left, right, unitConverter_, context) : result;
}

std::optional<Value> TimeZoneConversionOperation::calculate(const Value& left, const Value& right,
                                                            Context& context) const {
    const TimeZone* target = right.timeZone();
    return target ? movedToTimeZone(left, *target, context) : std::nullopt;
}

}  // namespace vemo
