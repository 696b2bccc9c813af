// SPDX-License-Identifier: MIT
#include "evaluation/date_operations.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "functions/date_values.h"
#include "records/context_map.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}
Value zoned(double seconds, std::u16string zone) {
    return dateValue(at(seconds)).with(TimeZone{std::move(zone)});
}
Value amount(std::string_view number, std::u16string_view unit) {
    return Value(DecimalNumber::parse(number)).with(unit, Attribute::unit);
}
const Value notANumber(DecimalNumber::notANumberValue());

class DateOperations : public testing::Test {
protected:
    std::optional<Value> apply(std::u16string_view operation, const Value& left, const Value& right) {
        return calculator->operationCalculator().apply(operation, left, right, context);
    }

    std::unique_ptr<Calculator> calculator = newCalculator();
    Context context = calculator->context().copyContext();
};

TEST_F(DateOperations, shiftByWholeSecondsAndKeepTheZone) {
    const std::u16string zone = u"Asia/Tokyo";
    const Value date = zoned(1000, zone);
    EXPECT_EQ(apply(u"+", date, amount("1.9", u"day")), zoned(165160, zone));
    EXPECT_EQ(apply(u"+", amount("3", u"day"), date), apply(u"+", date, amount("3", u"day")));
    EXPECT_EQ(apply(u"+", date, amount("1.5", u"second")), zoned(1001, zone));
    EXPECT_EQ(apply(u"+", date, amount("-1.5", u"second")), zoned(998, zone));
    EXPECT_EQ(apply(u"-", date, amount("1.5", u"second")), zoned(999, zone));
    EXPECT_EQ(apply(u"-", date, amount("2", u"week")), zoned(1000 - 1209600, zone));
}

TEST_F(DateOperations, declineWhatIsNoDuration) {
    const Value date = dateValue(at(1000));
    EXPECT_EQ(apply(u"+", date, date), notANumber);
    EXPECT_EQ(apply(u"+", date, amount("5", u"m")), std::nullopt);
    EXPECT_EQ(apply(u"-", date, amount("5", u"EUR")), std::nullopt);
    EXPECT_EQ(apply(u"+", date, amount("5", u"percent")), std::nullopt);
    EXPECT_EQ(apply(u"-", amount("5", u"day"), date), std::nullopt);
    EXPECT_EQ(apply(u"*", date, amount("2", u"day")), std::nullopt);
    EXPECT_EQ(apply(u"+", Value(), date), date);
    EXPECT_EQ(apply(u"+", date, notANumber), notANumber);
}

TEST_F(DateOperations, leaveTheCalendarAsNotANumber) {
    const Value date = dateValue(at(1795525200));
    EXPECT_TRUE(apply(u"+", date, amount("20000", u"year"))->date());
    for (const char* years : {"1e6", "1e30", "-1e30", "1e120"}) {
        EXPECT_EQ(apply(u"+", date, amount(years, u"year")), notANumber) << years;
        EXPECT_EQ(apply(u"-", date, amount(years, u"year")), notANumber) << years;
    }
}

TEST_F(DateOperations, tellDifferencesInTheLargestUnit) {
    struct Case {
        double from, to;
        const char* count;
        std::u16string_view unit;
    };
    constexpr double day = 86400;
    const Case cases[] = {{0, 0, "0", u"second"},
                          {-10, 10, "20", u"second"},
                          {0, 60, "1", u"minute"},
                          {0, 1.5 * day, "1.5", u"day"},
                          {1.5 * day, 0, "-1.5", u"day"},
                          {0, 7 * day - 1, "6.999988425925926", u"day"},
                          {-5 * day, 5 * day, "1.4285714285714286", u"week"},
                          {0, 400 * day, "1.095890410958904", u"year"},
                          {0, 0.25, "0.25", u"second"}};
    for (const Case& c : cases)
        EXPECT_EQ(apply(u"-", zoned(c.to, u"UTC"), dateValue(at(c.from))), amount(c.count, c.unit))
            << c.from << " " << c.to;
}

TEST_F(DateOperations, moveBetweenZonesByTheOffsetsOfTheDate) {
    const auto moved = [&](const Value& from, std::u16string to) {
        return apply(u"in", from, Value(TimeZone{std::move(to)}));
    };
    const auto time = [](double seconds, std::u16string name) {
        const TimeZone zone{std::move(name)};
        return timeValue(at(seconds), &zone);
    };
    EXPECT_EQ(moved(zoned(0, u"GMT+01:00"), u"GMT+03:00"), time(7200, u"GMT+03:00"));
    EXPECT_EQ(moved(zoned(0, u"Asia/Kolkata"), u"GMT-03:30"), time(-32400, u"GMT-03:30"));
    // New York is 5 hours behind in November and 4 in July, whatever the season of the present moment.
    const double july = 1783339200, november = 1795525200;
    for (const double now : {july, november}) {
        context.set(context_keys::currentTime, at(now));
        EXPECT_EQ(moved(zoned(july, u"UTC"), u"America/New_York"), time(july - 14400, u"America/New_York"));
        EXPECT_EQ(moved(zoned(november, u"UTC"), u"America/New_York"), time(november - 18000, u"America/New_York"));
    }
    EXPECT_EQ(moved(zoned(0, u"Nowhere/Land"), u"UTC"), zoned(0, u"UTC"));
    // A time that knows no zone is one of the zone it is given.
    EXPECT_EQ(moved(dateValue(at(5)), u"Asia/Tokyo"), zoned(5, u"Asia/Tokyo"));
}

TEST_F(DateOperations, onlyWholeDaysKeepADayADay) {
    const Value day = dayValue(at(1000));
    EXPECT_EQ(apply(u"+", day, amount("2", u"week")), dayValue(at(1000 + 1209600)));
    EXPECT_EQ(apply(u"+", day, amount("1", u"month")), dayValue(at(1000 + 2592000)));
    EXPECT_TRUE(apply(u"+", day, amount("24", u"hour"))->is(Attribute::precision, u"time"));
    EXPECT_TRUE(apply(u"-", day, amount("0.5", u"day"))->is(Attribute::precision, u"time"));
}

// Zones whose clocks change on different days, one of them in the other half of the year.
RC_GTEST_PROP(ClockChanges, leaveDaysAndTheTimeOfDayAlone, ()) {
    const std::u16string name =
        *rc::gen::element<std::u16string>(u"Europe/Berlin", u"America/New_York", u"Australia/Sydney");
    const auto rules = TimeZoneRules::find(name);
    Environment environment = fixedEnvironment();
    environment.timeZone = utf8(name);
    const auto calculator = newCalculator(environment);
    Context context = calculator->context().copyContext();
    const auto apply = [&](std::u16string_view operation, const Value& left, const Value& right) {
        return *calculator->operationCalculator().apply(operation, left, right, context);
    };
    CivilTime civil{2027, *rc::gen::inRange(1u, 13u), *rc::gen::inRange(1u, 29u)};
    civil.hour = *rc::gen::inRange(4, 24);  // clocks change before
    civil.minute = *rc::gen::inRange(0, 60);
    const auto days = DecimalNumber::fromInt64(*rc::gen::inRange(-400, 400));
    const Value duration = Value(days).with(u"day", Attribute::unit);
    const TimeZone zone{name};
    const Value time = timeValue(*rules->instant(civil), &zone);

    const Value later = apply(u"+", time, duration);
    const CivilTime shown = rules->civil(*later.date());
    RC_ASSERT(shown.hour == civil.hour);
    RC_ASSERT(shown.minute == civil.minute);
    RC_ASSERT(apply(u"-", later, duration) == time);
    const Value abroad = apply(u"in", time, Value(TimeZone{u"UTC"}));
    RC_ASSERT(apply(u"in", abroad, Value(zone)) == time);

    civil.hour = 12;
    civil.minute = 0;
    const Value day = dayValue(*rules->instant(civil));
    const Value between = apply(u"in", apply(u"-", apply(u"+", day, duration), day), Value(Attribute::unit, u"day"));
    RC_ASSERT(between.decimal()->round(6) == days);
}

// Berlin changes its clocks on 29 March 2026 at 02:00. A month is 30 times 24 hours.
TEST_F(DateOperations, keepTheTimeOfDayOnlyForDays) {
    Environment environment = fixedEnvironment();
    environment.timeZone = "Europe/Berlin";
    EXPECT_EQ(
        results(
            "28 March 2026 at 9pm + 1 day\nFeb 28, 2028 + 1 day\nMarch 1, 1968 - 1 day\n28 March 2026 at 9pm + 1 month",
            environment),
        (std::vector<std::string>{"3/29/26, 9:00 PM", "2/29/28", "2/29/68", "4/27/26, 10:00 PM"}));
}

TEST(TimePrefixedByTimeZone, tellsTheTimeThere) {
    Environment environment = fixedEnvironment();
    environment.timeZone = "Europe/Berlin";
    EXPECT_EQ(results("time\nEST time\ntime in EST\n(EST time) in JST\nJST (10:30 in EST)\nest time - time\nEST 10:30",
                      environment),
              (std::vector<std::string>{"2:00 PM", "8:00 AM", "8:00 AM", "10:00 PM", "6:30 PM", "-6 h", "4:30 PM"}));
}

}  // namespace
}  // namespace vemo::test
