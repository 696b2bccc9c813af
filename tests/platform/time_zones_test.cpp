// SPDX-License-Identifier: MIT
#include "platform/time_zones.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vemo::test {
namespace {

double seconds(std::optional<Date> date) {
    return date ? date->time_since_epoch().count() : -1;
}

TEST(TimeZones, knowNamesAndFixedOffsets) {
    EXPECT_EQ(TimeZoneRules::find(u"Nowhere/Land"), nullptr);
    EXPECT_EQ(TimeZoneRules::find(u"GMT+05:30")->offsetAt(Date()), 19800);
    EXPECT_EQ(TimeZoneRules::find(u"UTC")->civil(Date(std::chrono::duration<double>(-1))),
              (CivilTime{1969, 12, 31, 23, 59, 59}));
    EXPECT_EQ(TimeZoneRules::find(u"GMT-12:00")->day(Date(std::chrono::duration<double>(43199))), u"1969-12-31");
    for (const double never : {1e300, -1e300, HUGE_VAL, std::nan("")})
        EXPECT_TRUE(TimeZoneRules::find(u"Europe/Berlin")
                        ->instant(TimeZoneRules::find(u"UTC")->civil(Date(std::chrono::duration<double>(never)))));
}

// Expected instants from zdump(8) for 2026.
TEST(TimeZones, resolveClockChanges) {
    const auto berlin = TimeZoneRules::find(u"Europe/Berlin");
    // 29 March, 01:00 UTC: 02:00 becomes 03:00. 02:30 is taken with the offset before the change.
    EXPECT_EQ(seconds(berlin->instant({2026, 3, 29, 2, 30})), 1774747800);
    EXPECT_EQ(berlin->civil(Date(std::chrono::duration<double>(1774747800))), (CivilTime{2026, 3, 29, 3, 30}));
    // 25 October, 01:00 UTC: 03:00 becomes 02:00 again. Of the two 02:30, the first.
    EXPECT_EQ(seconds(berlin->instant({2026, 10, 25, 2, 30})), 1792888200);
    EXPECT_EQ(berlin->offsetAt(Date(std::chrono::duration<double>(1792888200))), 7200);
}

TEST(TimeZones, refuseDaysAndTimesThatDoNotExist) {
    const auto utc = TimeZoneRules::find(u"UTC");
    EXPECT_FALSE(utc->instant({2026, 2, 29}));
    EXPECT_TRUE(utc->instant({2028, 2, 29}));
    EXPECT_FALSE(utc->instant({2026, 2, 1, 24, 0}));
    EXPECT_FALSE(utc->instant({2026, 13, 1}));
    EXPECT_EQ(seconds(utc->instant({1900, 3, 1, 12, 0})), -2203848000);
}

}  // namespace
}  // namespace vemo::test
