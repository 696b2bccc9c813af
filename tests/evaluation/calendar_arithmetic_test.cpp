// SPDX-License-Identifier: MIT
#include "evaluation/calendar_arithmetic.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "functions/date_values.h"
#include "records/context_map.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

// Zones whose clocks change on different days, one of them in the other half of the year.
constexpr const char* zones[] = {"Europe/Berlin", "America/New_York", "Australia/Sydney"};

// Shifts and differences in a zone.
class Calendar {
public:
    explicit Calendar(const char* zone) : rules(TimeZoneRules::find(utf16(zone))) {
        Environment environment = fixedEnvironment();
        environment.timeZone = zone;
        calculator = newCalculator(environment);
        context = calculator->context().copyContext();
    }

    Value time(const CivilTime& civil) const { return timeValue(*rules->instant(civil), &zone()); }
    Value day(const CivilTime& civil) const { return dayValue(*rules->instant(civil)); }
    const TimeZone& zone() const { return *context.get<TimeZone>(context_keys::currentTimeZone); }
    Value later(const Value& date, std::int64_t count, std::u16string_view unit, int sign = 1) {
        return *shiftedByCalendar(date, Value(DecimalNumber::fromInt64(count)).with(unit, Attribute::unit), sign,
                                  calculator->unitConverter(), context);
    }
    DecimalNumber between(const Value& from, const Value& to, std::u16string_view unit) {
        return calendarDifference(from, to, unit, calculator->unitConverter(), context)->decimal()->round(6);
    }
    CivilTime shown(const Value& date) const { return rules->civil(*date.date()); }

    std::shared_ptr<const TimeZoneRules> rules;
    std::unique_ptr<Calculator> calculator;
    Context context;
};

CivilTime arbitraryTime(int firstHour = 4) {  // clocks change before
    CivilTime civil{*rc::gen::inRange(2020, 2035), *rc::gen::inRange(1u, 13u), *rc::gen::inRange(1u, 29u)};
    civil.hour = *rc::gen::inRange(firstHour, 24);
    civil.minute = *rc::gen::inRange(0, 60);
    return civil;
}

RC_GTEST_PROP(CalendarArithmetic, daysKeepTheTimeOfDayAndComeBack, ()) {
    static std::map<std::string, Calendar> calendars;
    const std::string zone = *rc::gen::elementOf(std::vector<std::string>(std::begin(zones), std::end(zones)));
    Calendar& calendar = calendars.try_emplace(zone, zone.c_str()).first->second;
    const CivilTime civil = arbitraryTime();
    const std::int64_t count = *rc::gen::inRange(-900, 900);
    for (const std::u16string_view unit : {u"day", u"week"}) {
        const Value from = calendar.time(civil);
        const Value to = calendar.later(from, count, unit);
        RC_ASSERT(calendar.shown(to).hour == civil.hour);
        RC_ASSERT(calendar.shown(to).minute == civil.minute);
        RC_ASSERT(calendar.later(to, count, unit, -1) == from);
        const Value day = calendar.day(civil);
        RC_ASSERT(calendar.between(day, calendar.later(day, count, unit), unit) == DecimalNumber::fromInt64(count));
    }
    // Hours are hours, whatever the clocks show.
    const Value from = calendar.time(civil);
    const Value to = calendar.later(from, count, u"hour");
    RC_ASSERT(calendar.between(from, to, u"hour") == DecimalNumber::fromInt64(count));
    RC_ASSERT(calendar.later(to, count, u"hour", -1) == from);
    // Days that every month has come back, and are whole months apart.
    const Value day = calendar.day(civil);
    const Value monthsLater = calendar.later(day, count, u"month");
    RC_ASSERT(calendar.shown(monthsLater).day == civil.day);
    RC_ASSERT(calendar.later(monthsLater, count, u"month", -1) == day);
    RC_ASSERT(calendar.between(day, monthsLater, u"month") == DecimalNumber::fromInt64(count));
}

TEST(CalendarArithmetic, comesBackFromTheHourThatIsShownTwice) {
    Calendar calendar("Australia/Sydney");
    const Value from = calendar.time({2025, 5, 4, 5, 0});
    EXPECT_EQ(calendar.later(calendar.later(from, -675, u"hour"), -675, u"hour", -1), from);
}

RC_GTEST_PROP(CalendarArithmetic, workdaysAreCountedAsTheyWereAdded, ()) {
    static Calendar calendar(zones[0]);
    const Value day = calendar.day(arbitraryTime());
    const std::int64_t count = *rc::gen::inRange(1, 400);
    const Value to = calendar.later(day, count, u"workday");
    RC_ASSERT(calendar.between(day, to, u"workday") == DecimalNumber::fromInt64(count));
    const Value back = calendar.later(to, count, u"workday", -1);
    // From a weekend the way back ends on the day of work before it.
    RC_ASSERT(DecimalNumber::compare(calendar.between(back, day, u"day"), DecimalNumber::fromInt64(3)) < 0);
}

struct Change {
    const char* zone;
    CivilTime before;  // noon of the day before clocks change
    int hours;         // that the day then has
};

TEST(CalendarArithmetic, knowsDaysOfOtherLengths) {
    const Change changes[] = {{zones[0], {2027, 3, 27, 12}, 23}, {zones[0], {2027, 10, 30, 12}, 25},
                              {zones[1], {2027, 3, 13, 12}, 23}, {zones[1], {2027, 11, 6, 12}, 25},
                              {zones[2], {2027, 10, 2, 12}, 23}, {zones[2], {2027, 4, 3, 12}, 25}};
    for (const Change& change : changes) {
        Calendar calendar(change.zone);
        const Value noon = calendar.time(change.before);
        const Value next = calendar.later(noon, 1, u"day");
        EXPECT_EQ(calendar.shown(next).hour, 12) << change.zone;
        EXPECT_EQ(calendar.between(noon, next, u"hour"), DecimalNumber::fromInt64(change.hours)) << change.zone;
        const Value dayLater = calendar.later(noon, 24, u"hour");
        EXPECT_EQ(calendar.shown(dayLater).hour, 12 + 24 - change.hours) << change.zone;
        EXPECT_EQ(calendar.later(dayLater, 24, u"hour", -1), noon) << change.zone;
        const Value day = calendar.day(change.before);
        EXPECT_EQ(calendar.between(day, calendar.later(day, 1, u"day"), u"day"), DecimalNumber::fromInt64(1));
    }
}

TEST(CalendarArithmetic, endsAtTheLastDayOfShorterMonths) {
    Calendar calendar(zones[0]);
    const auto shown = [&](const CivilTime& from, std::int64_t count, std::u16string_view unit) {
        const CivilTime civil = calendar.shown(calendar.later(calendar.day(from), count, unit));
        return std::tuple(civil.year, civil.month, civil.day);
    };
    EXPECT_EQ(shown({2027, 1, 31, 12}, 1, u"month"), std::tuple(2027, 2u, 28u));
    EXPECT_EQ(shown({2028, 2, 29, 12}, 1, u"year"), std::tuple(2029, 2u, 28u));
    EXPECT_EQ(shown({2027, 3, 31, 12}, -1, u"month"), std::tuple(2027, 2u, 28u));
    EXPECT_EQ(shown({2027, 1, 1, 12}, 1, u"quarter"), std::tuple(2027, 4u, 1u));
}

}  // namespace
}  // namespace vemo::test
