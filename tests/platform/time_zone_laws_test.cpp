// SPDX-License-Identifier: MIT
// Instants and what clocks show, there and back in any zone.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <chrono>
#include <cmath>

#include "platform/time_zones.h"

namespace vemo::test {
namespace {

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}

constexpr const char16_t* zones[] = {u"UTC",
                                     u"Europe/Berlin",
                                     u"America/New_York",
                                     u"Asia/Kolkata",         // half an hour
                                     u"Australia/Lord_Howe",  // half an hour for the summer
                                     u"Pacific/Apia",         // left a day out
                                     u"Africa/Casablanca",
                                     u"America/St_Johns",
                                     u"GMT-12:34:56"};

// Of times that are shown once, the instant comes back; of those shown twice, the earlier one, an hour at most before.
RC_GTEST_PROP(TimeZoneLaws, comeBackFromTheCalendar, ()) {
    const auto zone =
        TimeZoneRules::find(*rc::gen::elementOf(std::vector<std::u16string>(std::begin(zones), std::end(zones))));
    const double seconds = static_cast<double>(*rc::gen::inRange<std::int64_t>(-5'000'000'000, 10'000'000'000)) +
                           0.25 * *rc::gen::inRange(0, 4);
    const CivilTime civil = zone->civil(at(seconds));
    RC_ASSERT((civil.month >= 1 && civil.month <= 12 && civil.day >= 1 && civil.day <= 31));
    RC_ASSERT((civil.hour >= 0 && civil.hour < 24 && civil.minute >= 0 && civil.minute < 60));
    RC_ASSERT((civil.second >= 0 && civil.second < 60));
    const auto back = zone->instant(civil);
    RC_ASSERT(back.has_value());
    const double distance = seconds - back->time_since_epoch().count();
    RC_ASSERT((distance >= 0 && distance <= 3 * 3600));
    if (distance > 0) RC_ASSERT(zone->civil(*back) == civil);
    // What the calendar shows is the instant moved by the offset.
    RC_ASSERT(TimeZoneRules::find(u"UTC")->civil(at(seconds + zone->offsetAt(at(seconds)))) == civil);
}

// The moments around midnight, as close as a double tells them.
TEST(TimeZones, neverShowAnHourTooMuch) {
    const auto utc = TimeZoneRules::find(u"UTC");
    for (const double midnight : {0.0, 86400.0, -86400.0, 1795478400.0}) {
        for (const double seconds : {std::nextafter(midnight, -1e300), midnight, std::nextafter(midnight, 1e300),
                                     midnight - 1e-9, midnight - 1e-14, midnight + 1e-14}) {
            const CivilTime civil = utc->civil(at(seconds));
            EXPECT_LT(civil.hour, 24) << midnight << " " << seconds - midnight;
            EXPECT_LT(civil.second, 60) << midnight << " " << seconds - midnight;
            EXPECT_TRUE(utc->instant(civil)) << midnight << " " << seconds - midnight;
            EXPECT_EQ(utc->day(at(seconds)).size(), 10u);
        }
    }
}

TEST(TimeZones, endWithTheirCalendar) {
    const auto utc = TimeZoneRules::find(u"UTC");
    constexpr double last = 11'000'000.0 * 86400;
    EXPECT_TRUE(isInCalendar(at(last)) && isInCalendar(at(-last)));
    EXPECT_FALSE(isInCalendar(at(last + 1)) || isInCalendar(at(-last - 1)) || isInCalendar(at(std::nan(""))));
    EXPECT_EQ(utc->civil(at(1e30)), utc->civil(at(last)));
    EXPECT_EQ(utc->civil(at(-1e30)), utc->civil(at(-last)));
    EXPECT_EQ(utc->civil(at(std::nan(""))), (CivilTime{1970, 1, 1}));
}

TEST(TimeZones, takeNoTimeThatNoClockShows) {
    const auto berlin = TimeZoneRules::find(u"Europe/Berlin");
    const CivilTime good{2026, 2, 28, 23, 59, 59.5};
    EXPECT_TRUE(berlin->instant(good));
    const auto refuses = [&](auto change) {
        CivilTime civil = good;
        change(civil);
        return !berlin->instant(civil);
    };
    EXPECT_TRUE(refuses([](CivilTime& t) { t.day = 29; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.day = 0; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.month = 0; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.hour = -1; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.minute = 60; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.minute = -1; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.second = 60; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.second = -0.5; }));
    EXPECT_TRUE(refuses([](CivilTime& t) { t.second = std::nan(""); }));
}

// A fixed offset names a zone that has it, all year; a day or more is none.
RC_GTEST_PROP(FixedTimeZoneLaws, haveTheirOffset, ()) {
    const auto offset = *rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(-86399, 86400),
        rc::gen::map(rc::gen::inRange<std::int64_t>(-1439, 1440), [](std::int64_t minutes) { return minutes * 60; }));
    const auto zone = fixedTimeZone(offset);
    RC_ASSERT(zone.has_value());
    const auto rules = TimeZoneRules::find(zone->identifier);
    RC_ASSERT(rules != nullptr);
    for (const double seconds : {0.0, 1e9, -1e9}) RC_ASSERT(rules->offsetAt(at(seconds)) == offset);
}

TEST(FixedTimeZone, isNoneFromADayOn) {
    EXPECT_EQ(fixedTimeZone(0)->identifier, u"GMT");
    EXPECT_EQ(fixedTimeZone(-19800)->identifier, u"GMT-05:30");
    EXPECT_EQ(fixedTimeZone(1)->identifier, u"GMT+00:00:01");
    for (const std::int64_t offset : {std::int64_t{86400}, std::int64_t{-86400}, INT64_MAX, INT64_MIN})
        EXPECT_FALSE(fixedTimeZone(offset)) << offset;
}

}  // namespace
}  // namespace vemo::test
