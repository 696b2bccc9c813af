// SPDX-License-Identifier: MIT
#include "functions/date_functions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "evaluation/date_operations.h"
#include "functions/date_values.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

using testing::ElementsAre;

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}
Value number(std::string_view text) {
    return Value(DecimalNumber::parse(text));
}

TEST(DateFunctions, readTheCurrentTimeOfTheContext) {
    Context context;
    const std::vector<Value> none;
    for (const auto& function : {todayFunction(), tomorrowFunction(), yesterdayFunction(), timeFunction()}) {
        Context line;
        EXPECT_EQ(function->evaluate(none, line), Value());
        EXPECT_TRUE(line.dependencyFor(context_keys::currentTime)->isEmptyValue());
    }
    context.set(context_keys::currentTime, at(100));
    context.set(context_keys::currentTimeZone, TimeZone{u"Asia/Tokyo"});
    EXPECT_EQ(todayFunction()->evaluate(none, context), dayValue(at(100)));
    EXPECT_EQ(tomorrowFunction()->evaluate(none, context), dayValue(at(86500)));
    EXPECT_EQ(yesterdayFunction()->evaluate(none, context), dayValue(at(-86300)));
    const TimeZone tokyo{u"Asia/Tokyo"};
    EXPECT_EQ(timeFunction()->evaluate(none, context), timeValue(at(100), &tokyo));
    EXPECT_EQ(localTimeZoneFunction()->evaluate(none, context), Value(TimeZone{u"Asia/Tokyo"}));
    EXPECT_EQ(*context.dependencyFor(context_keys::currentTime), IsEquatable(at(100)));
}

TEST(DateFunctions, makeZonesOfHours) {
    Context context;
    const auto offset = [&](const std::vector<Value>& values) -> std::optional<int> {
        const auto zone = gmtFunction()->evaluate(values, context);
        if (!zone) return std::nullopt;
        return TimeZoneRules::find(zone->timeZone()->identifier)->offsetAt(Date());
    };
    EXPECT_EQ(offset({}), 0);
    EXPECT_EQ(offset({number("3")}), 10800);
    EXPECT_EQ(offset({number("-5.5")}), -19800);
    EXPECT_EQ(offset({number("5.7575")}), 20727);
    EXPECT_EQ(offset({number("23.99")}), 86364);
    for (const char* hours : {"24", "-24", "1e30", "-1e127", "NaN"})
        EXPECT_EQ(offset({number(hours)}), std::nullopt) << hours;
}

// The timestamps at which a zone's clocks are changed or far from today's are shown in UTC too.
TEST(DateFunctions, showTimestampsInUtcWhereverOneIs) {
    for (const char* zone :
         {"UTC", "Europe/London", "Europe/Berlin", "America/New_York", "Asia/Kolkata", "Pacific/Apia"}) {
        for (const double now : {1795525200.0, 1783339200.0}) {
            Environment environment = fixedEnvironment();
            environment.timeZone = zone;
            environment.clock = [now] { return at(now); };
            EXPECT_THAT(
                results("fromunix 0\nunixtime (-1)\nunixtime 1782900000.9\nfromunix 1e18\nfromunix", environment),
                ElementsAre("1/1/70, 12:00 AM", "12/31/69, 11:59 PM", "7/1/26, 10:00 AM", "", ""))
                << zone << " " << now;
        }
    }
}

TEST(DateFunctions, haveTheirPhrases) {
    EXPECT_THAT(results("now\ntime in local time\ntime in gmt 3\ntime in gmt (-5.5)\ntomorrow - today\ntomorrow - "
                        "yesterday\nnow in JST"),
                ElementsAre("1:00 PM", "1:00 PM", "4:00 PM", "7:30 AM", "1 day", "2 days", "10:00 PM"));
}

// Unless they are words, or a name.
TEST(TimeZoneAbbreviations, standInEitherCase) {
    EXPECT_THAT(results("time in est\ntime in Est\nJST time\njst time\nART time\nart 5\npst = 7%\n200 + pst"),
                ElementsAre("8:00 AM", "8:00 AM", "10:00 PM", "10:00 PM", "10:00 AM", "5", "7%", "214"));
    Environment french = fixedEnvironment();
    french.language = "fr";
    EXPECT_THAT(results("le prix est 5\ncet article 5\ntime in EST", french), ElementsAre("5", "5", "8:00 AM"));
}

class Notifications : public ContextDelegate {
public:
    void contextUpdated(Context&) override { ++count; }
    int count = 0;
};

// Lines that use the time are calculated again when the minute turns, those that use the day when the day turns.
TEST(CurrentTime, goesOnByTheMinute) {
    double now = 1795564740;  // 24 November 2026, 23:59 UTC
    Environment environment = fixedEnvironment();
    environment.clock = [&] { return at(now); };
    const auto calculator = newCalculator(environment);
    Notifications notifications;
    calculator->context().setDelegate(&notifications);
    const auto calculated = [&] {
        Context document;
        return calculator->calculate(u"5 + 5\ntime\nfromunix 1795525200\ntime in JST", document).lines;
    };
    const auto text = [](const LineResultPointer& line) {
        return plainSpaces(utf8(line->formattedValue().regular.value_or(u"")));
    };
    now -= 60;
    calculator->minuteTimerDing();
    EXPECT_EQ(notifications.count, 1);
    const auto first = calculated();
    EXPECT_EQ(calculated(), first);

    now += 60;
    calculator->minuteTimerDing();
    const auto second = calculated();
    EXPECT_EQ(second[0], first[0]);
    EXPECT_EQ(text(first[1]), "11:58 PM");
    EXPECT_EQ(text(second[1]), "11:59 PM");
    EXPECT_EQ(second[2], first[2]);
    EXPECT_EQ(text(second[2]), "1:00 PM");
    EXPECT_EQ(text(second[3]), "11/25/26, 8:59 AM");

    now += 60;
    calculator->minuteTimerDing();
    const auto third = calculated();
    EXPECT_EQ(third[0], first[0]);
    EXPECT_EQ(text(third[1]), "12:00 AM");
    EXPECT_EQ(text(third[2]), "11/24/26, 1:00 PM");
    EXPECT_EQ(text(third[3]), "9:00 AM");
    EXPECT_EQ(*calculator->context().get<std::u16string>(u"current_day"), u"2026-11-25");
}

}  // namespace
}  // namespace vemo::test
