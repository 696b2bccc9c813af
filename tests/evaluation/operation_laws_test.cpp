// SPDX-License-Identifier: MIT
// What holds of two operands, whatever their numbers, units and kinds.

#include <array>

#include "evaluation/operation_calculator.h"
#include "functions/date_values.h"
#include "support/calculators.h"
#include "support/laws.h"

namespace vemo::test {
namespace {

class Operations {
public:
    Operations() : calculator_(newCalculator()), context_(calculator_->context().copyContext()) {}

    std::optional<Value> apply(std::u16string_view id, const Value& left, const Value& right) {
        return calculator_->operationCalculator().apply(id, left, right, context_);
    }
    Value of(std::u16string_view id, const Value& left, const Value& right) {
        const auto result = apply(id, left, right);
        if (!result || result->isNotANumber())
            RC_FAIL(utf8(left.shortDescription()) + " " + utf8(id) + " " + utf8(right.shortDescription()) +
                    " gives nothing");
        return *result;
    }
    Value in(const Value& value, std::u16string_view unit) { return of(u"in", value, Value(Attribute::unit, unit)); }

private:
    std::unique_ptr<Calculator> calculator_;
    Context context_;
};

Operations& operations() {
    static Operations instance;
    return instance;
}

DecimalNumber anyNumber() {
    return DecimalNumber::fromInt64(anyOf(-500'000, 500'000)).multiplyingByPowerOf10(-anyOf(0, 4));
}
DecimalNumber anyAmount() {
    return DecimalNumber::fromInt64(anyOf(1, 500'000)).multiplyingByPowerOf10(-anyOf(0, 4));
}
Value quantity(const DecimalNumber& number, std::u16string_view unit) {
    return Value(number).with(unit, Attribute::unit);
}

constexpr std::array<std::u16string_view, 5> families[] = {{u"m", u"km", u"inch", u"mile", u"yard"},
                                                           {u"kgram", u"gram", u"pound", u"ounce", u"stone"},
                                                           {u"litre", u"mlitre", u"gallon", u"pint", u"m3"},
                                                           {u"second", u"minute", u"hour", u"day", u"week"},
                                                           {u"m2", u"hectare", u"km2", u"foot2", u"acre"}};

// The same number but for the last of 38 digits, with the same unit.
void requireNear(const Value& given, const Value& expected) {
    const auto a = given.decimal(), b = expected.decimal();
    const DecimalNumber limit = b->abs().adding(DecimalNumber::fromInt64(1)).multiplying(DecimalNumber::parse("1e-28"));
    if (given.string(Attribute::unit) == expected.string(Attribute::unit) &&
        DecimalNumber::compare(a->subtracting(*b).abs(), limit).value_or(1) <= 0)
        return;
    RC_FAIL(utf8(given.shortDescription()) + " instead of " + utf8(expected.shortDescription()));
}

TEST(OperationLaws, sumsOfQuantities) {
    holds([] {
        Operations& o = operations();
        const auto& family = anyRow(families);
        const std::u16string_view first = anyRow(family), second = anyRow(family);
        const Value a = quantity(anyNumber(), first), b = quantity(anyNumber(), second);
        requireNear(o.in(o.of(u"+", a, b), first), o.in(o.of(u"+", b, a), first));
        requireNear(o.in(o.of(u"-", o.of(u"+", a, b), b), first), a);
        requireNear(o.in(o.of(u"-", a, b), first),
                    o.in(o.of(u"+", a, quantity(b.decimal()->negative(), second)), first));
        requireNear(o.in(o.in(a, second), first), a);
        // Of lengths, weights and the like the right one's unit is kept.
        if (&family != &families[3]) requireNear(o.of(u"+", a, b), o.of(u"+", o.in(a, second), b));
    });
}

TEST(OperationLaws, productsAndQuotientsOfNumbers) {
    holds([] {
        Operations& o = operations();
        const Value a(anyNumber()), b(anyAmount()), c(anyNumber());
        requireNear(o.of(u"*", a, b), o.of(u"*", b, a));
        requireNear(o.of(u"*", o.of(u"/", a, b), b), a);
        requireNear(o.of(u"*", o.of(u"+", a, c), b), o.of(u"+", o.of(u"*", a, b), o.of(u"*", c, b)));
        requireNear(o.of(u"-", Value(), a), o.of(u"*", a, Value(DecimalNumber::fromInt64(-1))));
        const Value length = quantity(anyNumber(), u"km");
        requireNear(o.of(u"/", o.of(u"*", length, b), b), length);
        requireNear(o.of(u"*", b, length), o.of(u"*", length, b));
        RC_ASSERT(!o.of(u"/", length, length.with(DecimalNumber::fromInt64(3))).has(Attribute::unit));
    });
}

TEST(OperationLaws, powersAndRemainders) {
    holds([] {
        Operations& o = operations();
        const auto whole = [](int first, int last) { return Value(DecimalNumber::fromInt64(anyOf(first, last))); };
        const Value base(anyAmount()), m = whole(-6, 6), n = whole(-6, 6);
        const Value product = o.of(u"*", o.of(u"^", base, m), o.of(u"^", base, n));
        const Value power = o.of(u"^", base, o.of(u"+", m, n));
        requireNear(o.of(u"/", product, power), Value(DecimalNumber::fromInt64(1)));
        // a mod b lies between nothing and b, a whole number of times b away from a.
        const Value a = whole(-5000, 5000), b = whole(1, 70), sign = whole(0, 1);
        const Value divisor = sign.decimal()->isZero() ? b : o.of(u"-", Value(), b);
        const Value rest = o.of(u"mod", a, divisor);
        const std::int64_t r = rest.decimal()->toInt64(), d = divisor.decimal()->toInt64();
        RC_ASSERT(std::abs(r) < std::abs(d) && (r == 0 || (r < 0) == (d < 0)));
        RC_ASSERT((a.decimal()->toInt64() - r) % d == 0);
    });
}

TEST(OperationLaws, bitsAreThoseOfTheMachine) {
    holds([] {
        const auto number = [] {
            const auto high = std::uint64_t(anyOf(0, 0x7ffffffe)), low = std::uint64_t(anyOf(0, 0x7ffffffe));
            const auto bits = static_cast<std::int64_t>((high << 31 | low) >> anyOf(0, 60));
            return anyOf(0, 1) == 0 ? bits : -bits;
        };
        const std::int64_t a = number(), b = number();
        const int count = anyOf(0, 63);
        const auto of = [](std::u16string_view id, std::int64_t left, std::int64_t right) {
            const Value x(DecimalNumber::fromInt64(left)), y(DecimalNumber::fromInt64(right));
            return operations().of(id, x, y).decimal()->toInt64();
        };
        RC_ASSERT(of(u"and", a, b) == (a & b));
        RC_ASSERT(of(u"or", a, b) == (a | b));
        RC_ASSERT(of(u"xor", a, b) == (a ^ b));
        RC_ASSERT(of(u"right_shift", a, count) == a >> count);
        RC_ASSERT(of(u"left_shift", a, count) == static_cast<std::int64_t>(static_cast<std::uint64_t>(a) << count));
    });
}

TEST(OperationLaws, percentagesOfWhatever) {
    constexpr std::u16string_view units[] = {u"", u"USD", u"km", u"hour"};
    holds([&] {
        Operations& o = operations();
        const std::u16string_view unit = anyRow(units);
        const DecimalNumber number = anyAmount();
        const Value amount = unit.empty() ? Value(number) : quantity(number, unit);
        const DecimalNumber percent = DecimalNumber::fromInt64(anyOf(1, 95));
        const Value part = quantity(percent, u"percent");
        const Value factor(percent.multiplyingByPowerOf10(-2));
        const Value one(DecimalNumber::fromInt64(1));
        requireNear(o.of(u"+", amount, part), o.of(u"*", amount, o.of(u"+", one, factor)));
        requireNear(o.of(u"-", amount, part), o.of(u"*", amount, o.of(u"-", one, factor)));
        requireNear(o.of(u"percent_of", part, amount), o.of(u"*", amount, factor));
        requireNear(o.of(u"percent_on", part, amount), o.of(u"+", amount, part));
        requireNear(o.of(u"percent_off", part, amount), o.of(u"-", amount, part));
        // The phrases that ask for a number undo those that use it.
        requireNear(o.of(u"as_a_percent_of", o.of(u"percent_of", part, amount), amount), part);
        requireNear(o.of(u"as_a_percent_on", o.of(u"percent_on", part, amount), amount), part);
        requireNear(o.of(u"as_a_percent_off", o.of(u"percent_off", part, amount), amount), part);
        requireNear(o.of(u"percent_of_what_is", part, o.of(u"percent_of", part, amount)), amount);
        requireNear(o.of(u"percent_on_what_is", part, o.of(u"percent_on", part, amount)), amount);
        requireNear(o.of(u"percent_off_what_is", part, o.of(u"percent_off", part, amount)), amount);
        requireNear(o.of(u"percent_change", amount, o.of(u"+", amount, part)), part);
    });
}

TEST(OperationLaws, ratesAreQuotients) {
    holds([] {
        Operations& o = operations();
        const Value speed = quantity(anyAmount(), u"km/hour"), time = quantity(anyAmount(), u"hour");
        const Value way = o.of(u"*", speed, time);
        RC_ASSERT(way.is(Attribute::unit, u"km"));
        requireNear(o.of(u"*", time, speed), way);
        requireNear(o.in(o.of(u"/", way, speed), u"hour"), time);
        requireNear(o.of(u"*", o.in(speed, u"mile/hour"), time), o.in(way, u"mile"));
        requireNear(o.of(u"*", speed, o.in(time, u"minute")), way);
        const auto refused = o.apply(u"*", speed, quantity(anyAmount(), u"kgram"));
        RC_ASSERT(!refused || refused->isNotANumber());
    });
}

// Whatever the operands, a result is a value to show or to say no of: it is no operator, and has no number where
// neither operand has one, dates and differences of dates apart.
TEST(OperationLaws, strangeOperandsGiveNothingStrange) {
    constexpr std::u16string_view ids[] = {u"in",
                                           u"+",
                                           u"-",
                                           u"*",
                                           u"/",
                                           u"^",
                                           u"mod",
                                           u"and",
                                           u"left_shift",
                                           u"percent_of",
                                           u"percent_off",
                                           u"as_a_percent_of",
                                           u"percent_of_what_is",
                                           u"percent_change",
                                           u"is_percent_on"};
    const auto any = [] {
        constexpr std::u16string_view units[] = {u"m", u"USD", u"percent", u"hour", u"km/hour", u"nonsense", u""};
        const Date instant{std::chrono::duration<double>(1795525200 + 3600 * anyOf(-900, 900))};
        switch (anyOf(0, 6)) {
            case 0:
                return Value(anyNumber());
            case 1:
                return quantity(anyNumber(), anyRow(units));
            case 2:
                return Value(Attribute::unit, anyRow(units));
            case 3:
                return dayValue(instant);
            case 4:
                return timeValue(instant, nullptr);
            case 5:
                return Value(TimeZone{u"Asia/Tokyo"});
            default:
                return Value(DecimalNumber::fromInt64(anyOf(-3, 3) * 1000).multiplyingByPowerOf10(100));
        }
    };
    holds(
        [&] {
            const Value left = any(), right = any();
            const std::u16string_view id = anyRow(ids);
            const auto result = operations().apply(id, left, right);
            if (!result) return;
            RC_ASSERT(!result->has(Attribute::operation) && !result->has(Attribute::function));
            const bool numbers = left.has(Attribute::decimal) || right.has(Attribute::decimal);
            const bool dates = left.has(Attribute::date) && right.has(Attribute::date);
            if (result->has(Attribute::decimal) && !result->isNotANumber() && !numbers && !dates)
                RC_FAIL(utf8(left.shortDescription()) + " " + utf8(id) + " " + utf8(right.shortDescription()) + " is " +
                        utf8(result->shortDescription()));
        },
        2000);
}

}  // namespace
}  // namespace vemo::test
