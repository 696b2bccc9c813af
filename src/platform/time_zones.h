// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "vemo/time.h"

namespace vemo {

// Of a day without a change of the clocks.
inline constexpr int secondsPerDay = 86400;

// What a calendar and a clock show, in the proleptic Gregorian calendar.
struct CivilTime {
    int year = 1970;
    unsigned month = 1;  // 1 to 12
    unsigned day = 1;    // 1 to 31
    int hour = 0;
    int minute = 0;
    double second = 0;

    friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

// The rules of a time zone. Immutable; safe to use from several threads.
class TimeZoneRules {
public:
    // An IANA name or a fixed offset such as "GMT+05:30"; null when there is no such zone.
    static std::shared_ptr<const TimeZoneRules> find(std::u16string_view identifier);

    virtual ~TimeZoneRules() = default;
    // Seconds east of Greenwich in force at an instant.
    virtual int offsetAt(Date instant) const = 0;
    // An instant outside the years of the calendar counts as the nearest one inside.
    CivilTime civil(Date instant) const;
    // The day the calendar shows, as "2027-03-04".
    std::u16string day(Date instant) const;
    // The instant at which the zone shows this time. A time that a clock change skips is taken as if the clock had
    // not changed yet; of one shown twice, the first. Nothing when there is no such day or time of day.
    std::optional<Date> instant(const CivilTime& civil) const;

    // The same for seconds since 1970 as the zone's clocks count them.
    Date instantOfCivil(double seconds) const {
        return Date(std::chrono::duration<double>(seconds - offsetAtCivil(seconds)));
    }

private:
    virtual int offsetAtCivil(double secondsAsIfUtc) const = 0;
};

// True for instants in the years that calendars here know: some 30,000 to either side of 1970.
bool isInCalendar(Date instant);

// A zone that many seconds east of Greenwich all year; nothing from a day on.
std::optional<TimeZone> fixedTimeZone(std::int64_t offset);

}  // namespace vemo
