// SPDX-License-Identifier: MIT
// Random lines with the results that tools/check_arithmetic.py, which can make any number of them, calculates on its
// own.
#include <gtest/gtest.h>

#include <fstream>

#include "support/calculators.h"

namespace vemo::test {
namespace {

TEST(Arithmetic, givesWhatExactArithmeticGives) {
    std::ifstream file(VEMO_TEST_DATA_DIR "/engine/arithmetic_sample.txt");
    const auto calculator = newCalculator();
    std::string row;
    std::size_t lines = 0;
    while (std::getline(file, row)) {
        if (row.starts_with('#')) continue;
        const std::size_t first = row.find('\t'), second = row.find('\t', first + 1);
        ASSERT_NE(second, row.npos) << row;
        Context context;
        const auto line = calculator->calculate(utf16(row.substr(0, first)), context).lines.at(0);
        const auto number = line->value().decimal();
        const std::string digits = number && !number->notANumber() ? number->toString() : "";
        EXPECT_EQ(digits, row.substr(first + 1, second - first - 1)) << row;
        EXPECT_EQ(utf8(line->formattedValue().regular.value_or(u"")), row.substr(second + 1)) << row;
        ++lines;
    }
    EXPECT_GE(lines, 1000u);
}

}  // namespace
}  // namespace vemo::test
