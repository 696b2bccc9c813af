// SPDX-License-Identifier: MIT
#include "scanning/date_extractor.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "records/context_map.h"
#include "scanning/dates/time_zone_abbreviations.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

constexpr double day = 86400;
constexpr double now = 1795525200;  // 24 November 2026, 13:00 UTC
constexpr double midnight = now - 13 * 3600;

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}

std::vector<Extraction> extractions(std::u16string_view text) {
    static const DateExtractor extractor(Localizer("en"), "en", "en_US", TimeZoneRules::find(u"UTC"));
    Context context;
    context.set(context_keys::currentTime, at(now));
    std::vector<Extraction> result;
    extractor.extract(std::u16string(text), context, result);
    return result;
}

TEST(DateExtractor, letsClockTimesWin) {
    for (const auto& [text, priority] :
         {std::pair(u"10:30", 30), {u"March 4 at 10:30", 30}, {u"5pm", 0}, {u"March 4", 0}}) {
        const auto found = extractions(text);
        ASSERT_EQ(found.size(), 1u) << utf8(text);
        EXPECT_EQ(found[0].priority, priority) << utf8(text);
        EXPECT_EQ(found[0].secondaryPriority, 0);
        EXPECT_TRUE(found[0].element->value.is(Attribute::unit, u"date"));
        EXPECT_EQ(found[0].element->value.timeZone(), nullptr);
        EXPECT_EQ(found[0].element->text(), text);
    }
}

TEST(DateExtractor, takesNoArithmeticAndNoDurations) {
    EXPECT_EQ(extractions(u"2027-03-04").size(), 1u);
    for (const auto* text : {u"2027*03*04", u"2027+03+04", u"2027-03*04", u"5-3", u"3 hours", u"10:30 hours"})
        EXPECT_TRUE(extractions(text).empty() || extractions(text)[0].element->text() == u"10:30") << utf8(text);
    // The word is an operator on the duration.
    ASSERT_EQ(extractions(u"in 3 hours").size(), 1u);
    EXPECT_TRUE(extractions(u"in 3 hours")[0].element->value.has(Attribute::operation));
}

TEST(DateExtractor, findsNothingWithoutTheTime) {
    const DateExtractor extractor(Localizer("en"), "en", "en_US", TimeZoneRules::find(u"UTC"));
    Context context;
    std::vector<Extraction> result;
    extractor.extract(u"10:30", context, result);
    EXPECT_TRUE(result.empty());
}

// What a line is calculated to at two moments; the same object when it came from the cache.
std::pair<LineResultPointer, LineResultPointer> twice(std::u16string_view line, double later) {
    const auto calculator = newCalculator();
    const auto calculateAt = [&](double seconds) {
        calculator->context().set(context_keys::currentTime, at(seconds));
        calculator->context().set(context_keys::currentDay, TimeZoneRules::find(u"UTC")->day(at(seconds)));
        Context context;
        return calculator->calculate(line, context).lines[0];
    };
    const LineResultPointer first = calculateAt(now);
    return {first, calculateAt(later)};
}

TEST(DateExtractor, followsTheDayAndTheMinuteWhereItMust) {
    for (const char16_t* line : {u"10:30", u"next friday", u"March 4"}) {
        const auto [first, minuteLater] = twice(line, now + 60);
        EXPECT_EQ(first, minuteLater) << utf8(line);
    }
    const auto [today, tomorrow] = twice(u"10:30", now + day);
    EXPECT_EQ(tomorrow->value().date().value() - today->value().date().value(), std::chrono::seconds(86400));
    const auto [lateToday, pastMidnight] = twice(u"noon", midnight + day + 1);
    EXPECT_EQ(*pastMidnight->value().date(), at(midnight + day * 1.5));
    const auto [first, minuteLater] = twice(u"in 10 minutes", now + 60);
    EXPECT_EQ(*minuteLater->value().date(), at(now + 660));
    const auto [fixed, yearLater] = twice(u"March 4, 2027", now + 365 * day);
    EXPECT_EQ(fixed, yearLater);
}

TEST(TimeZoneAbbreviations, areSortedAndKnown) {
    std::u16string_view before;
    for (const TimeZoneAbbreviation& row : timeZoneAbbreviations()) {
        EXPECT_LT(before, row.abbreviation);
        before = row.abbreviation;
        EXPECT_NE(TimeZoneRules::find(row.zone), nullptr) << utf8(row.zone);
        EXPECT_EQ(zoneForAbbreviation(row.abbreviation), row.zone);
    }
    for (const auto* unknown : {u"", u"XYZ", u"est", u"ESTX", u"zzz"}) EXPECT_EQ(zoneForAbbreviation(unknown), u"");
}

// In every language, a word of one vocabulary is none of another: who writes it knows what it is.
TEST(PhraseTables, claimNoWordTwiceInAnyLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "ja"}) {
        Environment environment = fixedEnvironment();
        environment.language = language;
        const auto calculator = newCalculator(environment);
        const auto& units = calculator->unitManager().phraseDetector().phrases();
        const auto& operators = calculator->operatorCollection().phraseDetector().phrases();
        const auto& functions = calculator->functionManager().phraseDetector().phrases();
        std::set<std::string> shared;
        for (const auto& [phrase, id] : units)
            if (operators.contains(phrase) || functions.contains(phrase)) shared.insert(utf8(phrase));
        for (const auto& [phrase, id] : operators)
            if (functions.contains(phrase)) shared.insert(utf8(phrase));
        // The inch, the minute and, in Spanish, the millicandela are read by their place.
        shared.erase("mcd");
        EXPECT_EQ(shared, (std::set<std::string>{"in", "min"})) << language;
        // Within the units of time.
        const Localizer localizer(language);
        std::map<std::u16string, std::string> owners;
        for (const char* unit : {"second", "minute", "hour", "day", "week", "month", "year"}) {
            for (const std::u16string& phrase : localizer.variants(utf16(unit) + u".variants", u"Time")) {
                EXPECT_TRUE(owners.emplace(phrase, unit).second) << utf8(phrase);
                const std::u16string* found = calculator->unitManager().phraseDetector().find(lowercased(phrase));
                ASSERT_NE(found, nullptr) << language << " " << utf8(phrase);
                EXPECT_EQ(utf8(*found), unit) << language << " " << utf8(phrase);
            }
        }
    }
}

}  // namespace
}  // namespace vemo::test
