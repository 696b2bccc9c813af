// SPDX-License-Identifier: MIT
#include "functions/functions_of_values.h"

#include <algorithm>

#include "decimal/decimal_math.h"
#include "functions/line_aggregates.h"

namespace vemo {

namespace {

// A function of the values in brackets, or of the lines above where there are none.
class ValuesToken : public Function {
public:
    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const final {
        std::vector<Value> all = values.empty() ? blockAbove(context) : values;
        return all.empty() ? std::nullopt : of(std::move(all), context);
    }
    bool takesSeveral() const final { return true; }
    bool isWord() const final { return true; }

private:
    virtual std::optional<Value> of(std::vector<Value> values, Context& context) const = 0;
};

// In rising order, each told in its own unit; nothing when two can't be compared.
std::optional<std::vector<Value>> sorted(const std::vector<Value>& values, const Reduction& reduction,
                                         Context& context) {
    std::vector<Value> result;
    for (const Value& value : values) {
        auto place = result.begin();
        for (; place != result.end(); ++place) {
            const auto difference = reduction.apply(u"-", value, *place, context);
            const auto number = difference ? difference->decimal() : std::nullopt;
            if (!number || number->notANumber()) return std::nullopt;
            if (number->isNegative()) break;
        }
        result.insert(place, value);
    }
    return result;
}

class ExtremeToken : public ValuesToken {
public:
    ExtremeToken(const Reduction& reduction, bool greatest) : reduction_(reduction), greatest_(greatest) {}

private:
    std::optional<Value> of(std::vector<Value> values, Context& context) const override {
        std::optional<Value> best = values.front();
        for (std::size_t i = 1; best && i < values.size(); ++i) {
            const auto pair = sorted({*best, values[i]}, reduction_, context);
            if (!pair) return std::nullopt;
            best = greatest_ ? pair->back() : pair->front();
        }
        return best;
    }

    const Reduction& reduction_;
    bool greatest_;
};

class MedianToken : public ValuesToken {
public:
    explicit MedianToken(const Reduction& reduction) : reduction_(reduction) {}

private:
    std::optional<Value> of(std::vector<Value> values, Context& context) const override {
        const auto all = sorted(values, reduction_, context);
        if (!all) return std::nullopt;
        const std::size_t middle = all->size() / 2;
        if (all->size() % 2 == 1) return (*all)[middle];
        const auto sum = reduction_.apply(u"+", (*all)[middle - 1], (*all)[middle], context);
        return sum ? reduction_.apply(u"/", *sum, Value(DecimalNumber::fromInt64(2)), context) : std::nullopt;
    }

    const Reduction& reduction_;
};

class CountToken : public ValuesToken {
    std::optional<Value> of(std::vector<Value> values, Context&) const override {
        return Value(DecimalNumber::fromUInt64(values.size()));
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
