// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "support/calculators.h"
#include "vemo/number_formatter.h"

namespace vemo::test {
namespace {

using NumeralSystem = VemoEngineNumberFormatter::NumeralSystem;

std::string decimalText(const char* locale, const char* number, int maxFraction = 2, int minFraction = 0) {
    const VemoEngineNumberFormatter formatter(locale, locale);
    return utf8(formatter.stringFrom(DecimalNumber::parse(number), NumeralSystem::decimal, maxFraction, minFraction)
                    .value_or(u""));
}

TEST(NumberFormatter, writesAsTheLocaleDoes) {
    EXPECT_EQ(decimalText("en_US", "1234567.891"), "1,234,567.89");
    EXPECT_EQ(decimalText("de_DE", "1234567.891"), "1.234.567,89");
    EXPECT_EQ(decimalText("hi_IN", "1234567.891"), "12,34,567.89");
    EXPECT_EQ(decimalText("fr_FR", "1234.5"), "1\u202f234,5");
    EXPECT_EQ(decimalText("ar_EG", "12.5"), "\u0661\u0662\u066b\u0665");
}

TEST(NumberFormatter, keepsEveryDigitAndRoundsHalvesAway) {
    EXPECT_EQ(decimalText("en_US", "0.12345678901234567890123456789012345678", 38),
              "0.12345678901234567890123456789012345678");
    EXPECT_EQ(decimalText("en_US", "99999999999999999999999999999999999999"),
              "99,999,999,999,999,999,999,999,999,999,999,999,999");
    EXPECT_EQ(decimalText("en_US", "0.125"), "0.13");
    EXPECT_EQ(decimalText("en_US", "0.135"), "0.14");
    EXPECT_EQ(decimalText("en_US", "1.5", 2, 2), "1.50");
}

std::string shortText(std::u16string_view line) {
    static const auto calculator = newCalculator();
    Context context;
    return utf8(calculator->calculate(line, context).lines[0]->formattedValue().shortText.value_or(u""));
}

TEST(ValueFormatter, abbreviatesLongResults) {
    EXPECT_EQ(shortText(u"1234567"), "1.23E6");
    EXPECT_EQ(shortText(u"1,234.56"), "1,234.56");  // 8 characters
    EXPECT_EQ(shortText(u"-12345678"), "-1.23E7");
    EXPECT_EQ(shortText(u"123456 km"), "123,456");
    EXPECT_EQ(shortText(u"123456789 m"), "1.23E8 m");
    EXPECT_EQ(shortText(u"123456789 acres"), "1.23E8");
    EXPECT_EQ(shortText(u"5 cm"), "5 cm");
}

}  // namespace
}  // namespace vemo::test
