// SPDX-License-Identifier: MIT
// Slips of the keyboard in names of units, words that scale, and the measures of a region.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "support/calculators.h"
#include "units/british_units.h"
#include "units/scale_manager.h"
#include "units/unit_spelling.h"

namespace vemo::test {
namespace {

Calculator& calculator() {
    static const auto shared = newCalculator();
    return *shared;
}

std::vector<std::u16string> names() {
    std::vector<std::u16string> result;
    for (const auto& [phrase, unit] : calculator().unitManager().phraseDetector().phrases())
        if (std::all_of(phrase.begin(), phrase.end(), isLetter)) result.push_back(phrase);
    std::sort(result.begin(), result.end());
    return result;
}

// The slips that are told, made by hand of every name: two letters swapped, one too few, one too many. The first
// letter is right.
bool isSlipOf(std::u16string_view word, std::u16string_view name) {
    if (word.empty() || word.front() != lowercasedUnit(name.front()) || name.size() < 3) return false;
    const auto without = [](std::u16string_view text, std::size_t place) {
        return std::u16string(text.substr(0, place)).append(text.substr(place + 1));
    };
    for (std::size_t i = 0; i < name.size(); ++i) {
        std::u16string swapped(name);
        if (i + 1 < name.size()) std::swap(swapped[i], swapped[i + 1]);
        if (swapped == word && swapped != name) return true;
        if (name.size() >= 5 && without(name, i) == word) return true;
    }
    for (std::size_t i = 0; word.size() > 5 && i < word.size(); ++i)
        if (without(word, i) == name) return true;
    return false;
}

RC_GTEST_PROP(SpellingLaws, tellTheSlipsOfAName, ()) {
    static const UnitSpelling spelling(calculator().unitManager());
    static const auto all = names();
    std::u16string word = *rc::gen::elementOf(all);
    const auto letter = static_cast<char16_t>(*rc::gen::inRange<int>('a', 'z' + 1));
    for (int slips = *rc::gen::inRange(1, 3); slips > 0; --slips) {
        const auto place = *rc::gen::inRange<std::size_t>(0, word.size());
        switch (*rc::gen::inRange(0, 4)) {
            case 0:
                word.insert(place, 1, letter);
                break;
            case 1:
                if (word.size() > 1) word.erase(place, 1);
                break;
            case 2:
                word[place] = letter;
                break;
            default:
                std::swap(word[place], word[word.size() / 2]);
        }
    }
    const bool expected = std::any_of(all.begin(), all.end(), [&](const auto& name) { return isSlipOf(word, name); });
    if (spelling.isNearly(word) != expected) RC_FAIL(utf8(word) + (expected ? " is no slip" : " is one of no name"));
}

TEST(Spelling, takesNoOtherWord) {
    const UnitSpelling spelling(calculator().unitManager());
    for (const char16_t* word : {u"kilometrs", u"houres", u"mni", u"minuts", u"secnod"})
        EXPECT_TRUE(spelling.isNearly(word)) << utf8(word);
    for (const char16_t* word : {u"", u"x", u"pants", u"rounds", u"tilometer", u"wikometer"})
        EXPECT_FALSE(spelling.isNearly(word)) << utf8(word);
}

// A word that scales makes a number so much larger; one that counts things is no scale of money.
TEST(Scales, multiply) {
    StringRangeDetector detector;
    ScaleManager scales(detector);
    scales.add({u"k", 3, {u"thousand", u"Grand Total"}});
    scales.add({u"dozen", 0, {u"dozen"}, {}, 12});
    scales.add({u"cent", -2, {u"cents", u"thousand"}, u"USD"});
    const DecimalNumber number = DecimalNumber::parse("2.5");
    EXPECT_EQ(scales.scale(u"k")->times(number), DecimalNumber::fromInt64(2500));
    EXPECT_EQ(scales.scale(u"dozen")->times(number), DecimalNumber::fromInt64(30));
    EXPECT_EQ(scales.scale(u"cent")->times(number), DecimalNumber::parse("0.025"));
    EXPECT_TRUE(scales.scale(u"dozen")->isCount());
    EXPECT_FALSE(scales.scale(u"k")->isCount());
    EXPECT_EQ(scales.scale(u"thousand"), nullptr);                   // a phrase is no id
    EXPECT_EQ(*scales.phraseDetector().find(u"thousand"), u"cent");  // the later one has it
    scales.add({u"k", 4, {}});
    EXPECT_EQ(scales.scale(u"k")->times(number), DecimalNumber::fromInt64(25000));
}

TEST(BritishMeasures, areThoseOfTheRegion) {
    for (const char* locale : {"en_GB", "en-GB", "en_IE", "en_GB.UTF-8", "en_GG@currency=GBP"})
        EXPECT_TRUE(hasImperialMeasures(locale)) << locale;
    for (const char* locale : {"", "en", "en_", "en_G", "en_US", "de_GB", "enxGB", "cy_GB", "en_AU"})
        EXPECT_FALSE(hasImperialMeasures(locale)) << locale;
    Environment british = fixedEnvironment();
    british.locale = "en_GB";
    EXPECT_EQ(results("1 pint in ml", british).back(), "568.26 ml");
    EXPECT_EQ(result("1 pint in ml"), "473.18 ml");
    EXPECT_EQ(results("1 US pint in ml", british).back(), "473.18 ml");
    EXPECT_EQ(results("50p * 3", british).back(), results("\xc2\xa3"
                                                          "1.50",
                                                          british)
                                                      .back());
}

}  // namespace
}  // namespace vemo::test
