// SPDX-License-Identifier: MIT
#include "evaluation/calendar_arithmetic.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

#include "base/text.h"
#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "units/time_units.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year_month_day;

constexpr std::int64_t most = 1'000'000;  // months or days that are counted one by one

year_month_day dayOf(const CivilTime& civil) {
    return std::chrono::year(civil.year) / std::chrono::month(civil.month) / std::chrono::day(civil.day);
}

bool isWorkday(sys_days day) {
    return weekday(day) != std::chrono::Saturday && weekday(day) != std::chrono::Sunday;
}

// Where the year would be none that can be written down, a day of the last one that can, which no calendar here
// reaches.
sys_days monthsLater(year_month_day date, std::int64_t count) {
    constexpr std::int64_t monthsPerYear = 12, mostYears = 32'500;
    const std::int64_t year = static_cast<int>(date.year());
    count = std::clamp(count, (-mostYears - year) * monthsPerYear, (mostYears - year) * monthsPerYear);
    const year_month_day later = date + std::chrono::months(count);
    return later.ok() ? sys_days(later) : sys_days(later.year() / later.month() / std::chrono::last);
}

sys_days workdaysLater(sys_days day, std::int64_t count) {
    const int step = count < 0 ? -1 : 1;
    for (std::int64_t left = std::abs(count); left > 0;) {
        day += days(step);
        if (isWorkday(day)) --left;
    }
    return day;
}

// The amount of a duration, or so many parts of its unit, if that is a whole number: 1.5 years are 18 months.
std::optional<std::int64_t> wholeCount(const Value& duration, int parts = 1) {
    const auto amount = duration.decimal();
    if (!amount || amount->notANumber()) return std::nullopt;
    const DecimalNumber count = parts == 1 ? *amount : amount->multiplying(DecimalNumber::fromInt64(parts));
    const std::int64_t whole = count.toInt64();
    if (std::abs(whole) > most || !(DecimalNumber::fromInt64(whole) == count)) return std::nullopt;
    return whole;
}

// A duration as it was written.
struct DurationParts {
    std::int64_t months = 0, days = 0, seconds = 0;
};

std::int64_t averageSeconds(const DurationParts& parts) {
    const std::int64_t years = parts.months / 12, months = parts.months % 12;
    return ((years * 365 + months * 30 + parts.days) * secondsPerDay) + parts.seconds;
}

std::optional<std::int64_t> wholeSeconds(const Value& duration, const UnitConverter& converter, Context& context) {
    const auto converted = converter.convert(duration, timeUnits.front().id, context);
    const auto seconds = converted ? converted->decimal() : std::nullopt;
    if (!seconds || seconds->notANumber()) return std::nullopt;
    constexpr int fractionDigits = 6;  // the amount of another unit may have been rounded
    return seconds->round(fractionDigits).integer().toInt64();
}

// The parts of a sum, or those of an amount of one unit; nothing for a fraction of a month.
std::optional<DurationParts> partsOf(const Value& duration, const UnitConverter& converter, Context& context) {
    if (const auto written = duration.string(Attribute::precision)) {
        DurationParts parts;
        std::int64_t* const fields[] = {&parts.months, &parts.days, &parts.seconds};
        std::size_t field = 0;
        for (const char16_t c : *written) {
            if (c >= u'0' && c <= u'9')
                *fields[field] = *fields[field] * 10 + (c - u'0');
            else if (c != u' ' || ++field >= std::size(fields))
                return std::nullopt;
        }
        // Whatever was calculated with the sum since then has changed it: it has other parts.
        if (wholeSeconds(duration, converter, context) == averageSeconds(parts)) return parts;
        return std::nullopt;
    }
    const auto unit = duration.string(Attribute::unit);
    if (!unit) return std::nullopt;
    if (const int months = calendarMonths(*unit)) {
        const auto count = wholeCount(duration, months);
        return count && *count >= 0 ? std::optional(DurationParts{*count}) : std::nullopt;
    }
    const auto seconds = wholeSeconds(duration, converter, context);
    return seconds && *seconds >= 0
               ? std::optional(DurationParts{0, *seconds / secondsPerDay, *seconds % secondsPerDay})
               : std::nullopt;
}

Value beyondCalendar() {
    return Value(DecimalNumber::notANumberValue());
}

// The same time of day on another day.
std::optional<Value> onDay(const Value& date, sys_days at, const TimeZoneRules& zone) {
    if (!isInCalendar(Date(at.time_since_epoch()))) return beyondCalendar();
    const year_month_day day(at);
    CivilTime civil = zone.civil(*date.date());
    civil.year = static_cast<int>(day.year());
    civil.month = static_cast<unsigned>(day.month());
    civil.day = static_cast<unsigned>(day.day());
    const auto instant = zone.instant(civil);
    if (!instant) return std::nullopt;
    return isInCalendar(*instant) ? date.with(*instant) : beyondCalendar();
}

// Whole months between two days, and the days that are left over; from the earlier to the later one.
struct MonthsAndDays {
    std::int64_t months;
    std::int64_t days;
};
MonthsAndDays monthsBetween(year_month_day from, year_month_day to) {
    std::int64_t months = (to.year() / to.month() - from.year() / from.month()).count();
    if (monthsLater(from, months) > sys_days(to)) --months;
    return {months, (sys_days(to) - monthsLater(from, months)).count()};
}

Value quantity(double count, std::u16string_view unit) {
    return Value(DecimalNumber::fromDouble(count)).with(unit, Attribute::unit);
}

}  // namespace

Value withParts(const Value& sum, const Value& left, const Value& right, const UnitConverter& converter,
                Context& context) {
    const auto unitOf = [](const Value& value) { return value.string(Attribute::unit).value_or(u""); };
    if (!calendarMonths(unitOf(left)) && !calendarMonths(unitOf(right))) return sum;
    const auto first = partsOf(left, converter, context), second = partsOf(right, converter, context);
    if (!first || !second || first->days > most || second->days > most) return sum;
    std::u16string text;
    for (const std::int64_t field :
         {first->months + second->months, first->days + second->days, first->seconds + second->seconds}) {
        if (!text.empty()) text += u' ';
        text += toUtf16(std::to_string(field));
    }
    return sum.with(text, Attribute::precision);
}

bool isOfWholeDays(const Value& duration, const UnitConverter& converter, Context& context) {
    const auto unit = duration.string(Attribute::unit);
    if (unit == u"workday") return wholeCount(duration).has_value();
    const bool ofDays = unit && (unit == u"day" || unit == u"week" || calendarMonths(*unit));
    const auto parts = ofDays ? partsOf(duration, converter, context) : std::nullopt;
    return parts && parts->seconds == 0;
}

std::optional<Value> presentTime(Context& context) {
    context.addDependencyOn(context_keys::currentTime, std::nullopt, Value());
    const Date* now = context.get<Date>(context_keys::currentTime);
    if (!now) return std::nullopt;
    return timeValue(*now, context.get<TimeZone>(context_keys::currentTimeZone));
}

std::optional<Value> presentDay(Context& context) {
    context.addDependencyOn(context_keys::currentDay, std::nullopt, Value());
    const Date* now = context.get<Date>(context_keys::currentTime);
    return now ? std::optional(dayValue(*now)) : std::nullopt;
}

std::optional<Value> shiftedByCalendar(const Value& date, const Value& duration, int sign,
                                       const UnitConverter& converter, Context& context) {
    const auto zone = localZone(context);
    const auto unit = duration.string(Attribute::unit);
    if (!zone || !unit || !date.date() || !isInCalendar(*date.date())) return std::nullopt;
    const sys_days day(dayOf(zone->civil(*date.date())));
    if (const auto parts = duration.has(Attribute::precision) ? partsOf(duration, converter, context) : std::nullopt;
        parts && parts->months <= most && parts->days <= most) {
        const sys_days later = monthsLater(day, sign * parts->months) + days(sign * parts->days);
        const auto moved = onDay(date, later, *zone);
        if (!moved || moved->isNotANumber() || parts->seconds == 0) return moved;
        const Date to = secondsLater(*moved, static_cast<double>(sign * parts->seconds), zone.get());
        return isDay(date) ? timeValue(to, context.get<TimeZone>(context_keys::currentTimeZone)) : moved->with(to);
    }
    if (const int months = calendarMonths(*unit))
        if (const auto count = wholeCount(duration, months)) return onDay(date, monthsLater(day, sign * *count), *zone);
    if (const auto count = wholeCount(duration)) {
        if (*unit == u"workday") return onDay(date, workdaysLater(day, sign * *count), *zone);
        if (*unit == u"day") return onDay(date, day + days(sign * *count), *zone);
        if (*unit == u"week") return onDay(date, day + std::chrono::weeks(sign * *count), *zone);
    }
    const auto seconds = wholeSeconds(duration, converter, context);
    if (!seconds) return std::nullopt;
    const auto shift = static_cast<double>(sign * *seconds);
    if (!isInCalendar(*date.date() + std::chrono::duration<double>(shift))) return beyondCalendar();
    const Date to = secondsLater(date, shift, zone.get());
    if (isDay(date) && std::fmod(shift, secondsPerDay) == 0)
        return dayValue(daysLater(*date.date(), shift / secondsPerDay, zone.get()));
    if (isDay(date)) return timeValue(to, context.get<TimeZone>(context_keys::currentTimeZone));
    return date.with(to);
}

std::optional<Value> calendarDifference(const Value& from, const Value& to, std::optional<std::u16string_view> unit,
                                        const UnitConverter& converter, Context& context) {
    const auto zone = localZone(context);
    const auto start = from.date(), end = to.date();
    if (!zone || !start || !end || !isInCalendar(*start) || !isInCalendar(*end)) return std::nullopt;
    const bool wholeDays = isDay(from) && isDay(to);
    const double seconds = wholeDays ? daysBetween(*start, *end, *zone) * secondsPerDay
                                     : std::chrono::duration<double>(*end - *start).count();
    const year_month_day first = dayOf(zone->civil(*start)), last = dayOf(zone->civil(*end));
    const bool backwards = sys_days(last) < sys_days(first);
    const MonthsAndDays calendar = backwards ? monthsBetween(last, first) : monthsBetween(first, last);
    constexpr int monthsPerYear = 12, daysPerMonth = 30, daysPerYear = 365;
    if (!unit) {
        constexpr std::size_t weekUnit = 4;
        std::size_t largest = weekUnit;
        while (largest > 0 && std::abs(seconds) < static_cast<double>(timeUnits[largest].seconds)) --largest;
        unit = wholeDays && calendar.months >= monthsPerYear ? std::u16string_view(u"year") : timeUnits[largest].id;
    }
    if (*unit == u"workday") {
        std::int64_t count = 0;
        const sys_days early = backwards ? sys_days(last) : sys_days(first),
                       late = backwards ? sys_days(first) : sys_days(last);
        const std::int64_t span = (late - early).count();
        constexpr int workdaysPerWeek = 5, daysPerWeek = 7;
        count = span / daysPerWeek * workdaysPerWeek;
        for (sys_days day = late - days(span % daysPerWeek); day < late;)
            if (isWorkday(day += days(1))) ++count;
        return quantity(static_cast<double>(backwards ? -count : count), *unit);
    }
    if (const int months = calendarMonths(*unit); months != 0 && months <= monthsPerYear) {
        const int unitDays = months == monthsPerYear ? daysPerYear : months * daysPerMonth;
        const double rest = static_cast<double>(calendar.months % months * daysPerMonth + calendar.days) / unitDays;
        const double count = static_cast<double>(calendar.months / months) + rest;
        return quantity(backwards ? -count : count, *unit);
    }
    return converter.convert(quantity(seconds, timeUnits.front().id), *unit, context);
}

std::optional<Value> fullYears(const Value& from, const Value& to, Context& context) {
    const auto zone = localZone(context);
    if (!zone || !from.date() || !to.date()) return std::nullopt;
    const year_month_day first = dayOf(zone->civil(*from.date())), last = dayOf(zone->civil(*to.date()));
    constexpr int monthsPerYear = 12;
    if (sys_days(last) < sys_days(first)) return std::nullopt;
    return quantity(static_cast<double>(monthsBetween(first, last).months / monthsPerYear), u"year");
}

std::optional<Value> weekNumber(const Value& date, Context& context) {
    const auto zone = localZone(context);
    if (!zone || !date.date()) return std::nullopt;
    const sys_days day(dayOf(zone->civil(*date.date())));
    const sys_days thursday = day - (weekday(day) - std::chrono::Monday) + days(3);
    const sys_days newYear = year_month_day(thursday).year() / std::chrono::January / 1;
    constexpr int daysPerWeek = 7;
    return Value(DecimalNumber::fromInt64((thursday - newYear).count() / daysPerWeek + 1));
}

}  // namespace vemo
