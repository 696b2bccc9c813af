// SPDX-License-Identifier: MIT
#include "scanning/dates/date_detector.h"

#include "platform/locale_info.h"
#include "scanning/dates/date_grammar.h"

namespace vemo {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int noon = 12;

// The day of a reading, seen from a day; nothing for one that does not exist.
struct DayResolver {
    year_month_day today;

    std::optional<year_month_day> operator()(const NamedDay& named) const {
        const std::chrono::year year = named.year ? std::chrono::year(*named.year) : today.year();
        return existing(year / std::chrono::month(named.month) / std::chrono::day(named.day));
    }

    std::optional<year_month_day> operator()(const NamedWeekday& named) const {
        const std::chrono::weekday wanted(named.weekday);
        const sys_days now(today);
        if (named.weeks) {
            const sys_days monday = now - (std::chrono::weekday(now) - std::chrono::Monday);
            return existing(monday + std::chrono::weeks(*named.weeks) + (wanted - std::chrono::Monday));
        }
        const std::chrono::days ahead = wanted - std::chrono::weekday(now);
        const bool isToday = ahead.count() == 0;
        if (named.direction < 0) return existing(now + ahead - std::chrono::weeks(1));
        return existing(now + ahead + std::chrono::weeks(isToday && named.direction > 0 ? 1 : 0));
    }

    std::optional<year_month_day> operator()(const ShiftedDay& shift) const {
        switch (shift.unit) {
            case DateUnit::day:
                return existing(sys_days(today) + std::chrono::days(shift.count));
            case DateUnit::week:
                return existing(sys_days(today) + std::chrono::weeks(shift.count));
            case DateUnit::month:
                return shortened(today + std::chrono::months(shift.count));
            case DateUnit::year:
                return shortened(today + std::chrono::years(shift.count));
            default:
                return std::nullopt;  // shorter than a day
        }
    }

private:
    static std::optional<year_month_day> existing(year_month_day date) {
        const bool known = date.ok() && date.year() >= std::chrono::year(1) && date.year() <= std::chrono::year(9999);
        return known ? std::optional(date) : std::nullopt;
    }
    // A month after January 31 is the last day of February.
    static std::optional<year_month_day> shortened(year_month_day date) {
        return existing(date.ok() ? date : year_month_day(date.year() / date.month() / std::chrono::last));
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

DateBasis basisOf(const DateReading& reading, bool abroad) {
    const auto* named = reading.day ? std::get_if<NamedDay>(&*reading.day) : nullptr;
    if (named && named->year) return DateBasis::fixed;
    return abroad ? DateBasis::now : DateBasis::today;  // elsewhere the day begins at another time
}

std::optional<DetectedDate> resolved(const DateReading& reading, Date now, const TimeZoneRules& localZone) {
    if (const auto seconds = secondsFromNow(reading)) {
        if (reading.time) return std::nullopt;
        return DetectedDate{reading.range, now + std::chrono::duration<double>(*seconds), DateBasis::now, false};
    }
    std::shared_ptr<const TimeZoneRules> named;
    const bool abroad = reading.time && !reading.time->zone.empty();
    if (abroad) {
        named = TimeZoneRules::find(reading.time->zone);
        if (!named) return std::nullopt;
    }
    const TimeZoneRules& zone = named ? *named : localZone;
    const year_month_day today = dayOf(zone.civil(now));
    const auto day = reading.day ? std::visit(DayResolver{today}, *reading.day) : today;
    if (!day) return std::nullopt;
    CivilTime civil{static_cast<int>(day->year()), static_cast<unsigned>(day->month()),
                    static_cast<unsigned>(day->day()), noon};
    if (reading.time) {
        civil.hour = reading.time->hour;
        civil.minute = reading.time->minute;
        civil.second = reading.time->second;
    }
    const auto instant = zone.instant(civil);
    if (!instant) return std::nullopt;
    return DetectedDate{reading.range, *instant, basisOf(reading, abroad), !reading.time};
}

}  // namespace

DateDetector::DateDetector(const Localizer& localizer, std::string_view language, std::string_view locale)
    : vocabulary_(localizer, language, locale), order_(dateOrder(locale)) {}

bool DateDetector::mayDetect(std::u16string_view text) const {
    std::u16string lower;
    std::size_t separators = 0;  // between digits
    char16_t before = u' ';
    const char16_t* const end = text.data() + text.size();
    for (const char16_t* c = text.data(); c != end; before = *c++) {
        if (*c < 0x80 && !isLetter(*c)) {
            if (*c == u' ' || c + 1 == end || digitValue(before) < 0 || digitValue(c[1]) < 0) continue;
            if (*c == u':') return true;
            if (*c == u'/' || *c == u'.' || *c == u'-' || *c == u'*') ++separators;
            continue;
        }
        if (isLetter(before) && !isCjk(*c) && !isCjk(before)) continue;
        const char16_t first = lowercasedUnit(*c);
        if (!vocabulary_.mayStart(first, c + 1 == end ? u' ' : lowercasedUnit(c[1]))) continue;
        if (lower.empty()) {
            lower = text;
            for (char16_t& unit : lower) unit = lowercasedUnit(unit);
        }
        const auto found = vocabulary_.longestAt(lower, static_cast<std::size_t>(c - text.data()));
        if (found && found->entry->telling) return true;
    }
    return separators >= 2;
}

std::vector<DetectedDate> DateDetector::detect(std::u16string_view text, Date now, const TimeZoneRules& zone) const {
    std::vector<DetectedDate> result;
    if (!mayDetect(text)) return result;
    for (const DateReading& reading : readDates(text, vocabulary_, order_)) {
        if (auto date = resolved(reading, now, zone)) result.push_back(*date);
    }
    return result;
}

}  // namespace vemo
