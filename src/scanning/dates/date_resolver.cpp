// SPDX-License-Identifier: MIT
#include "scanning/dates/date_resolver.h"

#include <algorithm>

namespace vemo {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::weeks;
using std::chrono::year_month_day;

constexpr int noon = 12;

std::optional<year_month_day> existing(year_month_day date) {
    const std::chrono::year earliest(-9999), latest(9999);
    const bool known = date.ok() && date.year() >= earliest && date.year() <= latest;
    return known ? std::optional(date) : std::nullopt;
}

// A month after January 31 is the last day of February.
std::optional<year_month_day> shortened(year_month_day date) {
    return existing(date.ok() ? date : year_month_day(date.year() / date.month() / std::chrono::last));
}

std::optional<year_month_day> shiftedBy(year_month_day date, const ShiftedDay& shift) {
    switch (shift.unit) {
        case DateUnit::day:
            return existing(sys_days(date) + days(shift.count));
        case DateUnit::week:
            return existing(sys_days(date) + weeks(shift.count));
        case DateUnit::month:
            return shortened(date + std::chrono::months(shift.count));
        case DateUnit::year:
            return shortened(date + std::chrono::years(shift.count));
        default:
            return std::nullopt;  // shorter than a day
    }
}

sys_days mondayOf(sys_days day) {
    return day - (weekday(day) - std::chrono::Monday);
}

// The day of a reading as seen from another day; nothing for one that does not exist.
struct DayResolver {
    year_month_day today;

    std::optional<year_month_day> operator()(const NamedDay& named) const {
        const auto inYear = [&](std::chrono::year year) -> std::optional<year_month_day> {
            const auto month = year / std::chrono::month(named.month);
            return existing(named.day == 0 ? year_month_day(month / std::chrono::last)
                                           : month / std::chrono::day(named.day));
        };
        if (named.year) return inYear(std::chrono::year(*named.year));
        const auto date = inYear(today.year());
        // February 29 may be some years away.
        constexpr int furthest = 8;
        for (int years = 1; named.direction != 0 && years <= furthest; ++years) {
            const auto other =
                years == 1 ? date : inYear(today.year() + std::chrono::years((years - 1) * named.direction));
            if (other && (named.direction > 0 ? *other > today : *other < today)) return other;
        }
        return date;
    }

    std::optional<year_month_day> operator()(const NamedWeekday& named) const {
        const weekday wanted(named.weekday);
        const sys_days now(today);
        if (named.weeks) return existing(mondayOf(now) + weeks(*named.weeks) + (wanted - std::chrono::Monday));
        const days ahead = wanted - weekday(now);
        const bool isToday = ahead.count() == 0;
        if (named.direction < 0) return existing(now + ahead - weeks(1));
        return existing(now + ahead + weeks(isToday && named.direction > 0 ? 1 : 0));
    }

    std::optional<year_month_day> operator()(const ShiftedDay& shift) const { return shiftedBy(today, shift); }

    std::optional<year_month_day> operator()(const EdgeDay& edge) const {
        const auto inside = shiftedBy(today, {edge.unit, edge.count});
        if (!inside) return std::nullopt;
        switch (edge.unit) {
            case DateUnit::week:
                return existing(mondayOf(*inside) + days(edge.end ? 6 : 0));
            case DateUnit::month:
                return edge.end ? existing(inside->year() / inside->month() / std::chrono::last)
                                : existing(inside->year() / inside->month() / 1);
            case DateUnit::year:
                return edge.end ? existing(inside->year() / 12 / 31) : existing(inside->year() / 1 / 1);
            default:
                return std::nullopt;
        }
    }

    std::optional<year_month_day> operator()(const BusinessDay& business) const {
        sys_days day(today);
        do day += days(business.count);
        while (weekday(day) == std::chrono::Saturday || weekday(day) == std::chrono::Sunday);
        return existing(day);
    }
};

year_month_day dayOf(const CivilTime& civil) {
    return std::chrono::year(civil.year) / std::chrono::month(civil.month) / std::chrono::day(civil.day);
}

// "in 10 minutes": an instant, not a day.
std::optional<double> secondsFromNow(const DateReading& reading) {
    const auto* shift = reading.day ? std::get_if<ShiftedDay>(&*reading.day) : nullptr;
    if (!shift) return std::nullopt;
    switch (shift->unit) {
        case DateUnit::second:
            return shift->count;
        case DateUnit::minute:
            return shift->count * 60.0;
        default:
            return std::nullopt;  // hours are durations, never dates
    }
}

NamedDay* yearlessDay(DateReading& reading) {
    auto* named = reading.day ? std::get_if<NamedDay>(&*reading.day) : nullptr;
    return named && !named->year ? named : nullptr;
}

class Resolver {
public:
    Resolver(Date now, const TimeZoneRules& localZone) : now_(now), localZone_(localZone) {}

    std::optional<DetectedDate> resolved(const DateReading& reading) {
        if (const auto seconds = secondsFromNow(reading)) {
            if (reading.time) return std::nullopt;
            return detected(reading, now_ + std::chrono::duration<double>(*seconds), DateBasis::now, false);
        }
        std::shared_ptr<const TimeZoneRules> named;
        const bool abroad = reading.time && !reading.time->zone.empty();
        if (abroad) {
            named = TimeZoneRules::find(reading.time->zone);
            if (!named) return std::nullopt;
        }
        const TimeZoneRules& zone = named ? *named : localZone_;
        const year_month_day today = dayOf(zone.civil(now_));
        // The end of a span is on the day of its beginning, or after it.
        const bool sameDay = reading.ending && !reading.day && follows_;
        auto day = sameDay       ? std::optional(dayOf(zone.civil(before_)))
                   : reading.day ? std::visit(DayResolver{today}, *reading.day)
                                 : std::optional(today);
        if (day && reading.further) day = shiftedBy(*day, *reading.further);
        auto instant = instantOf(day, reading, zone);
        if (!instant) return std::nullopt;
        const bool tooEarly = (reading.ending && follows_ && *instant < before_) ||
                              (reading.direction > 0 && reading.time && *instant < now_);
        const bool tooLate = reading.direction < 0 && reading.time && *instant > now_;
        if (!reading.day && (tooEarly || tooLate)) {
            day = existing(sys_days(*day) + days(tooEarly ? 1 : -1));
            instant = instantOf(day, reading, zone);
        } else if (reading.ending && tooEarly && std::holds_alternative<NamedWeekday>(*reading.day)) {
            day = existing(sys_days(*day) + weeks(1));
            instant = instantOf(day, reading, zone);
        } else if (reading.ending && tooEarly) {
            DateReading later = reading;
            if (NamedDay* yearless = yearlessDay(later)) {
                yearless->year = static_cast<int>(dayOf(zone.civil(before_)).year()) + 1;
                day = DayResolver{today}(*yearless);
                instant = instantOf(day, reading, zone);
            }
        }
        if (!instant) return std::nullopt;
        before_ = *instant;
        follows_ = true;
        DateBasis basis = basisOf(reading, abroad);
        if (sameDay && basisBefore_ == DateBasis::now) basis = DateBasis::now;
        basisBefore_ = basis;
        return detected(reading, *instant, basis, !reading.time);
    }

private:
    static std::optional<Date> instantOf(const std::optional<year_month_day>& day, const DateReading& reading,
                                         const TimeZoneRules& zone) {
        if (!day) return std::nullopt;
        CivilTime civil{static_cast<int>(day->year()), static_cast<unsigned>(day->month()),
                        static_cast<unsigned>(day->day()), noon};
        if (reading.time) {
            civil.hour = reading.time->hour;
            civil.minute = reading.time->minute;
            civil.second = reading.time->second;
        }
        return zone.instant(civil);
    }

    static DateBasis basisOf(const DateReading& reading, bool abroad) {
        const auto* named = reading.day ? std::get_if<NamedDay>(&*reading.day) : nullptr;
        if (named && named->year) return DateBasis::fixed;
        // Elsewhere the day begins at another time.
        return abroad || (reading.time && reading.direction != 0) ? DateBasis::now : DateBasis::today;
    }

    static DetectedDate detected(const DateReading& reading, Date instant, DateBasis basis, bool isDay) {
        return {reading.range, instant, basis, isDay, reading.certain, reading.offset};
    }

    Date now_;
    const TimeZoneRules& localZone_;
    Date before_;           // the instant of the reading before
    bool follows_ = false;  // there is one
    DateBasis basisBefore_ = DateBasis::fixed;
};

// "March 3 to June 1, 2027": the year counts for both.
void shareYears(std::vector<DateReading>& readings) {
    for (std::size_t i = 1; i < readings.size(); ++i) {
        const auto* end = readings[i].day ? std::get_if<NamedDay>(&*readings[i].day) : nullptr;
        NamedDay* start = yearlessDay(readings[i - 1]);
        if (!readings[i].ending || !start || !end || !end->year) continue;
        const bool turns = std::pair(start->month, start->day) > std::pair(end->month, end->day);
        start->year = *end->year - (turns ? 1 : 0);
    }
}

int minutesOf(const TimeReading& time) {
    constexpr int minutesPerHour = 60;
    return time.hour * minutesPerHour + time.minute;
}

bool canBeInEitherHalf(const TimeReading& time) {
    return !time.inHalf && time.hour > 0 && time.hour <= noon;
}

TimeReading inHalfOfDay(TimeReading time, bool second) {
    time.hour = time.hour % noon + (second ? noon : 0);
    time.inHalf = true;
    return time;
}

// What one end of a span of times says counts for the other: "3 to 5pm", "9am to 5", "9am to 5pm EST", "3pm to 5pm
// tomorrow".
void shareTimes(DateReading& start, DateReading& end) {
    TimeReading& from = *start.time;
    TimeReading& to = *end.time;
    if (from.zone.empty())
        from.zone = to.zone;
    else if (to.zone.empty())
        to.zone = from.zone;
    if (to.inHalf && canBeInEitherHalf(from)) {
        const bool second = to.hour >= noon;
        const TimeReading same = inHalfOfDay(from, second);
        from = minutesOf(same) < minutesOf(to) ? same : inHalfOfDay(from, !second);
    } else if (from.inHalf && canBeInEitherHalf(to)) {
        const TimeReading first = inHalfOfDay(to, false), second = inHalfOfDay(to, true);
        const bool ahead = minutesOf(first) <= minutesOf(from) && minutesOf(second) > minutesOf(from);
        to = ahead ? second : first;
    }
    if (start.day || !end.day || !end.dayAfter) return;
    start.day = end.day;
    if (minutesOf(from) > minutesOf(to)) start.further = ShiftedDay{DateUnit::day, -1};
}

void shareTimes(std::vector<DateReading>& readings) {
    for (std::size_t i = 1; i < readings.size(); ++i)
        if (readings[i].ending && readings[i].time && readings[i - 1].time) shareTimes(readings[i - 1], readings[i]);
}

}  // namespace

ResolvedDates resolvedDates(std::vector<DateReading> readings, Date now, const TimeZoneRules& localZone) {
    shareYears(readings);
    shareTimes(readings);
    Resolver resolver(now, localZone);
    ResolvedDates result;
    for (DateReading& reading : readings) {
        if (NamedDay* named = yearlessDay(reading); named && reading.direction != 0)
            named->direction = reading.direction;
        if (auto date = resolver.resolved(reading))
            result.dates.push_back(*date);
        else
            result.nonexistent.push_back(reading.range);
    }
    return result;
}

}  // namespace vemo
