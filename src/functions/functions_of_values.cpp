// SPDX-License-Identifier: MIT
#include "functions/functions_of_values.h"

#include <cstddef>
#include <utility>

#include "decimal/decimal_math.h"
#include "functions/block_memory.h"

namespace vemo {

namespace {

// A function of the values in brackets, or of the lines above where there are none.
template <class Summary>
class ValuesToken : public Function {
public:
    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const final {
        const auto add = [this](Summary& summary, const Value& value, Context& adding) {
            return this->add(summary, value, adding);
        };
        if (values.empty()) {
            const Summary* block = memory_.summaryOf(context, add);
            return block ? of(*block, context) : std::nullopt;
        }
        // The first in brackets stands for the newest line.
        Summary summary{};
        for (auto value = values.rbegin(); value != values.rend(); ++value)
            if (!add(summary, *value, context)) return std::nullopt;
        return of(summary, context);
    }
    bool takesSeveral() const final { return true; }
    bool isWord() const final { return true; }

private:
    // Takes one value more, the older ones first. False when it can't be compared with those.
    virtual bool add(Summary& summary, const Value& value, Context& context) const = 0;
    virtual std::optional<Value> of(const Summary& summary, Context& context) const = 0;

    mutable BlockMemory<Summary> memory_;
};

// Whether one value is less than another; nothing when they can't be compared.
std::optional<bool> isLess(const Value& value, const Value& other, const Reduction& reduction, Context& context) {
    const auto difference = reduction.apply(u"-", value, other, context);
    const auto number = difference ? difference->decimal() : std::nullopt;
    if (!number || number->notANumber()) return std::nullopt;
    return number->isNegative();
}

bool hasDimension(const Value& value) {
    return value.has(Attribute::date) || (value.has(Attribute::unit) && !value.is(Attribute::unit, u"percent"));
}

// Tells what can be compared with all values so far. A number goes with any unit, and units do not all go with each
// other: one value that has a dimension, if any has, stands for the rest.
class Measure {
public:
    bool suits(const Value& value, const Reduction& reduction, Context& context) const {
        return !measure_ || (!hasDimension(*measure_) && !hasDimension(value)) ||
               isLess(*measure_, value, reduction, context);
    }
    void take(const Value& value) {
        if (!measure_ || (!hasDimension(*measure_) && hasDimension(value))) measure_ = value;
    }

private:
    std::optional<Value> measure_;
};

struct Extreme {
    std::optional<Value> best;
    Measure measure;
};

class ExtremeToken : public ValuesToken<Extreme> {
public:
    ExtremeToken(const Reduction& reduction, bool greatest) : reduction_(reduction), greatest_(greatest) {}

private:
    // Of equal ones the least is the newest, and the greatest the oldest.
    bool add(Extreme& extreme, const Value& value, Context& context) const override {
        auto& best = extreme.best;
        if (!extreme.measure.suits(value, reduction_, context)) return false;
        const auto less = best ? isLess(*best, value, reduction_, context) : greatest_;
        if (!less) return false;
        if (*less == greatest_) best = value;
        extreme.measure.take(value);
        return true;
    }
    std::optional<Value> of(const Extreme& extreme, Context&) const override { return extreme.best; }

    const Reduction& reduction_;
    bool greatest_;
};

// In rising order, each told in its own unit; of equal ones the newest first.
struct Ranking {
    std::vector<Value> values;
    Measure measure;
};

class MedianToken : public ValuesToken<Ranking> {
public:
    explicit MedianToken(const Reduction& reduction) : reduction_(reduction) {}

private:
    bool add(Ranking& ranking, const Value& value, Context& context) const override {
        if (!ranking.measure.suits(value, reduction_, context)) return false;
        auto& all = ranking.values;
        std::size_t first = 0;
        for (std::size_t end = all.size(); first < end;) {
            const std::size_t middle = first + (end - first) / 2;
            const auto less = isLess(all[middle], value, reduction_, context);
            if (!less) return false;
            (*less ? first : end) = *less ? middle + 1 : middle;
        }
        all.insert(all.begin() + static_cast<std::ptrdiff_t>(first), value);
        ranking.measure.take(value);
        return true;
    }
    std::optional<Value> of(const Ranking& ranking, Context& context) const override {
        const auto& all = ranking.values;
        const std::size_t middle = all.size() / 2;
        if (all.size() % 2 == 1) return all[middle];
        const auto sum = reduction_.apply(u"+", all[middle - 1], all[middle], context);
        return sum ? reduction_.apply(u"/", *sum, Value(DecimalNumber::fromInt64(2)), context) : std::nullopt;
    }

    const Reduction& reduction_;
};

class CountToken : public ValuesToken<std::size_t> {
    bool add(std::size_t& count, const Value&, Context&) const override {
        ++count;
        return true;
    }
    std::optional<Value> of(const std::size_t& count, Context&) const override {
        return Value(DecimalNumber::fromUInt64(count));
    }
};

DecimalNumber greatestCommonDivisor(DecimalNumber a, DecimalNumber b) {
    while (!b.isZero() && !b.notANumber()) {
        const DecimalNumber rest = mxMod(a, b).abs();
        a = b;
        b = rest;
    }
    return b.notANumber() ? b : a.abs();
}

DecimalNumber leastCommonMultiple(const DecimalNumber& a, const DecimalNumber& b) {
    if (a.isZero() || b.isZero()) return {};
    return a.dividing(greatestCommonDivisor(a, b)).multiplying(b).abs();
}

class WholeNumbersFunction : public FunctionOfNumbers {
public:
    using Formula = DecimalNumber (*)(DecimalNumber a, DecimalNumber b);
    explicit WholeNumbersFunction(Formula formula) : formula_(formula) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        std::optional<DecimalNumber> result;
        for (const Value& value : values) {
            const auto number = value.decimal();
            if (!number) return std::nullopt;
            if (!mxIsInteger(*number)) return Value(DecimalNumber::notANumberValue());
            result = result ? formula_(*result, *number) : number->abs();
        }
        return result ? std::optional(values[0].with(*result)) : std::nullopt;
    }
    bool takesSeveral() const override { return true; }

private:
    Formula formula_;
};

}  // namespace

std::shared_ptr<const Function> minimumToken(const Reduction& reduction) {
    return std::make_shared<ExtremeToken>(reduction, false);
}
std::shared_ptr<const Function> maximumToken(const Reduction& reduction) {
    return std::make_shared<ExtremeToken>(reduction, true);
}
std::shared_ptr<const Function> medianToken(const Reduction& reduction) {
    return std::make_shared<MedianToken>(reduction);
}
std::shared_ptr<const Function> countToken() {
    return std::make_shared<CountToken>();
}
std::shared_ptr<const Function> greatestDivisor() {
    return std::make_shared<WholeNumbersFunction>(greatestCommonDivisor);
}
std::shared_ptr<const Function> leastMultiple() {
    return std::make_shared<WholeNumbersFunction>(
        [](DecimalNumber a, DecimalNumber b) { return leastCommonMultiple(a, b); });
}

}  // namespace vemo
