// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "functions/date_values.h"
#include "output/date_formatter.h"
#include "output/time_decomposer.h"
#include "output/time_formatter.h"
#include "records/context_map.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}

// A date as written in a locale and zone, on 24 November 2026, 13:00 UTC: the text, and the short one after "|".
std::string shown(double seconds, const std::string& locale, const std::string& zone, Context&& context = {}) {
    const VemoDateFormatter formatter(locale, utf16(zone), TimeZoneRules::find(utf16(zone)),
                                      [] { return at(1795525200); });
    const auto text = formatter.format(dateValue(at(seconds)), context);
    if (!text) return "nothing";
    return plainSpaces(utf8(*text->regular) + (text->shortText ? "|" + utf8(*text->shortText) : ""));
}

TEST(DateFormatter, leavesOutWhatIsClear) {
    EXPECT_EQ(shown(1795512600, "en_US", "UTC"), "9:30 AM");
    EXPECT_EQ(shown(1795512600 + 86400, "en_US", "UTC"), "11/25/26, 9:30 AM|11/25/26");
    EXPECT_EQ(shown(1795521600, "en_US", "UTC"), "11/24/26");       // noon
    EXPECT_EQ(shown(1795521600 + 59, "en_US", "UTC"), "11/24/26");  // until the minute is over
    EXPECT_EQ(shown(1795521600 + 60, "en_US", "UTC"), "12:01 PM");
    EXPECT_EQ(shown(1795478400, "en_US", "UTC"), "12:00 AM");  // midnight is a time of day
    // Noon and today are those of the local zone: 00:30 there is the day after.
    EXPECT_EQ(shown(1795534200, "en_US", "Asia/Tokyo"), "11/25/26, 12:30 AM|11/25/26");
    EXPECT_EQ(shown(1795518000, "en_US", "Europe/Berlin"), "11/24/26");
    EXPECT_EQ(shown(1795521600, "en_US", "GMT+05:30"), "5:30 PM");
}

TEST(DateFormatter, followsTheContextsDay) {
    Context context;
    context.set(context_keys::currentTime, at(1795525200 + 86400));
    EXPECT_EQ(shown(1795512600 + 86400, "en_US", "UTC", std::move(context)), "9:30 AM");
    Context day;
    day.set(context_keys::currentDay, std::u16string(u"2026-11-26"));
    EXPECT_EQ(shown(1795512600 + 2 * 86400, "en_US", "UTC", std::move(day)), "9:30 AM");
}

TEST(DateFormatter, writesAsTheLocaleDoes) {
    struct Case {
        const char* locale;
        const char* today;
        const char* other;
    };
    const Case cases[] = {{"de_DE", "21:05", "25.11.26, 21:05|25.11.26"},
                          {"fr_FR", "21:05", "25/11/2026 21:05|25/11/2026"},
                          {"ja_JP", "21:05", "2026/11/25 21:05|2026/11/25"},
                          {"en_GB", "21:05", "25/11/2026, 21:05|25/11/2026"},
                          {"en_US", "9:05 PM", "11/25/26, 9:05 PM|11/25/26"}};
    for (const Case& c : cases) {
        EXPECT_EQ(shown(1795554300, c.locale, "UTC"), c.today) << c.locale;
        EXPECT_EQ(shown(1795554300 + 86400, c.locale, "UTC"), c.other) << c.locale;
    }
}

TEST(DateFormatter, knowsOneCalendarForAllYears) {
    EXPECT_EQ(shown(-1, "fr_FR", "UTC"), "31/12/1969 23:59|31/12/1969");
    EXPECT_EQ(shown(-2203848000, "fr_FR", "UTC"), "01/03/1900");
    EXPECT_EQ(shown(-14825851200, "fr_FR", "UTC"), "10/03/1500");  // the engine's calendar, not the Julian one
    EXPECT_EQ(shown(1709208000, "fr_FR", "UTC"), "29/02/2024");
    // Berlin skips 02:00 to 03:00 on 29 March 2026 and shows it twice on 25 October.
    EXPECT_EQ(shown(1774747800, "fr_FR", "Europe/Berlin"), "29/03/2026 03:30|29/03/2026");
    EXPECT_EQ(shown(1792888200, "fr_FR", "Europe/Berlin"), shown(1792891800, "fr_FR", "Europe/Berlin"));
    for (const double never : {1e30, -1e30, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(shown(never, "en_US", "UTC"), "nothing");
}

TEST(TimeFormatter, breaksDurationsDown) {
    const std::pair<const char*, const char*> cases[] = {
        {"1.5 hours", "1 h 30 min"},
        {"90 min", "90 min"},
        {"400 days", "400 days"},
        {"0.5 hours", "0 h 30 min"},
        {"2 hours", "2 h"},
        {"0 hours", "0 h"},
        {"-1.5 hours", "-1 h -30 min"},
        {"1.0001 h", "1 h"},  // 0.36 s
        {"(1/3) year", "0 years 4 months 1 day 16 h"},
        {"0.9999999 hours", "1 h"},  // and no 59 min 60 s
        {"1 hour + 0.5 s", "3,600.5 s"},
        {"61.25 min", "61 min 15 s"},
        {"1500 ms", "1,500 ms"},
        {"1e30 years", "1,000,000,000,000,000,000,000,000,000,000 years"},
    };
    for (const auto& [line, expected] : cases) EXPECT_EQ(result(line), expected) << line;
}

TEST(TimeFormatter, shortensToTheWholeAmount) {
    const auto calculator = newCalculator();
    Context context;
    const auto formatted = [&](const Value& value) { return calculator->format(value, context); };
    const auto hours = [](const DecimalNumber& number) { return Value(number).with(u"hour", Attribute::unit); };
    EXPECT_EQ(formatted(hours(DecimalNumber::parse("1.5"))).shortText, u"1.5 h");
    EXPECT_TRUE(context.hasDependencyOn(context_keys::precision));
    EXPECT_FALSE(formatted(hours(DecimalNumber::notANumberValue())).regular);
    // Too large for seconds: the amount as it is, without made-up parts.
    EXPECT_EQ(formatted(hours(DecimalNumber::parse("1e40"))).regular->find(u' '),
              formatted(hours(DecimalNumber::parse("1e40"))).regular->rfind(u' '));
}

RC_GTEST_PROP(TimeDecomposer, losesNothing, ()) {
    const auto unit = *rc::gen::inRange<std::size_t>(0, timeUnits.size());
    const auto thousandths = *rc::gen::arbitrary<std::int64_t>();
    const DecimalNumber amount = DecimalNumber::fromInt64(thousandths).multiplyingByPowerOf10(-3);
    const auto counts = TimeDecomposer::decompose(amount, unit);
    RC_ASSERT(counts.has_value());
    DecimalNumber total;
    for (std::size_t i = 0; i < timeUnits.size(); ++i) {
        const DecimalNumber& count = (*counts)[i];
        total = total.adding(count.multiplying(DecimalNumber::fromInt64(timeUnits[i].seconds)));
        RC_ASSERT(count.isZero() || (i <= unit && count.isNegative() == amount.isNegative()));
        if (i > 0) RC_ASSERT(count == count.integer());
        // A smaller unit never holds a whole larger one.
        if (i < unit)
            RC_ASSERT(*DecimalNumber::compare(count.abs().multiplying(DecimalNumber::fromInt64(timeUnits[i].seconds)),
                                              DecimalNumber::fromInt64(timeUnits[i + 1].seconds)) < 0);
    }
    const DecimalNumber exact = amount.multiplying(DecimalNumber::fromInt64(timeUnits[unit].seconds));
    RC_ASSERT(total == (unit == 0 ? exact : exact.round(0)));
}

}  // namespace
}  // namespace vemo::test
