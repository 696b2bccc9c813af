// SPDX-License-Identifier: MIT
#include "vemo/decimal_number.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "decimal/vectors.h"

namespace vemo {

namespace {

constexpr RoundingBehavior halfToEven{RoundingMode::bankers, RoundingBehavior::noScale};

DecimalNumber decimal(std::string_view text) {
    return DecimalNumber::parse(text);
}

std::string sum(std::string_view a, std::string_view b) {
    return decimal(a).adding(decimal(b)).toString();
}

DecimalNumber anyDecimal(int lowest, int highest) {
    const auto high = *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
    const auto low = *rc::gen::arbitrary<std::uint64_t>();
    const bool wide = *rc::gen::arbitrary<bool>();
    const auto exponent = *rc::gen::inRange(lowest, highest);
    return DecimalNumber::fromParts(wide ? high % 5'000'000'000'000'000'000U : 0, low, exponent,
                                    *rc::gen::arbitrary<bool>());
}

}  // namespace

TEST(DecimalNumber, agreesWithTheVectors) {
    const auto vectors = readVectors();
    ASSERT_GT(vectors.size(), 3000U);
    int checked = 0;
    for (const auto& v : vectors) {
        const auto mode = modeNamed(v.mode);
        if (!mode) continue;
        ++checked;
        const RoundingBehavior behavior{
            *mode, v.scale == "none" ? RoundingBehavior::noScale : static_cast<std::int16_t>(std::stoi(v.scale))};
        const DecimalNumber a = decimal(v.a);
        const DecimalNumber b = decimal(v.b);
        DecimalStatus status{};
        const DecimalNumber result = v.operation == "add"        ? a.adding(b, behavior, &status)
                                     : v.operation == "subtract" ? a.subtracting(b, behavior, &status)
                                     : v.operation == "multiply" ? a.multiplying(b, behavior, &status)
                                     : v.operation == "divide"   ? a.dividing(b, behavior, &status)
                                     : v.operation == "raise"    ? a.raising(b.toUInt64(), behavior, &status)
                                                                 : a.rounding(behavior, &status);
        EXPECT_EQ(result, decimal(v.expected)) << v.line << "\ngives " << result.toString();
        EXPECT_EQ(statusName(status), v.status) << v.line;
    }
    EXPECT_GT(checked, 2500);
}

TEST(DecimalNumber, convertsAsTheVectorsSay) {
    for (const auto& v : readVectors()) {
        if (v.operation == "text") {
            EXPECT_EQ(decimal(v.a).toString(), v.expected) << v.line;
        }
        if (v.operation == "parse") {
            EXPECT_EQ(decimal(v.a), decimal(v.expected)) << v.line;
        }
        if (v.operation == "toDouble") {
            EXPECT_EQ(decimal(v.a).toDouble(), std::stod(v.expected)) << v.line;
        }
        if (v.operation == "fromDouble") {
            EXPECT_EQ(DecimalNumber::fromDouble(std::stod(v.a)), decimal(v.expected)) << v.line;
        }
    }
}

TEST(DecimalNumber, everydayArithmeticUnderTheStandardBehavior) {
    static_assert(std::is_trivially_copyable_v<DecimalNumber> && sizeof(DecimalNumber) <= 24);
    EXPECT_EQ(sum("0.1", "0.2"), "0.3");
    EXPECT_EQ(decimal("2").dividing(decimal("3")).toString(), "0.66666666666666666666666666666666666667");
    EXPECT_EQ(decimal("-2").dividing(decimal("3")).toString(), "-0.66666666666666666666666666666666666666");
    EXPECT_EQ(sum("1e37", "1e-38"), "10000000000000000000000000000000000001");
    EXPECT_EQ(sum("5", "-5"), "0");
    EXPECT_EQ(decimal("100000000000000000000").multiplying(decimal("-0.5")).toString(), "-50000000000000000000");
}

TEST(DecimalNumber, readsTheLongestPrefix) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"12abc", "12"},
        {"+7", "7"},
        {"-.5", "-0.5"},
        {"5.", "5"},
        {".", "NaN"},
        {"", "NaN"},
        {"-", "NaN"},
        {"e5", "NaN"},
        {"1e", "1"},
        {"1e+", "1"},
        {"2e3", "2000"},
        {"2E-3", "0.002"},
        {"1.5.5", "1.5"},
        {" 1", "NaN"},
        {"--1", "NaN"},
        {"-0.000", "0"},
        {"0e999999", "0"},
        {"007.50", "7.5"},
        {"1e99999999999999999999", "NaN"},
        {"1e-99999999999999999999", "0"},
        {"5.e1", "50"},
        {"NaN", "NaN"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(decimal(text).toString(), expected) << text;
    EXPECT_EQ(decimal("0." + std::string(100, '0') + "1" + std::string(100'000, '0')), decimal("1e-101"));

    EXPECT_EQ(DecimalNumber::parse(u"3,25", u","), decimal("3.25"));
    EXPECT_EQ(DecimalNumber::parse(u"3.25", u","), decimal("3"));
    EXPECT_EQ(DecimalNumber::parse(u"3::25e1", u"::"), decimal("32.5"));
    EXPECT_EQ(DecimalNumber::parse(u"3:25", u"::"), decimal("3"));
    EXPECT_EQ(DecimalNumber::parse(u"\u0665"), DecimalNumber::notANumberValue());
}

TEST(DecimalNumber, notANumberSpreads) {
    const auto nan = DecimalNumber::notANumberValue();
    const DecimalNumber two = DecimalNumber::fromInt64(2);
    for (const auto& result : {nan.adding(two), two.subtracting(nan), nan.multiplying(DecimalNumber()),
                               DecimalNumber().dividing(nan), nan.dividing(DecimalNumber()), nan.raising(0), nan.abs(),
                               nan.negative(), nan.integer(), nan.fraction(), nan.multiplyingByPowerOf10(3)}) {
        EXPECT_TRUE(result.notANumber());
    }
    EXPECT_EQ(nan, nan);
    EXPECT_FALSE(nan.isNegative());
    EXPECT_FALSE(nan.isZero());
    EXPECT_EQ(nan.toString(), "NaN");
    EXPECT_EQ(nan.fractionDigitsCount(), 0);
    EXPECT_TRUE(std::isnan(nan.toDouble()));
    EXPECT_EQ(nan.toInt64(), 0);
    EXPECT_FALSE(DecimalNumber::compare(nan, two).has_value());
    EXPECT_TRUE(DecimalNumber::fromDouble(std::numeric_limits<double>::infinity()).notANumber());
}

TEST(DecimalNumber, integerConversionsDropTheFractionAndClamp) {
    EXPECT_EQ(decimal("-7.9").toInt64(), -7);
    EXPECT_EQ(decimal("-7.9").toUInt64(), 0U);
    EXPECT_EQ(decimal("9223372036854775807").toInt64(), INT64_MAX);
    EXPECT_EQ(decimal("9223372036854775808").toInt64(), INT64_MAX);
    EXPECT_EQ(decimal("-9223372036854775808").toInt64(), INT64_MIN);
    EXPECT_EQ(decimal("-1e100").toInt64(), INT64_MIN);
    EXPECT_EQ(decimal("18446744073709551615.9").toUInt64(), UINT64_MAX);
    EXPECT_EQ(decimal("18446744073709551616").toUInt64(), UINT64_MAX);
    EXPECT_EQ(decimal("1e-128").toInt64(), 0);
    EXPECT_EQ(DecimalNumber::fromInt64(INT64_MIN).toString(), "-9223372036854775808");
    EXPECT_EQ(DecimalNumber::fromParts(UINT64_MAX, UINT64_MAX, 0, false),
              decimal("340282366920938463463374607431768211460"));
    EXPECT_TRUE(DecimalNumber::fromParts(0, 1, INT_MAX, false).notANumber());
    EXPECT_TRUE(DecimalNumber::fromParts(0, 1, INT_MIN, true).isZero());
}

TEST(DecimalNumber, helpers) {
    EXPECT_EQ(decimal("-2.5").integer().toString(), "-3");
    EXPECT_EQ(decimal("-0.5").integer().toString(), "-1");
    EXPECT_EQ(decimal("-2.5").fraction().toString(), "0.5");
    EXPECT_EQ(decimal("2.75").fraction().toString(), "0.75");
    EXPECT_EQ(decimal("-2.5").round(0).toString(), "-3");
    EXPECT_EQ(decimal("1250").round(-2).toString(), "1300");
    EXPECT_EQ(decimal("-12.5").abs().toString(), "12.5");
    EXPECT_EQ(DecimalNumber().negative(), DecimalNumber());
    EXPECT_EQ(decimal("3").fractionDigitsCount(), 0);
    EXPECT_EQ(decimal("0.1250").fractionDigitsCount(), 3);
    EXPECT_EQ(decimal("120").fractionDigitsCount(), 0);
    EXPECT_EQ(decimal("1.5").multiplyingByPowerOf10(-130, halfToEven), decimal("0"));
    EXPECT_TRUE(decimal("1").multiplyingByPowerOf10(INT_MAX).notANumber());
}

TEST(DecimalNumber, hugePowersEnd) {
    DecimalStatus status{};
    EXPECT_EQ(decimal("-1").raising(UINT64_MAX), decimal("-1"));
    EXPECT_TRUE(decimal("10").raising(UINT64_MAX, halfToEven, &status).notANumber());
    EXPECT_EQ(status, DecimalStatus::overflow);
    EXPECT_TRUE(decimal("0.3").raising(UINT64_MAX, halfToEven, &status).isZero());
    EXPECT_EQ(status, DecimalStatus::underflow);
    EXPECT_EQ(decimal("-0.3").raising(1001, {RoundingMode::down, RoundingBehavior::noScale}), decimal("-1e-128"));
    EXPECT_EQ(DecimalNumber().raising(0), decimal("1"));
    // 1 + n × 10^-37 + n (n - 1) ÷ 2 × 10^-74 + …
    EXPECT_EQ(decimal("1.0000000000000000000000000000000000001").raising(std::uint64_t{1} << 63, halfToEven).toString(),
              "1.0000000000000000009223372036854775812");
}

RC_GTEST_PROP(DecimalNumberLaws, textReadsBackAsTheSameNumber, ()) {
    const DecimalNumber a = anyDecimal(-140, 130);
    RC_ASSERT(a == decimal(a.toString()));
    if (!a.notANumber()) RC_ASSERT(a.hash() == decimal(a.toString()).hash());
}

RC_GTEST_PROP(DecimalNumberLaws, sumsCommuteAndDifferencesAreOpposite, ()) {
    const DecimalNumber a = anyDecimal(-90, 90);
    const DecimalNumber b = anyDecimal(-90, 90);
    RC_ASSERT(a.adding(b, halfToEven) == b.adding(a, halfToEven));
    RC_ASSERT(a.subtracting(b, halfToEven).adding(b.subtracting(a, halfToEven), halfToEven).isZero());
    const DecimalNumber difference = a.subtracting(b, halfToEven);
    const int order = difference.isZero() ? 0 : difference.isNegative() ? -1 : 1;
    RC_ASSERT(DecimalNumber::compare(a, b) == order);
}

RC_GTEST_PROP(DecimalNumberLaws, downAndUpEncloseTheResult, ()) {
    const DecimalNumber a = anyDecimal(-40, 40);
    const DecimalNumber b = anyDecimal(-40, 40);
    RC_PRE(!b.isZero());
    const DecimalNumber below = a.dividing(b, {RoundingMode::down, RoundingBehavior::noScale});
    const DecimalNumber above = a.dividing(b, {RoundingMode::up, RoundingBehavior::noScale});
    const DecimalNumber nearest = a.dividing(b, halfToEven);
    RC_ASSERT(nearest == below || nearest == above);
    DecimalStatus status{};
    a.dividing(b, halfToEven, &status);
    RC_ASSERT((status == DecimalStatus::exact) == (below == above));
}

RC_GTEST_PROP(DecimalNumberLaws, doublesSurviveTheWayThere, ()) {
    const auto mantissa = *rc::gen::arbitrary<std::int64_t>();
    const double value = std::ldexp(static_cast<double>(mantissa), *rc::gen::inRange(-250, 250));
    RC_ASSERT(DecimalNumber::fromDouble(value).toDouble() == value);
}

}  // namespace vemo
