// SPDX-License-Identifier: MIT
#include "evaluation/phrase_pattern.h"

#include <gtest/gtest.h>

#include "evaluation/element_tests.h"
#include "scanning/words/localizer.h"
#include "support/calculators.h"

namespace vemo {
namespace {

ElementPointer number(std::u16string_view text) {
    return makeElement(Value(DecimalNumber::parse(text)), AttributedText(text, RunType::number));
}
ElementPointer unit(std::u16string_view id, std::u16string_view text) {
    return makeElement(Value(Attribute::unit, id), AttributedText(text, RunType::unit));
}
ElementPointer words(std::u16string_view text) {
    return makeElement({}, AttributedText(text));
}
ElementPointer sign(std::u16string_view id, std::u16string_view text) {
    return makeElement(Value(Attribute::operation, id), AttributedText(text, RunType::operatorWord));
}

// The texts of the pieces, with bars between; nothing where the pattern does not match.
std::string read(std::u16string_view pattern, std::vector<ElementPointer> elements) {
    const auto parsed = PhrasePattern::parsed(pattern);
    if (!parsed) return "no pattern";
    const ElementList list(std::move(elements));
    const PhrasePattern::Line line(list, startOfValue(list));
    const auto ranges = parsed->match(line);
    if (!ranges) return "no match";
    EXPECT_TRUE(parsed->filter().admits(line)) << toUtf8(pattern);
    std::u16string result;
    for (const ElementRange& range : *ranges) {
        if (!result.empty()) result += u'|';
        result += trimmed(list.slice(range.location, range.end()).text());
    }
    return toUtf8(result);
}

TEST(PhrasePattern, refusesWhatIsNone) {
    for (const std::u16string_view text : {u"", u"{value}", u"{value} … {number}", u"split (by|into {value}",
                                           u"split {value", u"{} split", u"(|) {value}"})
        EXPECT_FALSE(PhrasePattern::parsed(text)) << toUtf8(text);
    std::u16string huge;
    for (int i = 0; i < 10; ++i) huge += u"(a|b|c|d) ";
    EXPECT_FALSE(PhrasePattern::parsed(huge)) << "four to the tenth ways of writing it";
    EXPECT_TRUE(PhrasePattern::parsed(u"{value} {percent_off} {value2}")) << "an operator says enough";
}

TEST(PhrasePattern, takesTheLongestWordsAndTheShortestValue) {
    const auto line = [] {
        return std::vector{words(u"share "), number(u"10"),    words(u" in a "),
                           number(u"2"),     words(u" in a "), number(u"5")};
    };
    EXPECT_EQ(read(u"share {value} (in|in a) {value2}", line()), "share|10|in a|2 in a 5");
    EXPECT_EQ(read(u"share {value} in {value2}", line()), "no match");
    EXPECT_EQ(read(u"Share {value} (in|in a) {value2}", line()), "no match") << "patterns are written small";
    EXPECT_EQ(read(u"(share|divide) {number} (in|in a) {value}", line()), "share|10|in a|2 in a 5");
}

TEST(PhrasePattern, leavesNoNumberWithoutItsUnit) {
    const std::vector line{number(u"119"), words(u" "), unit(u"EUR", u"€"), words(u" brutto")};
    EXPECT_EQ(read(u"{value} … brutto", line), "119 €|brutto");
    EXPECT_EQ(read(u"{number} … brutto", line), "no match");
    EXPECT_EQ(read(u"{quantity} brutto", line), "119 €|brutto");
    // The first word of a pattern may be a unit elsewhere.
    const std::vector german{words(u"erhöhe "),  number(u"250"), words(u" "),
                             unit(u"um", u"um"), words(u" "),    number(u"12")};
    EXPECT_EQ(read(u"erhöhe {value} um {value2}", german), "erhöhe|250|um|12");
    const std::vector money{unit(u"USD", u"$"), number(u"15"),      words(u" "),  sign(u"percent_off", u"off"),
                            words(u" "),        unit(u"USD", u"$"), number(u"60")};
    EXPECT_EQ(read(u"{quantity} {percent_off} {value}", money), "$15|off|$60");
    EXPECT_EQ(read(u"{percent} {percent_off} {value}", money), "no match");
}

TEST(PhrasePattern, dotsStandForIdleWordsOnly) {
    const auto line = [](std::u16string_view between) {
        return std::vector{number(u"24"), words(between), number(u"6"), words(u", price per bottle, please")};
    };
    const std::u16string_view pattern = u"{number} … {number2} … (price|cost) per …";
    EXPECT_EQ(read(pattern, line(u" pack of water ")), "24|pack of water|6|, price per bottle, please");
    EXPECT_EQ(read(u"{number} … {number2} price per …", line(u" pack ")), "24|pack|6|, price per bottle, please");
    EXPECT_EQ(read(u"{number} … {number2} per …", line(u" pack ")), "no match");
    EXPECT_EQ(read(u"{number} … {number2} … ice per …", line(u" pack ")), "no match") << "inside a word";
    EXPECT_EQ(read(u"{number} … {number2} … price … please", line(u" pack ")), "24|pack|6|, price per bottle, please");
    EXPECT_EQ(read(u"{number} … {number2} … please … price …", line(u" pack ")), "no match") << "in their order";
    std::vector calculated = line(u" ");
    calculated.insert(calculated.begin() + 1, sign(u"*", u"*"));
    EXPECT_EQ(read(pattern, calculated), "no match");
}

TEST(PhrasePattern, coversTheLineBetweenItsLabelAndItsComment) {
    const auto label = makeElement({}, AttributedText(u"total:", RunType::label));
    const auto comment = makeElement({}, AttributedText(u"// half", RunType::comment));
    EXPECT_EQ(read(u"half {number}", {label, words(u" half "), number(u"8"), words(u" "), comment}), "half|8");
    EXPECT_EQ(read(u"half {number}", {words(u"a half "), number(u"8")}), "no match");
    EXPECT_EQ(read(u"half {number}", {words(u"half "), number(u"8"), words(u" or so")}), "no match");
    EXPECT_EQ(read(u"half {number} {tail}", {words(u"half "), number(u"8"), sign(u"+", u"+"), number(u"1")}),
              "half|8|+1");
    EXPECT_EQ(read(u"half {number} {tail}", {words(u"half "), number(u"8")}), "half|8|");
    EXPECT_EQ(read(u"half {number}", {words(u"\u00bfHalf "), number(u"8"), words(u" ?")}), "\u00bfHalf|8");
}

// A line that can be taken apart in many ways costs a bounded number of steps, and one that is too long none.
TEST(PhrasePattern, givesUpOnLinesWithoutEnd) {
    for (const int length : {100, 100'000}) {
        std::vector<ElementPointer> line;
        for (int i = 0; i < length; ++i) {
            line.push_back(number(u"1"));
            line.push_back(words(u" to "));
        }
        line.push_back(words(u"asked"));
        EXPECT_EQ(read(u"{value} to {value2} to {value3} … (wanted|missed) … to", line), "no match");
    }
}

TEST(PhraseEvaluator, readsItsTablesInEveryLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "ja"}) {
        Environment environment = test::fixedEnvironment();
        environment.language = language;
        std::string problems;
        environment.log = [&](std::string_view text) {
            if (text.find("phrase") != text.npos) problems += std::string(text) + "\n";
        };
        const auto calculator = test::newCalculator(environment);
        Context context;
        calculator->calculate(u"words and 5", context);
        EXPECT_EQ(problems, "") << language;
    }
}

}  // namespace
}  // namespace vemo
