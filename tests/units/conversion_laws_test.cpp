// SPDX-License-Identifier: MIT
// Conversions over all units of a kind: whichever way one goes, the same amount; and converters of one's own.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <map>

#include "support/calculators.h"
#include "units/rate_unit.h"
#include "units/time_units.h"
#include "units/unit_converter.h"

namespace vemo::test {
namespace {

using Kinds = std::map<std::u16string, std::vector<std::u16string>>;

const UnitConverter& converter() {
    static const auto calculator = newCalculator();
    return calculator->unitConverter();
}

// With rates for every currency, a thousandth more for each.
Context& surroundings() {
    static const auto calculator = newCalculator();
    static Context context = [] {
        Context result;
        result.add(calculator->context().data(), false);
        auto rates = std::make_shared<CurrencyRatesContainer>();
        std::int64_t thousandths = 500;
        for (const auto& [unit, base] : converter().baseUnits())
            if (base == u"USD") rates->rates[unit] = DecimalNumber::fromInt64(++thousandths).multiplyingByPowerOf10(-3);
        rates->rates[u"USD"] = DecimalNumber::fromInt64(1);
        result.set(context_keys::currencyRates, std::shared_ptr<const CurrencyRatesContainer>(rates));
        return result;
    }();
    return context;
}

const Kinds& kinds() {
    static const Kinds all = [] {
        Kinds units;
        for (const auto& [unit, base] : converter().baseUnits()) units[base].push_back(unit);
        for (auto& [base, list] : units) std::sort(list.begin(), list.end());
        return units;
    }();
    return all;
}

std::optional<Value> convert(const DecimalNumber& amount, std::u16string_view from, std::u16string_view to) {
    return converter().convert(Value(amount).with(from, Attribute::unit), to, surroundings());
}

double magnitude(const std::u16string& unit, const std::u16string& base) {
    const auto one = convert(DecimalNumber::fromInt64(1), unit, base), none = convert(DecimalNumber(), unit, base);
    return std::abs(one->decimal()->subtracting(*none->decimal()).toDouble());
}

// By way of any other unit of the kind, temperatures and money too: the same, but for digits past the 38th.
RC_GTEST_PROP(ConversionLaws, takeAnyWay, ()) {
    const auto kind = *rc::gen::elementOf(kinds());
    RC_PRE((kind.first != u"date"));
    const auto from = *rc::gen::elementOf(kind.second), by = *rc::gen::elementOf(kind.second);
    const auto to = *rc::gen::elementOf(kind.second);
    const double sizes[] = {magnitude(from, kind.first), magnitude(by, kind.first), magnitude(to, kind.first)};
    RC_PRE(sizes[1] < 1e15 * sizes[0] && sizes[1] < 1e15 * sizes[2] && sizes[2] < 1e15 * sizes[0]);
    RC_PRE(sizes[0] > 1e-20);
    const DecimalNumber amount = DecimalNumber::fromInt64(*rc::gen::inRange<std::int64_t>(1, 1'000'000));
    const auto direct = convert(amount, from, to);
    const auto half = convert(amount, from, by);
    RC_ASSERT((direct && half));
    const auto whole = convert(*half->decimal(), by, to);
    RC_ASSERT((whole && whole->is(Attribute::unit, to) && direct->is(Attribute::unit, to)));
    const double a = direct->decimal()->toDouble(), b = whole->decimal()->toDouble();
    if (std::abs(a - b) > 1e-12 * std::max(std::abs(a), std::abs(b)) + 1e-12)
        RC_FAIL(utf8(from) + " " + utf8(by) + " " + utf8(to) + ": " + std::to_string(a) + " " + std::to_string(b));
}

// Of a larger amount there is more, and of none of a unit of a plain ratio there is none.
RC_GTEST_PROP(ConversionLaws, keepOrderAndSign, ()) {
    const auto kind = *rc::gen::elementOf(kinds());
    RC_PRE((kind.first != u"date"));
    const auto from = *rc::gen::elementOf(kind.second), to = *rc::gen::elementOf(kind.second);
    RC_PRE(magnitude(from, kind.first) > 1e-10 * magnitude(to, kind.first));
    const DecimalNumber less = DecimalNumber::fromInt64(*rc::gen::inRange(-1000, 1000));
    const DecimalNumber more = less.adding(DecimalNumber::fromInt64(*rc::gen::inRange(1, 1000)));
    RC_ASSERT(DecimalNumber::compare(*convert(less, from, to)->decimal(), *convert(more, from, to)->decimal()) == -1);
    if (kind.first == u"kelvin") return;
    RC_ASSERT(convert(DecimalNumber(), from, to)->decimal()->isZero());
    const DecimalNumber opposite =
        convert(less.negative(), from, to)->decimal()->adding(*convert(less, from, to)->decimal());
    RC_ASSERT(opposite.abs().toDouble() <= 1e-30 * (1 + std::abs(convert(less, from, to)->decimal()->toDouble())));
}

// Convertible into each other: what has one base. Rates turn upside down, a quantity does not.
TEST(Conversions, stayWithinTheirKind) {
    std::vector<std::u16string> some;
    for (const auto& [base, units] : kinds()) some.insert(some.end(), {units.front(), units.back()});
    for (const char16_t* rate : {u"m/second", u"second/m", u"km/hour", u"litre/100 km", u"mile/gallon", u"USD/hour"})
        some.emplace_back(rate);
    for (const std::u16string& a : some) {
        EXPECT_TRUE(converter().isConvertible(a, a));
        for (const std::u16string& b : some) {
            const bool possible = converter().isConvertible(a, b);
            EXPECT_EQ(possible, converter().isConvertible(b, a)) << utf8(a) << " " << utf8(b);
            const auto converted = convert(DecimalNumber::fromInt64(2), a, b);
            const bool number = converted && !converted->decimal()->notANumber();
            if (a != u"date" && b != u"date") {
                EXPECT_EQ(possible, number) << utf8(a) << " " << utf8(b);
            }
            for (const std::u16string& c : some)
                EXPECT_TRUE(!possible || !converter().isConvertible(b, c) || converter().isConvertible(a, c))
                    << utf8(a) << " " << utf8(b) << " " << utf8(c);
        }
    }
    EXPECT_FALSE(converter().isConvertible(u"nothing", u"m"));
    EXPECT_FALSE(converter().isConvertible(u"m/nothing", u"m/second"));
}

TEST(Conversions, leaveMoneyWithoutARateAlone) {
    Context none;
    const Value euros = Value(DecimalNumber::fromInt64(5)).with(u"EUR", Attribute::unit);
    EXPECT_EQ(converter().convert(euros, u"USD", none), euros.with(DecimalNumber::notANumberValue()));
    EXPECT_EQ(converter().convert(euros, u"GBP", none), std::nullopt);
    EXPECT_TRUE(none.hasDependencyOn(context_keys::currencyRatesTime));  // rates that come calculate it again
    // In the hour's and the month's rates the money stays, so that no exchange rate is needed.
    const Value wage = Value(DecimalNumber::fromInt64(1200)).with(u"EUR/month", Attribute::unit);
    EXPECT_EQ(converter().convert(wage, u"EUR/year", none)->decimal(), DecimalNumber::fromInt64(14400));
}

TEST(RateUnits, areReadAsTheyAreWritten) {
    for (const char16_t* upper : {u"USD", u"m3"})
        for (const char16_t* lower : {u"hour", u"km"})
            for (const char* count : {"1", "100", "0.5"}) {
                const std::u16string id = RateUnit::id(upper, lower, DecimalNumber::parse(count));
                const auto rate = RateUnit::parse(id);
                ASSERT_TRUE(rate) << utf8(id);
                EXPECT_TRUE(rate->upper == upper && rate->lower == lower) << utf8(id);
                EXPECT_EQ(rate->count, DecimalNumber::parse(count)) << utf8(id);
            }
    for (const char16_t* id : {u"", u"/", u"m", u"m/", u"/s", u"m/s/s", u"m/0 s", u"m/x s", u"m/5 ", u"m/5 s/s"})
        EXPECT_FALSE(RateUnit::parse(id)) << utf8(id);
}

// Months, quarters and years are each other's multiples, whatever their seconds.
TEST(CalendarRatios, multiply) {
    const char16_t* units[] = {u"month", u"quarter", u"year", u"decade", u"century", u"millennium"};
    for (const char16_t* a : units)
        for (const char16_t* b : units) {
            const DecimalNumber there = *UnitConverter::calendarRatio(a, b), back = *UnitConverter::calendarRatio(b, a);
            EXPECT_EQ(there.multiplying(back).round(30), DecimalNumber::fromInt64(1)) << utf8(a) << " " << utf8(b);
            EXPECT_EQ(there.multiplying(DecimalNumber::fromInt64(calendarMonths(b))).round(30),
                      DecimalNumber::fromInt64(calendarMonths(a)));
        }
    for (const char16_t* other : {u"day", u"week", u"m", u""})
        EXPECT_FALSE(UnitConverter::calendarRatio(other, u"year"));
}

// A unit of one's own: a ratio goes both ways, a converter in its direction only.
TEST(OwnUnits, convertAsTheyWereDefined) {
    UnitConverter own;
    Context context;
    Unit base, dozen, odd;
    base.id = base.baseUnitId.emplace(u"piece");
    dozen.id = u"dozen";
    dozen.baseUnitId = u"piece";
    dozen.baseRatio = DecimalNumber::fromInt64(12);
    odd.id = u"odd";
    odd.baseUnitId = u"piece";
    odd.toBaseValueConverter = std::make_shared<RatioValueConverter>(RatioValueConverter::Direction::multiply,
                                                                     DecimalNumber::fromInt64(3), u"odd", u"piece");
    for (const Unit& unit : {base, dozen, odd}) own.registerUnit(unit);
    const auto amount = [&](int number, std::u16string_view from, std::u16string_view to) -> std::string {
        const auto value =
            own.convert(Value(DecimalNumber::fromInt64(number)).with(from, Attribute::unit), to, context);
        return value ? value->decimal()->toString() : "nothing";
    };
    EXPECT_EQ(amount(2, u"dozen", u"piece"), "24");
    EXPECT_EQ(amount(30, u"piece", u"dozen"), "2.5");
    EXPECT_EQ(amount(8, u"odd", u"dozen"), "2");
    EXPECT_EQ(amount(8, u"dozen", u"odd"), "nothing");
    EXPECT_EQ(amount(8, u"unknown", u"odd"), "nothing");
    EXPECT_EQ(own.convert(Value(Attribute::unit, u"dozen"), u"piece", context), std::nullopt);  // no amount
    const Value marked =
        Value(DecimalNumber::fromInt64(1)).with(u"dozen", Attribute::unit).with(u"hex", Attribute::nsystem);
    EXPECT_TRUE(own.convert(marked, u"piece", context)->is(Attribute::nsystem, u"hex"));
    dozen.baseRatio = DecimalNumber::fromInt64(13);  // a baker's: the later one counts
    own.registerUnit(dozen);
    EXPECT_EQ(amount(1, u"dozen", u"piece"), "13");
    EXPECT_EQ(amount(26, u"piece", u"dozen"), "2");
}

}  // namespace
}  // namespace vemo::test
