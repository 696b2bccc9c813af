// SPDX-License-Identifier: MIT
// Functions of several values against sorting and counting by hand, and formulas against their inverses.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

#include "decimal/decimal_math.h"
#include "functions/date_values.h"
#include "functions/mathematical_functions.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

Calculator& calculator() {
    static const auto shared = newCalculator();
    return *shared;
}

std::optional<Value> call(std::u16string_view id, const std::vector<Value>& values) {
    Context context;
    context.add(calculator().context().data(), false);
    return calculator().functionManager().function(id)->evaluateSeveral(values, context);
}

Value number(std::int64_t n) {
    return Value(DecimalNumber::fromInt64(n));
}
Value length(std::int64_t n, std::u16string_view unit) {
    return number(n).with(unit, Attribute::unit);
}

// Lengths in several units, with what they are in millimetres.
struct Length {
    Value value;
    std::int64_t millimeters;
};

std::vector<Length> anyLengths() {
    const std::pair<std::u16string_view, std::int64_t> units[] = {{u"mm", 1}, {u"cm", 10}, {u"m", 1000}};
    std::vector<Length> lengths(static_cast<std::size_t>(*rc::gen::inRange(1, 8)));
    for (Length& each : lengths) {
        const auto& [unit, ratio] = units[*rc::gen::inRange(0, 3)];
        const auto amount = *rc::gen::inRange<std::int64_t>(-30, 30);
        each = {length(amount, unit), amount * ratio};
    }
    return lengths;
}

DecimalNumber millimeters(const Value& value) {
    Context context;
    context.add(calculator().context().data(), false);
    return calculator().unitConverter().convert(value, u"mm", context)->decimal()->round(20);
}

RC_GTEST_PROP(FunctionLaws, sortQuantitiesBySize, ()) {
    const std::vector<Length> lengths = anyLengths();
    std::vector<Value> values;
    std::vector<std::int64_t> sorted;
    for (const Length& each : lengths) {
        values.push_back(each.value);
        sorted.push_back(each.millimeters);
    }
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    const DecimalNumber two = DecimalNumber::fromInt64(2);
    const DecimalNumber median =
        DecimalNumber::fromInt64(sorted[middle] + sorted[(sorted.size() - 1) / 2]).dividing(two);
    const auto sum = std::accumulate(sorted.begin(), sorted.end(), std::int64_t{0});
    const DecimalNumber count = DecimalNumber::fromUInt64(sorted.size());
    RC_ASSERT(millimeters(*call(u"min", values)) == DecimalNumber::fromInt64(sorted.front()));
    RC_ASSERT(millimeters(*call(u"max", values)) == DecimalNumber::fromInt64(sorted.back()));
    RC_ASSERT(millimeters(*call(u"median", values)) == median);
    RC_ASSERT(millimeters(*call(u"sum", values)) == DecimalNumber::fromInt64(sum));
    RC_ASSERT(millimeters(*call(u"avg", values)) == DecimalNumber::fromInt64(sum).dividing(count).round(20));
    RC_ASSERT(call(u"count", values)->decimal() == count);
    // An extreme is one of the values, in its own unit.
    for (const char16_t* id : {u"min", u"max"})
        RC_ASSERT(std::find(values.begin(), values.end(), *call(id, values)) != values.end());
}

TEST(Functions, compareOnlyWhatHasOneDimension) {
    const std::vector<Value> mixed{length(1, u"m"), length(2, u"kgram")};
    for (const char16_t* id : {u"min", u"max", u"median"}) EXPECT_FALSE(call(id, mixed)) << utf8(id);
    EXPECT_EQ(call(u"count", mixed), number(2));
    EXPECT_EQ(call(u"max", {number(3)}), number(3));
}

RC_GTEST_PROP(FunctionLaws, divideAndMultiplyWholeNumbers, ()) {
    const auto numbers =
        *rc::gen::suchThat(rc::gen::container<std::vector<std::int64_t>>(rc::gen::inRange<std::int64_t>(-5000, 5000)),
                           [](const auto& all) { return !all.empty() && all.size() < 5; });
    std::vector<Value> values;
    std::int64_t divisor = 0, multiple = 1;
    for (const std::int64_t n : numbers) {
        values.push_back(number(n));
        divisor = std::gcd(divisor, n);
        multiple = std::lcm(multiple, n);
    }
    RC_ASSERT(call(u"gcd", values) == number(divisor));
    RC_ASSERT(call(u"lcm", values) == number(multiple));
    values.push_back(Value(DecimalNumber::parse("1.5")));
    RC_ASSERT(call(u"gcd", values)->decimal()->notANumber());
}

TEST(Functions, roundToDigitsThatThereAre) {
    const auto rounded = [](const char* x, const char* digits) {
        const auto value = call(u"round", {Value(DecimalNumber::parse(x)), Value(DecimalNumber::parse(digits))});
        return value->decimal()->toString() + "|" + utf8(value->string(Attribute::nsystem).value_or(u""));
    };
    EXPECT_EQ(rounded("2.345", "2"), "2.35|");
    EXPECT_EQ(rounded("2.34567", "4"), "2.3457|4");  // more than are shown anyway
    EXPECT_EQ(rounded("1250", "-2"), "1300|");
    EXPECT_EQ(rounded("-2.5", "0"), "-3|");
    for (const char* digits : {"1.5", "41", "-41", "1e30", "NaN"}) EXPECT_EQ(rounded("2", digits), "NaN|") << digits;
    const Value hex = number(255).with(u"hex", Attribute::nsystem);
    EXPECT_EQ(call(u"round", {hex, number(5)}), hex);
}

RC_GTEST_PROP(FormulaLaws, turnBack, ()) {
    const DecimalNumber x =
        DecimalNumber::fromInt64(*rc::gen::inRange<std::int64_t>(1, 1'000'000)).multiplyingByPowerOf10(-3);
    const auto near = [](const DecimalNumber& a, const DecimalNumber& b) {
        return a.subtracting(b).abs().toDouble() <= 1e-30 * (1 + std::abs(b.toDouble()));
    };
    RC_ASSERT(near(mxPower(formulas::squareRoot(x), DecimalNumber::fromInt64(2)), x));
    const DecimalNumber cube = formulas::cubeRoot(x.negative());
    RC_ASSERT((cube.isNegative() && near(mxPower(cube, DecimalNumber::fromInt64(3)), x.negative())));
    const DecimalNumber base = DecimalNumber::fromInt64(*rc::gen::inRange(2, 20));
    RC_ASSERT(near(mxPower(base, formulas::logarithm(base, x)), x));
    // Whole numbers are their own bounds, and others lie between theirs.
    const DecimalNumber above = formulas::ceiling(x), below = formulas::floor(x);
    RC_ASSERT((mxIsInteger(above) && mxIsInteger(below)));
    RC_ASSERT(above.subtracting(below) == DecimalNumber::fromInt64(mxIsInteger(x) ? 0 : 1));
    RC_ASSERT((DecimalNumber::compare(below, x) <= 0 && DecimalNumber::compare(x, above) <= 0));
    RC_ASSERT(formulas::ceiling(x.negative()) == below.negative());
}

TEST(Formulas, knowTheirDomains) {
    const auto decimal = [](const char* text) { return DecimalNumber::parse(text); };
    EXPECT_TRUE(formulas::squareRoot(DecimalNumber()).isZero());
    EXPECT_TRUE(formulas::squareRoot(decimal("-1")).notANumber());
    EXPECT_TRUE(formulas::root(decimal("2"), decimal("-4")).notANumber());
    EXPECT_TRUE(formulas::root(decimal("0"), decimal("4")).notANumber());
    EXPECT_TRUE(formulas::root(decimal("-2"), decimal("0")).notANumber());
    EXPECT_EQ(formulas::root(decimal("-3"), decimal("-8")), decimal("-0.5"));
    const DecimalNumber third = decimal("7").dividing(decimal("3"));
    EXPECT_EQ(formulas::floor(third.multiplying(decimal("3"))), decimal("7"));
    EXPECT_EQ(formulas::ceiling(third.multiplying(decimal("3"))), decimal("7"));
    EXPECT_EQ(formulas::ceiling(decimal("1e-40")), decimal("1"));  // a tiny number is not 0
    EXPECT_EQ(formulas::floor(decimal("-1e-40")), decimal("-1"));
}

// A right angle is one in degrees and in radians, however often it was gone round.
RC_GTEST_PROP(TrigonometryLaws, areExactAtRightAngles, ()) {
    const auto count = *rc::gen::inRange<std::int64_t>(-1000, 1000);
    constexpr int sines[] = {0, 1, 0, -1};
    const auto at = [&](std::int64_t n) { return sines[static_cast<std::size_t>((n % 4 + 4) % 4)]; };
    const Value degrees = length(90 * count, u"degree");
    const Value radians = Value(mxPi_2().multiplying(DecimalNumber::fromInt64(count)));
    for (const Value& angle : {degrees, radians}) {
        RC_ASSERT(call(u"sin", {angle})->decimal() == DecimalNumber::fromInt64(at(count)));
        RC_ASSERT(call(u"cos", {angle})->decimal() == DecimalNumber::fromInt64(at(count + 1)));
        const auto tangent = call(u"tan", {angle})->decimal();
        RC_ASSERT((count % 2 == 0 ? tangent->isZero() : tangent->notANumber()));
        RC_ASSERT(!call(u"sin", {angle})->has(Attribute::unit));
    }
}

// To another zone and back is the same time, whether the local zone is known or not.
RC_GTEST_PROP(DateValueLaws, comeBackFromAnotherZone, ()) {
    Context context;
    const TimeZone zones[] = {{u"Europe/Berlin"}, {u"America/New_York"}, {u"Asia/Kolkata"}, {u"UTC"}};
    const TimeZone &from = zones[*rc::gen::inRange(0, 4)], &to = zones[*rc::gen::inRange(0, 4)];
    const bool known = *rc::gen::arbitrary<bool>();
    if (known) context.set(context_keys::currentTimeZone, zones[*rc::gen::inRange(0, 4)]);
    // A noon in winter: clocks are changed at night.
    const Date noon(std::chrono::duration<double>(1795521600 + 3600.0 * *rc::gen::inRange(-3, 4)));
    const Value time = timeValue(noon, &from);
    const auto there = movedToTimeZone(time, to, context);
    RC_ASSERT((there && *there->timeZone() == to));
    // Values of a zone stand where the local zone shows the time that the zone's clocks show.
    const auto offset = [&](const TimeZone& zone) { return TimeZoneRules::find(zone.identifier)->offsetAt(noon); };
    RC_ASSERT(*there->date() - noon == std::chrono::duration<double>(offset(to) - offset(from)));
    RC_ASSERT(movedToTimeZone(*there, from, context)->date() == time.date());
    RC_ASSERT(context.hasDependencyOn(context_keys::currentTime) == !known);
    RC_ASSERT(!movedToTimeZone(time, TimeZone{u"Mars/Olympus"}, context));
    RC_ASSERT(!movedToTimeZone(dateValue(noon), to, context));  // of no zone
}

}  // namespace
}  // namespace vemo::test
