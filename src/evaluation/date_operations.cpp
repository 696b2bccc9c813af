// SPDX-License-Identifier: MIT
#include "evaluation/date_operations.h"

#include <cmath>

#include "functions/date_values.h"
#include "platform/time_zones.h"
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

Value shifted(Date date, const DecimalNumber& seconds) {
    const Date result = date + Seconds(seconds.toDouble());
    return isInCalendar(result) ? dateValue(result) : Value(DecimalNumber::notANumberValue());
}

}  // namespace

std::optional<Value> DateAndDecimalAdditionOperation::calculate(const Value& left, const Value& right,
                                                                Context& context) const {
    const bool leftIsDate = left.has(Attribute::date);
    const bool rightIsDate = right.has(Attribute::date);
    if (leftIsDate && rightIsDate) return Value(DecimalNumber::notANumberValue());
    if (!leftIsDate && !rightIsDate) return std::nullopt;
    const auto seconds = wholeSeconds(leftIsDate ? right : left, unitConverter_, context);
    if (!seconds) return std::nullopt;
    return shifted(*(leftIsDate ? left : right).date(), *seconds);
}

std::optional<Value> DateAndDecimalSubtractionOperation::calculate(const Value& left, const Value& right,
                                                                   Context& context) const {
    const auto date = left.date();
    if (!date || right.has(Attribute::date)) return std::nullopt;
    const auto seconds = wholeSeconds(right, unitConverter_, context);
    if (!seconds) return std::nullopt;
    return shifted(*date, seconds->negative());
}

std::optional<Value> DateSubtractionOperation::calculate(const Value& left, const Value& right, Context&) const {
    const auto end = left.date();
    const auto start = right.date();
    if (!end || !start) return std::nullopt;
    const double seconds = Seconds(*end - *start).count();
    const TimeUnit* unit = &timeUnits.back();
    while (unit != &timeUnits.front() && std::abs(seconds) < static_cast<double>(unit->seconds)) --unit;
    const double count = seconds / static_cast<double>(unit->seconds);
    return Value(DecimalNumber::fromDouble(count)).with(unit->id, Attribute::unit);
}

std::optional<Value> TimeZoneConversionOperation::calculate(const Value& left, const Value& right,
                                                            Context& context) const {
    const TimeZone* target = right.timeZone();
    return target ? movedToTimeZone(left, *target, context) : std::nullopt;
}

}  // namespace vemo
