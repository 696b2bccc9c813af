// SPDX-License-Identifier: MIT
#include "evaluation/rate_operations.h"

#include <memory>

namespace vemo {

namespace {

// A value that is a rate, converted to the units in which results are told.
struct Rate {
    Value value;
    std::u16string id;
    RateUnit unit;  // views of `id`
    bool named;     // has a name of its own, such as the watt: it is a rate only where it meets what it is told of

    Rate(const Rate&) = delete;
    Rate& operator=(const Rate&) = delete;
    Rate(Value v, std::u16string text, bool hasName)
        : value(std::move(v)), id(std::move(text)), unit(*RateUnit::parse(id)), named(hasName) {}
    DecimalNumber amount() const { return *value.decimal(); }
};

std::unique_ptr<Rate> rateOf(const Value& value, const UnitConverter& converter, Context& context) {
    const auto id = value.string(Attribute::unit);
    const auto unit = id && value.decimal() ? converter.rate(*id) : std::nullopt;
    if (!unit) return nullptr;
    std::u16string plain = RateUnit::id(unit->upper, unit->lower, unit->count);
    const bool named = plain != *id;
    const auto converted = converter.convert(value, plain, context);
    if (!converted || !converted->decimal()) return nullptr;
    return std::make_unique<Rate>(*converted, std::move(plain), named);
}

std::optional<DecimalNumber> amountIn(std::u16string_view unit, const Value& value, const UnitConverter& converter,
                                      Context& context) {
    const auto own = value.string(Attribute::unit);
    if (!own || !converter.isConvertible(*own, unit)) return std::nullopt;
    if (const auto ratio = UnitConverter::calendarRatio(*own, unit)) return value.decimal()->multiplying(*ratio);
    const auto converted = converter.convert(value, unit, context);
    return converted ? converted->decimal() : std::nullopt;
}

Value quantity(const DecimalNumber& amount, std::u16string_view unit) {
    return Value(amount).with(unit, Attribute::unit);
}

// Two rates of which one's lower unit is the other's upper: "$20/h * 8 h/day".
std::optional<Value> chained(const Rate& outer, const Rate& inner, const UnitConverter& converter, Context& context) {
    const auto amount = amountIn(outer.unit.lower, quantity(inner.amount(), inner.unit.upper), converter, context);
    if (!amount) return std::nullopt;
    return quantity(outer.amount().multiplying(*amount).dividing(outer.unit.count),
                    RateUnit::id(outer.unit.upper, inner.unit.lower, inner.unit.count));
}

std::optional<Value> mismatch(const Rate* a, const Rate* b) {
    // "5 kW * 3 W" is what it would be without rates.
    if ((!a || a->named) && (!b || b->named)) return std::nullopt;
    return Value(DecimalNumber::notANumberValue());
}

bool haveUnits(const Value& left, const Value& right) {
    return left.has(Attribute::unit) && right.has(Attribute::unit) && !left.is(Attribute::unit, u"percent") &&
           !right.is(Attribute::unit, u"percent");
}

}  // namespace

std::optional<Value> RateMultiplicationOperation::calculate(const Value& left, const Value& right,
                                                            Context& context) const {
    if (!haveUnits(left, right)) return std::nullopt;
    const auto a = rateOf(left, converter_, context), b = rateOf(right, converter_, context);
    const auto total = [&](const Rate& rate, const Value& other) -> std::optional<Value> {
        const auto amount = amountIn(rate.unit.lower, other, converter_, context);
        if (!amount) return std::nullopt;
        return quantity(rate.amount().multiplying(*amount).dividing(rate.unit.count), rate.unit.upper);
    };
    if (!a && !b) return std::nullopt;
    if (a)
        if (auto result = total(*a, right)) return result;
    if (b)
        if (auto result = total(*b, left)) return result;
    if (a && b) {
        if (auto result = chained(*a, *b, converter_, context)) return result;
        if (auto result = chained(*b, *a, converter_, context)) return result;
    }
    return mismatch(a.get(), b.get());
}

std::optional<Value> RateDivisionOperation::calculate(const Value& left, const Value& right, Context& context) const {
    if (!haveUnits(left, right)) return std::nullopt;
    const auto a = rateOf(left, converter_, context), b = rateOf(right, converter_, context);
    if (!a && !b) return std::nullopt;
    if (b) {
        if (const auto amount = amountIn(b->unit.upper, left, converter_, context))
            return quantity(amount->multiplying(b->unit.count).dividing(b->amount()), b->unit.lower);
    }
    if (a && b) {
        if (const auto amount = amountIn(a->id, right, converter_, context))
            return Value(a->amount().dividing(*amount));
        // "$120/day / 8 h/day"
        if (const auto amount =
                amountIn(RateUnit::id(b->unit.upper, a->unit.lower, a->unit.count), right, converter_, context);
            amount && converter_.isConvertible(a->unit.lower, b->unit.lower))
            return quantity(a->amount().dividing(*amount),
                            RateUnit::id(a->unit.upper, b->unit.upper, DecimalNumber::fromInt64(1)));
    }
    return mismatch(a.get(), b.get());
}

}  // namespace vemo
