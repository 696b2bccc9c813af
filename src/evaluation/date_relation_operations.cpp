// SPDX-License-Identifier: MIT
#include "evaluation/date_relation_operations.h"

#include <algorithm>
#include <cmath>

#include "evaluation/calendar_arithmetic.h"
#include "evaluation/operator_collection.h"
#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

using Kind = DateRelation::Kind;

bool isDuration(const Value& value) {
    return value.has(Attribute::decimal) && value.has(Attribute::unit);
}
bool isBareUnit(const Value& value) {
    return value.has(Attribute::unit) && !value.has(Attribute::decimal) && !value.has(Attribute::date);
}
bool isDate(const Value& value) {
    return value.has(Attribute::date);
}

// Today for durations of whole days, weeks and longer ones, else the present moment.
std::optional<Value> presentFor(const Value& duration, const UnitConverter& converter, Context& context) {
    return isOfWholeDays(duration, converter, context) ? presentDay(context) : presentTime(context);
}

// The present that a date is measured from or to: today for a day, else this moment.
std::optional<Value> presentBeside(const Value& date, Context& context) {
    return isDay(date) ? presentDay(context) : presentTime(context);
}

struct Relations {
    const UnitConverter& converter;

    std::optional<Value> fromPresent(const Value& left, const Value& right, int sign, Context& context) const {
        if (!left.isEmpty() && !right.isEmpty()) return std::nullopt;
        const Value& duration = left.isEmpty() ? right : left;
        if (!isDuration(duration)) return std::nullopt;
        const auto present = presentFor(duration, converter, context);
        return present ? shiftedByCalendar(*present, duration, sign, converter, context) : std::nullopt;
    }
    std::optional<Value> fromDate(const Value& left, const Value& right, int sign, Context& context) const {
        // In Japanese the day comes first.
        const bool swapped = isDate(left);
        const Value& duration = swapped ? right : left;
        const Value& date = swapped ? left : right;
        if (!isDuration(duration) || !isDate(date)) return std::nullopt;
        return shiftedByCalendar(date, duration, sign, converter, context);
    }
    std::optional<Value> between(const Value& from, const Value& to, const Value& wanted, Context& context) const {
        const auto unit = isBareUnit(wanted) ? wanted.string(Attribute::unit) : std::nullopt;
        return calendarDifference(from, to, unit, converter, context);
    }
    // The time from the present until a date, or with a sign of -1 since it; from one date until another.
    std::optional<Value> besidePresent(const Value& left, const Value& right, int sign, Context& context) const {
        if (sign > 0 && isDate(left) && isDate(right)) return between(left, right, Value(), context);
        const bool dateFirst = isDate(left);
        const Value& date = dateFirst ? left : right;
        const Value& unit = dateFirst ? right : left;
        if (!isDate(date) || (!unit.isEmpty() && !isBareUnit(unit))) return std::nullopt;
        const auto present = presentBeside(date, context);
        if (!present) return std::nullopt;
        return sign > 0 ? between(*present, date, unit, context) : between(date, *present, unit, context);
    }
    // The unit that is asked for goes with the beginning of the span.
    std::optional<Value> span(const Value& left, const Value& right, Context& context) const {
        if (!isDate(left) || !isDate(right)) return std::nullopt;
        const auto unit = left.string(Attribute::type);
        return calendarDifference(left.without(Attribute::type), right, unit, converter, context);
    }
    std::optional<Value> measured(const Value& left, const Value& right, Context&) const {
        if (!isBareUnit(left) || !isDate(right)) return std::nullopt;
        return right.with(*left.string(Attribute::unit), Attribute::type);
    }
};

// The date of an operator that has one operand, on either side.
const Value* onlyDate(const Value& left, const Value& right) {
    if (isDate(left) && !isDate(right)) return &left;
    return isDate(right) && !isDate(left) ? &right : nullptr;
}

// A number of hours as a time of the given day, or of today without one. An hour before noon counts from noon where
// `half` is 1.
std::optional<Value> onClock(const Value& day, const Value& hours, int half, Context& context) {
    constexpr int hoursPerDay = 24, noon = 12;
    const auto zone = localZone(context);
    const auto count = hours.is(Attribute::unit, u"hour") ? hours.decimal() : std::nullopt;
    if (!zone || !count || (!day.isEmpty() && !isDay(day))) return std::nullopt;
    double hour = count->toDouble();
    if (half == 1 && hour < noon) hour += noon;
    if (hour < 0 || hour >= hoursPerDay) return std::nullopt;
    const auto base = day.isEmpty() ? presentDay(context) : std::optional(day);
    if (!base) return std::nullopt;
    CivilTime civil = zone->civil(*base->date());
    constexpr int minutesPerHour = 60;
    civil.second = 0;
    civil.hour = static_cast<int>(hour);
    civil.minute = static_cast<int>(std::lround((hour - civil.hour) * minutesPerHour));
    if (civil.minute == minutesPerHour) return std::nullopt;
    const auto instant = zone->instant(civil);
    return instant ? std::optional(timeValue(*instant, context.get<TimeZone>(context_keys::currentTimeZone)))
                   : std::nullopt;
}

using Calculation = std::optional<Value> (*)(const Relations&, const Value& left, const Value& right, Context&);

class RelationOperation : public Operation {
public:
    RelationOperation(const UnitConverter& converter, Calculation calculation)
        : relations_{converter}, calculation_(calculation) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override {
        return calculation_(relations_, left, right, context);
    }

private:
    Relations relations_;
    Calculation calculation_;
};

struct Row {
    Kind kind;
    std::u16string_view id;
    int priority;
    Calculation calculation;
};

// A unit is given to the beginning of a span before the span is measured.
constexpr int usual = 300, first = 310;

constexpr Row rows[] = {
    {Kind::fromNow, u"from_now", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.fromPresent(a, b, 1, c); }},
    {Kind::ago, u"ago", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.fromPresent(a, b, -1, c); }},
    {Kind::before, u"before", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.fromDate(a, b, -1, c); }},
    {Kind::after, u"after", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.fromDate(a, b, 1, c); }},
    {Kind::until, u"until", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.besidePresent(a, b, 1, c); }},
    {Kind::since, u"since", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.besidePresent(a, b, -1, c); }},
    {Kind::span, u"span", usual,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.span(a, b, c); }},
    {Kind::measured, u"measured", first,
     [](const Relations& r, const Value& a, const Value& b, Context& c) { return r.measured(a, b, c); }},
    {Kind::age, u"age", first,
     [](const Relations&, const Value& a, const Value& b, Context& c) -> std::optional<Value> {
         const Value* date = onlyDate(a, b);
         const auto present = date ? presentDay(c) : std::nullopt;
         return present ? fullYears(*date, *present, c) : std::nullopt;
     }},
    {Kind::weekday, u"weekday", first,
     [](const Relations&, const Value& a, const Value& b, Context&) -> std::optional<Value> {
         const Value* date = onlyDate(a, b);
         return date ? std::optional(date->with(u"weekday", Attribute::precision)) : std::nullopt;
     }},
    {Kind::weekNumber, u"week_number", first,
     [](const Relations&, const Value& a, const Value& b, Context& c) -> std::optional<Value> {
         const Value* date = onlyDate(a, b);
         return date ? weekNumber(*date, c) : std::nullopt;
     }},
    {Kind::placed, u"placed", first,
     [](const Relations&, const Value&, const Value&, Context&) -> std::optional<Value> { return std::nullopt; }},
    {Kind::clock, u"clock", usual,
     [](const Relations&, const Value& a, const Value& b, Context& c) { return onClock(a, b, 0, c); }},
    {Kind::clockAm, u"clock_am", first,
     [](const Relations&, const Value& a, const Value& b, Context& c) { return onClock(b, a, 0, c); }},
    {Kind::clockPm, u"clock_pm", first,
     [](const Relations&, const Value& a, const Value& b, Context& c) { return onClock(b, a, 1, c); }},
};

}  // namespace

std::u16string_view dateOperatorId(Kind kind) {
    for (const Row& row : rows)
        if (row.kind == kind) return row.id;
    return u"in";
}

bool isDateRelation(std::u16string_view operatorId) {
    return std::any_of(std::begin(rows), std::end(rows), [&](const Row& row) { return row.id == operatorId; });
}

void registerDateOperators(OperatorCollection& operators) {
    for (const Row& row : rows) operators.add({std::u16string(row.id), {}, {}, row.priority});
}

void registerDateRelations(OperationCollection& operations, const UnitConverter& unitConverter) {
    for (const Row& row : rows)
        operations.add(row.id, std::make_shared<RelationOperation>(unitConverter, row.calculation));
}

}  // namespace vemo
