// SPDX-License-Identifier: MIT
// Labels whose results are calculated with below.

#include <gtest/gtest.h>

#include "support/calculators.h"

namespace vemo::test {
namespace {

using Texts = std::vector<std::string>;

TEST(LabelWords, standForTheLatestResultAbove) {
    EXPECT_EQ(results("rate: 3\nrate * 2\nrate: 5\nrate * 2"), (Texts{"3", "6", "5", "10"}));
    EXPECT_EQ(result("rate * 2\nrate: 3"), "3");
    EXPECT_EQ(results("rate * 2\nrate: 3")[0], "2") << "a label below is none yet";
    EXPECT_EQ(result("Big Room: 3\n2 * big room"), "6");
    EXPECT_EQ(result("rate: 3\nrate = 7\nrate * 2"), "14") << "a name comes first";
    EXPECT_EQ(result("rate: nothing\nrate * 2"), "2") << "without a result it is none";
    EXPECT_EQ(result("due: 12/1/2026\ndue + 3 days"), "12/4/26");
}

TEST(LabelWords, leaveOtherWordsAlone) {
    for (const char* line : {"rate", "rate 5", "5 rate", "5 of rate", "5 * rate card", "rate card * 5", "rate // * 2"})
        EXPECT_EQ(result(std::string("rate: 3\n") + line), result(std::string("other: 3\n") + line)) << line;
    EXPECT_EQ(result("hour: 3\n$65/hour"), "$65/h");
    EXPECT_EQ(result("sum: 3\nsum - 1"), result("other: 3\nsum - 1"));
    // An operand that is no label: nothing is put in the place of the other one.
    EXPECT_EQ(result("milk: 3\nmilk + bread * 2"), result("other: 3\nmilk + bread * 2"));
}

// What a line remembers of labels is forgotten with them.
TEST(LabelWords, changeWhatIsBelow) {
    const auto calculator = newCalculator();
    const auto calculated = [&](std::string_view document) {
        Context context;
        return utf8(
            calculator->calculate(utf16(document), context).lines.back()->formattedValue().regular.value_or(u""));
    };
    for (const char* label : {"rate: 3", "rate: 4", "", "Rate: 5", "rates: 6", "rate: 4", "rate = 8"}) {
        const std::string document = std::string(label) + "\n\nrate * 2 + 1";
        EXPECT_EQ(calculated(document), result(document)) << label;
    }
}

TEST(LabelWords, areBoundedInLength) {
    std::string document;
    for (int i = 0; i < 2000; ++i) document += "item " + std::to_string(i) + "x: 1\n";
    const std::string longest(64, 'a'), longer(65, 'a');
    EXPECT_EQ(result(document + longest + ": 2\n" + longest + " * 3"), "6");
    EXPECT_EQ(result(document + longer + ": 2\n" + longer + " * 3"), "3");
}

}  // namespace
}  // namespace vemo::test
