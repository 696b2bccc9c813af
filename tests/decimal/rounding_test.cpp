// SPDX-License-Identifier: MIT
// Arithmetic against exact whole numbers of any length, and rounding against an algorithm on digits.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>

#include "decimal/decimal_math.h"
#include "decimal/whole_numbers.h"

namespace vemo {
namespace {

using Integer = boost::multiprecision::cpp_int;

// An exact number: mantissa × 10^exponent.
struct Exact {
    Integer mantissa;
    int exponent = 0;
};

Integer powerOfTen(int exponent) {
    return boost::multiprecision::pow(Integer(10), static_cast<unsigned>(exponent));
}

Exact exactOf(const DecimalNumber& number) {
    Integer mantissa = number.mantissaHigh();
    mantissa = (mantissa << 64) + number.mantissaLow();
    return {number.isNegative() ? Integer(-mantissa) : mantissa, number.exponent()};
}

// The digits of a magnitude without those after `dropped`, one more in the last place where the mode says so.
DecimalNumber roundedByHand(const Exact& exact, RoundingBehavior behavior, bool* lost) {
    const bool negative = exact.mantissa < 0;
    const std::string all = Integer(abs(exact.mantissa)).str();
    const auto length = static_cast<int>(all.size());
    int dropped = 0;
    dropped = std::max(dropped, length - DecimalNumber::maxDigits);
    dropped = std::max(dropped, -exact.exponent - behavior.scale);
    dropped = std::max(dropped, DecimalNumber::minExponent - exact.exponent);
    const std::string padded = std::string(static_cast<std::size_t>(std::max(0, dropped - length) + 1), '0') + all;
    std::string kept = padded.substr(0, padded.size() - static_cast<std::size_t>(dropped));
    const std::string rest = padded.substr(kept.size());
    *lost = rest.find_first_not_of('0') != rest.npos;
    bool up = false;
    const bool half = !rest.empty() && rest[0] == '5' && rest.find_first_not_of('0', 1) == rest.npos;
    const bool nearer = !rest.empty() && rest[0] >= '5' && !half;
    switch (behavior.mode) {
        case RoundingMode::plain:
            up = half || nearer;
            break;
        case RoundingMode::down:
            up = negative && *lost;
            break;
        case RoundingMode::up:
            up = !negative && *lost;
            break;
        case RoundingMode::bankers:
            up = nearer || (half && (kept.back() - '0') % 2 == 1);
            break;
    }
    for (std::size_t i = kept.size(); up && i-- > 0;) {
        up = kept[i] == '9';
        kept[i] = up ? '0' : static_cast<char>(kept[i] + 1);
    }
    return DecimalNumber::parse((negative ? "-" : "") + kept + "e" + std::to_string(exact.exponent + dropped));
}

DecimalNumber anyNumber(int lowest, int highest) {
    const int kind = *rc::gen::inRange(0, 4);
    const auto high = kind == 0 ? *rc::gen::inRange<std::uint64_t>(0, 5'000'000'000'000'000'000u) : 0u;
    const auto low = kind == 1   ? *rc::gen::inRange<std::uint64_t>(0, 200)
                     : kind == 2 ? std::uint64_t{5} * static_cast<std::uint64_t>(std::pow(10, *rc::gen::inRange(0, 18)))
                                 : *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
    return DecimalNumber::fromParts(high, low, *rc::gen::inRange(lowest, highest), *rc::gen::arbitrary<bool>());
}

RoundingBehavior anyBehavior() {
    const auto mode =
        *rc::gen::element(RoundingMode::plain, RoundingMode::down, RoundingMode::up, RoundingMode::bankers);
    const auto scale =
        *rc::gen::arbitrary<bool>() ? RoundingBehavior::noScale : static_cast<std::int16_t>(*rc::gen::inRange(-60, 60));
    return {mode, scale};
}

void expectRounded(const Exact& exact, const DecimalNumber& result, RoundingBehavior behavior, DecimalStatus status) {
    bool lost = false;
    const DecimalNumber expected = roundedByHand(exact, behavior, &lost);
    if (result != expected) RC_FAIL(result.toString() + " in place of " + expected.toString());
    if (!result.notANumber() && status != DecimalStatus::underflow)
        RC_ASSERT((status == DecimalStatus::lossOfPrecision) == lost);
}

RC_GTEST_PROP(RoundingLaws, areThoseOfDigits, ()) {
    const DecimalNumber number = anyNumber(-100, 60);
    const RoundingBehavior behavior = anyBehavior();
    DecimalStatus status{};
    const DecimalNumber result = number.rounding(behavior, &status);
    expectRounded(exactOf(number), result, behavior, status);
    RC_ASSERT(result.rounding(behavior) == result);
}

RC_GTEST_PROP(RoundingLaws, happenOnceForSumsAndProducts, ()) {
    const DecimalNumber a = anyNumber(-60, 60), b = anyNumber(-60, 60);
    const RoundingBehavior behavior = anyBehavior();
    const Exact x = exactOf(a), y = exactOf(b);
    DecimalStatus status{};
    const DecimalNumber product = a.multiplying(b, behavior, &status);
    expectRounded({x.mantissa * y.mantissa, x.exponent + y.exponent}, product, behavior, status);
    const int exponent = std::min(x.exponent, y.exponent);
    const Integer left = x.mantissa * powerOfTen(x.exponent - exponent);
    const Integer right = y.mantissa * powerOfTen(y.exponent - exponent);
    const DecimalNumber sum = a.adding(b, behavior, &status);
    expectRounded({left + right, exponent}, sum, behavior, status);
    const DecimalNumber difference = a.subtracting(b, behavior, &status);
    expectRounded({left - right, exponent}, difference, behavior, status);
    const int order = left < right ? -1 : left > right ? 1 : 0;
    RC_ASSERT(DecimalNumber::compare(a, b) == order);
    RC_ASSERT(DecimalNumber::compare(b, a) == -order);
}

// A quotient, with as many exact digits as its rounding can need and one that tells of more.
RC_GTEST_PROP(RoundingLaws, happenOnceForQuotients, ()) {
    const DecimalNumber a = anyNumber(-60, 60), b = anyNumber(-60, 60);
    RC_PRE(!b.isZero());
    const RoundingBehavior behavior = anyBehavior();
    const Exact x = exactOf(a), y = exactOf(b);
    constexpr int digits = 200;
    Integer quotient = abs(x.mantissa) * powerOfTen(digits) / abs(y.mantissa);
    const bool more = abs(x.mantissa) * powerOfTen(digits) % abs(y.mantissa) != 0;
    quotient = quotient * 10 + (more ? 1 : 0);
    if (a.isNegative() != b.isNegative()) quotient = -quotient;
    DecimalStatus status{};
    const DecimalNumber result = a.dividing(b, behavior, &status);
    expectRounded({quotient, x.exponent - y.exponent - digits - 1}, result, behavior, status);
}

RC_GTEST_PROP(RemainderLaws, areExactHoweverLargeTheQuotient, ()) {
    const DecimalNumber a = anyNumber(-40, 100), b = anyNumber(-40, 20);
    RC_PRE(!b.isZero());
    const Exact x = exactOf(a), y = exactOf(b);
    const int exponent = std::min(x.exponent, y.exponent);
    const Integer left = x.mantissa * powerOfTen(x.exponent - exponent);
    const Integer right = y.mantissa * powerOfTen(y.exponent - exponent);
    Integer rest = left % right;
    if (rest != 0 && (rest < 0) != (right < 0)) rest += right;
    bool lost = false;
    const DecimalNumber expected = roundedByHand({rest, exponent}, mxBehavior, &lost);
    RC_ASSERT(mxMod(a, b) == expected);
}

// Where the divisor has as many digits as there are, at the exponent of the other number.
TEST(Remainders, reachToTheLastDigit) {
    const DecimalNumber number = DecimalNumber::parse("9.9999999999999999999999999999999999999");
    EXPECT_EQ(mxMod(number, DecimalNumber::fromInt64(3)).toString(), "0.9999999999999999999999999999999999999");
    EXPECT_EQ(mxMod(number, DecimalNumber::fromInt64(10)), number);
    EXPECT_EQ(mxMod(DecimalNumber::parse("1e-127"), DecimalNumber::parse("1e127")), DecimalNumber::parse("1e-127"));
}

// Digits in a base give the number back; bits are those of two's complement.
RC_GTEST_PROP(WholeNumberLaws, comeBackFromTheirDigits, ()) {
    const DecimalNumber number = anyNumber(0, 40).integer();
    const auto bits = *rc::gen::element(1u, 3u, 4u);
    const std::u16string digits = digitsInBase(number, bits);
    RC_ASSERT(numberFromDigits(digits, bits) == number.abs());
    RC_ASSERT(numberFromDigits(u"000" + digits, bits) == number.abs());
    RC_ASSERT((digits.size() == 1 || digits.front() != u'0'));
    Integer value = 0;
    for (const char16_t c : digits) value = (value << bits) + (c <= u'9' ? c - u'0' : c - u'a' + 10);
    const Exact exact = exactOf(number.abs());
    RC_ASSERT(value == exact.mantissa * powerOfTen(exact.exponent));
    const auto integer = *rc::gen::arbitrary<std::int64_t>();
    RC_ASSERT(bitsOf(DecimalNumber::fromInt64(integer)) == static_cast<std::uint64_t>(integer));
}

TEST(WholeNumbers, forgiveWhatRoundingLeft) {
    const auto decimal = [](const char* text) { return DecimalNumber::parse(text); };
    const std::pair<const char*, const char*> cases[] = {
        {"2", "2"},
        {"2.5", ""},
        {"2.9999999999999999999999999999999999999", "3"},
        {"-3.000000000000000000000000000001", "-3"},
        {"3.000000000000000000000000000002", ""},
        {"123456789012345678901234567890.00000001", "123456789012345678901234567890"},  // a matter of size
        {"123456789012345678901234567890.000001", ""},
        {"12345678901234567890123456789012.000001", "12345678901234567890123456789012"},
        {"12345678901234567890123456789012.000002", ""},  // however large
        {"1e-31", "0"},
    };
    for (const auto& [number, whole] : cases) {
        const auto nearly = nearlyWhole(decimal(number));
        EXPECT_EQ(nearly ? nearly->toString() : "", whole) << number;
        EXPECT_EQ(nearlyWhole(decimal(number).negative()).has_value(), nearly.has_value()) << number;
    }
    EXPECT_EQ(wholeNumber(decimal("-2.5")), decimal("-2"));
    EXPECT_EQ(wholeNumber(decimal("2.9")), decimal("2"));
    EXPECT_EQ(bitsOf(decimal("18446744073709551615.9")), UINT64_MAX);
    EXPECT_EQ(bitsOf(decimal("18446744073709551616")), std::nullopt);
    EXPECT_EQ(bitsOf(decimal("-18446744073709551616")), std::nullopt);
    EXPECT_EQ(bitsOf(DecimalNumber::notANumberValue()), std::nullopt);
    EXPECT_TRUE(numberFromDigits(std::u16string(151, u'f'), 4).notANumber());
    EXPECT_EQ(numberFromDigits(u"", 4), DecimalNumber());
    EXPECT_EQ(numberFromDigits(u"FF", 4), decimal("255"));
}

}  // namespace
}  // namespace vemo
