// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "support/calculators.h"

namespace vemo::test {
namespace {

struct Case {
    const char* document;
    const char* total;
    bool partial;
};

class Totals : public testing::TestWithParam<Case> {};

TEST_P(Totals, ofDocuments) {
    const auto calculator = newCalculator();
    for (const char* run : {"cold", "cached"}) {
        Context context;
        calculator->calculate(utf16(GetParam().document), context);
        const FormattedValue* total = context.grandTotalFormatted();
        EXPECT_EQ(total ? utf8(total->regular.value_or(u"")) : "", GetParam().total) << run;
        EXPECT_EQ(context.isGrandTotalPartial(), GetParam().partial) << run;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Totals,
                         testing::Values(
                             // What can't be calculated counts for nothing.
                             Case{"5\n1/0\n6", "11", false}, Case{"1/0\n$5", "$5", false}, Case{"ln 0", "", false},
                             // What can't be added begins the total anew, below.
                             Case{"5 kg\n3 m\n2 kg", "2 kg", true}, Case{"$5\n3 h\n2 h\n1 h", "3 h", true},
                             Case{"5 kg\n3 m", "", true}, Case{"$5\n€3\n$4", "$4", true},
                             Case{"today\ntomorrow\n5", "5", true},
                             // What only shows again what stands above adds nothing.
                             Case{"10\n20\nsum", "30", false}, Case{"10\n20\ntotal // so far\n5", "35", false},
                             Case{"10\n20\nAll of it: sum\naverage\n(sum)", "30", false}, Case{"10\nprev", "10", false},
                             Case{"rent = 10\nrent\nmy rent", "10", false}, Case{"pi", "", false},
                             // What calculates with it is a line like any other.
                             Case{"10\nsum + 1", "21", false}, Case{"10\nprev * 2", "30", false},
                             Case{"a = 10\nb = a\na * 2", "40", false}, Case{"10\nx = sum", "20", false}));

TEST(Totals, sumsOfBlocksCountSums) {
    EXPECT_EQ(results("10\n20\nsum\nsum"), (std::vector<std::string>{"10", "20", "30", "60"}));
}

}  // namespace
}  // namespace vemo::test
