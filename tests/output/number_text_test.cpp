// SPDX-License-Identifier: MIT
// Numbers as texts: every locale's digits and signs read back by hand, fractions, and quantities told in parts.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/dcfmtsym.h>

#include <numeric>

#include "output/fraction_text.h"
#include "platform/icu_locale.h"
#include "platform/locale_info.h"
#include "support/calculators.h"
#include "vemo/number_formatter.h"

namespace vemo::test {
namespace {

using System = VemoEngineNumberFormatter::NumeralSystem;

DecimalNumber decimal(std::string_view text) {
    return DecimalNumber::parse(text);
}

// The number that a locale's text tells, from its symbols alone.
class Reader {
public:
    explicit Reader(const std::string& locale) {
        UErrorCode status = U_ZERO_ERROR;
        const icu::DecimalFormatSymbols symbols(icuLocale(locale), status);
        using S = icu::DecimalFormatSymbols;
        const auto add = [&](S::ENumberFormatSymbol which, std::string meaning) {
            signs_.emplace_back(symbols.getConstSymbol(which), std::move(meaning));
        };
        add(S::kDecimalSeparatorSymbol, ".");
        add(S::kExponentialSymbol, "e");
        add(S::kMinusSignSymbol, "-");
        add(S::kGroupingSeparatorSymbol, "");
        const UChar32 zero = symbols.getCodePointZero();
        for (int digit = 0; digit < 10; ++digit)
            signs_.emplace_back(icu::UnicodeString(zero + digit), std::to_string(digit));
    }

    DecimalNumber read(std::u16string_view text) const {
        const icu::UnicodeString whole(text.data(), static_cast<std::int32_t>(text.size()));
        std::string plain;
        for (std::int32_t i = 0; i < whole.length();) {
            std::int32_t length = 1;
            for (const auto& [sign, meaning] : signs_) {
                if (sign.isEmpty() || !whole.tempSubString(i).startsWith(sign)) continue;
                plain += meaning;
                length = sign.length();
                break;
            }
            i += length;  // marks of direction mean nothing
        }
        return decimal(plain);
    }

private:
    std::vector<std::pair<icu::UnicodeString, std::string>> signs_;
};

TEST(NumberTexts, areReadBackInEveryLocale) {
    std::int32_t count = 0;
    const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
    const char* numbers[] = {
        "0",      "7",     "-1234567.875", "0.000125",          "12345678901234567890123456789012345678",
        "-9.996", "1e100", "-1e-100",      "-0.00000000000005", "999999999.5"};
    for (std::int32_t i = 0; i < count; ++i) {
        const std::string name = locales[i].getName();
        const VemoEngineNumberFormatter formatter(name, "en");
        const Reader reader(name);
        for (const char* text : numbers) {
            const DecimalNumber number = decimal(text);
            const auto plain = formatter.stringFrom(number, System::decimal, 40, 0);
            EXPECT_EQ(reader.read(*plain), number.rounding({RoundingMode::plain, 40}))
                << name << ": " << text << " is " << utf8(*plain);
            const auto scientific = formatter.stringFrom(number, System::scientific, 40, 0);
            EXPECT_EQ(reader.read(*scientific), number) << name << ": " << text << " is " << utf8(*scientific);
        }
        // A mantissa that is rounded up to ten takes another power.
        EXPECT_EQ(reader.read(*formatter.stringFrom(decimal("-9.996e20"), System::scientific, 2, 0)), decimal("-1e21"))
            << name;
    }
}

// Between the least and the most fraction digits, halves away from zero, for every one of them.
RC_GTEST_PROP(NumberTextLaws, roundToTheDigitsAskedFor, ()) {
    static const VemoEngineNumberFormatter formatter("en_US_POSIX", "en");
    const auto mantissa = *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::int64_t>());
    const DecimalNumber number = DecimalNumber::fromInt64(mantissa).multiplyingByPowerOf10(*rc::gen::inRange(-25, 3));
    const int most = *rc::gen::inRange(-1, 30), least = *rc::gen::inRange(-1, 32);
    const std::string text = utf8(*formatter.stringFrom(number, System::decimal, most, least));
    const int kept = std::max(most, 0);
    RC_ASSERT(decimal(text) == number.round(static_cast<std::int16_t>(kept)));
    const std::size_t point = text.find('.');
    const auto digits = point == text.npos ? 0 : static_cast<int>(text.size() - point - 1);
    RC_ASSERT((digits <= kept && digits >= std::min(std::max(least, 0), kept)));
}

TEST(NumberTexts, areNothingForNotANumber) {
    const VemoEngineNumberFormatter formatter("de_DE", "de");
    for (const System system : {System::decimal, System::scientific, System::binary})
        EXPECT_EQ(formatter.stringFrom(DecimalNumber::notANumberValue(), system, 2, 0), std::nullopt);
    EXPECT_EQ(formatter.stringFrom(decimal("-0.5"), System::hexadecimal, 2, 0), u"0x0");
    EXPECT_EQ(formatter.stringFrom(decimal("-255.9"), System::hexadecimal, 2, 0), u"-0xff");
    EXPECT_EQ(formatter.stringFrom(decimal("1.5"), System::decimal, 5000, 5000)->size(), 2u + 999u);
}

// Any fraction of two whole numbers is told in lowest terms, whichever way its quotient was rounded.
RC_GTEST_PROP(FractionLaws, tellLowestTerms, ()) {
    const auto denominator = *rc::gen::inRange<std::int64_t>(1, 10001);
    const auto numerator = *rc::gen::inRange<std::int64_t>(0, 100 * denominator);
    const auto mode =
        *rc::gen::element(RoundingMode::plain, RoundingMode::down, RoundingMode::up, RoundingMode::bankers);
    const DecimalNumber quotient =
        DecimalNumber::fromInt64(numerator).dividing(DecimalNumber::fromInt64(denominator), {mode});
    const std::int64_t common = std::gcd(numerator, denominator);
    const std::int64_t whole = numerator / denominator, rest = numerator % denominator / common;
    std::string expected = rest == 0 || whole > 0 ? std::to_string(whole) : "";
    if (rest > 0)
        expected += (whole > 0 ? " " : "") + std::to_string(rest) + "/" + std::to_string(denominator / common);
    const auto text = fractionText(quotient);
    if (!text || utf8(*text) != expected) RC_FAIL(expected + " became " + utf8(text.value_or(u"nothing")));
}

TEST(Fractions, areToldOfWhatIsOne) {
    const std::pair<const char*, const char*> cases[] = {
        {"0", "0"},
        {"3", "3"},
        {"0.0001", "1/10000"},
        {"0.00009", ""},                                   // 9/100000
        {"3.14159265358979323846264338327950288", ""},     // no fraction
        {"2.9999999999999999999999999999999999999", "3"},  // a rounding below the whole number
        {"0.99999999999999999999999999999999999999", "1"},
        {"7.0000000000000000000000000000000000001", "7"},
        {"12345678901234567890.5", "12345678901234567890 1/2"},
        {"0.9999", "9999/10000"},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(utf8(fractionText(decimal(number)).value_or(u"")), text) << number;
    EXPECT_EQ(result("(-1/3) * 3 as a fraction"), "-1");
}

// The parts of a quantity add up to it, whatever digits are shown.
TEST(Parts, keepToTheFractionDigitsOfTheirDocument) {
    const auto shown = [](std::int64_t precision, std::string_view line) {
        static const auto calculator = newCalculator();
        Context context;
        context.setPrecision(precision);
        return utf8(calculator->calculate(utf16(line), context).lines.back()->formattedValue().regular.value_or(u""));
    };
    const char* line = "1.2345678 m in feet and inches";
    const std::string whole = shown(0, line);
    EXPECT_EQ(whole, "4 ft 1 in");
    EXPECT_EQ(shown(3, line), "4 ft 0.605 in");
    EXPECT_EQ(shown(-2, line), whole);
    const std::string exact = shown(40, line);
    for (const std::int64_t digits : {std::int64_t{999}, std::int64_t{40'000}, std::int64_t{65'536}, INT64_MAX})
        EXPECT_EQ(shown(digits, line), exact) << digits;
    EXPECT_EQ(shown(INT64_MIN, line), whole);
}

}  // namespace
}  // namespace vemo::test
