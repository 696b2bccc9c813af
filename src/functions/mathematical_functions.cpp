// SPDX-License-Identifier: MIT
#include "functions/mathematical_functions.h"

#include "base/text.h"
#include "decimal/decimal_math.h"
#include "decimal/whole_numbers.h"

namespace vemo {

namespace {

class UnaryFunction : public FunctionOfNumbers {
public:
    explicit UnaryFunction(UnaryFormula formula) : formula_(formula) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        const auto x = values.empty() ? std::nullopt : values[0].decimal();
        return x ? std::optional(values[0].with(formula_(*x))) : std::nullopt;
    }
    std::size_t mostValues() const override { return 1; }

private:
    UnaryFormula formula_;
};

class BinaryFunction : public FunctionOfNumbers {
public:
    explicit BinaryFunction(BinaryFormula formula) : formula_(formula) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        if (values.size() < 2 || !values[0].decimal() || !values[1].decimal()) return std::nullopt;
        return values[0].with(formula_(*values[0].decimal(), *values[1].decimal()));
    }
    bool takesSeveral() const override { return true; }
    std::size_t mostValues() const override { return 2; }

private:
    BinaryFormula formula_;
};

// "round 2.5", "round(3.567, 1)".
class RoundFunction : public FunctionOfNumbers {
public:
    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        const auto x = values.empty() ? std::nullopt : values[0].decimal();
        if (!x) return std::nullopt;
        if (values.size() < 2) return values[0].with(x->round(0));
        constexpr std::int64_t mostDigits = 40;
        const auto digits = values[1].decimal();
        if (!digits || !mxIsInteger(*digits) || digits->abs().toInt64() > mostDigits)
            return Value(DecimalNumber::notANumberValue());
        return showingDigits(values[0].with(x->round(static_cast<std::int16_t>(digits->toInt64()))), digits->toInt64());
    }
    bool takesSeveral() const override { return true; }
    std::size_t mostValues() const override { return 2; }
};

}  // namespace

Value showingDigits(const Value& value, std::int64_t digits) {
    constexpr std::int64_t shownAnyway = 2;
    if (digits <= shownAnyway || value.has(Attribute::nsystem)) return value;
    return value.with(toUtf16(std::to_string(digits)), Attribute::nsystem);
}

std::shared_ptr<const Function> unaryFunction(UnaryFormula formula) {
    return std::make_shared<UnaryFunction>(formula);
}

std::shared_ptr<const Function> binaryFunction(BinaryFormula formula) {
    return std::make_shared<BinaryFunction>(formula);
}

std::shared_ptr<const Function> roundFunction() {
    return std::make_shared<RoundFunction>();
}

namespace {

// The whole number that this is but for rounding, else the rounded one. A tiny number is not 0.
DecimalNumber wholeOr(const DecimalNumber& x, RoundingMode mode) {
    const auto whole = nearlyWhole(x);
    return whole && !whole->isZero() ? *whole : x.rounding({mode, 0});
}

}  // namespace

namespace formulas {

DecimalNumber squareRoot(const DecimalNumber& x) {
    return x.isZero() ? x : mxSqrt(x);
}

DecimalNumber cubeRoot(const DecimalNumber& x) {
    return root(DecimalNumber::fromInt64(3), x);
}

DecimalNumber root(const DecimalNumber& degree, const DecimalNumber& x) {
    if (x.isZero() && !degree.isZero() && !degree.isNegative()) return x;
    const bool odd = mxMod(degree.abs(), DecimalNumber::fromInt64(2)) == DecimalNumber::fromInt64(1);
    return x.isNegative() && odd ? mxNthRoot(x.negative(), degree).negative() : mxNthRoot(x, degree);
}

DecimalNumber logarithm(const DecimalNumber& base, const DecimalNumber& x) {
    return mxNthLog(x, base);
}

DecimalNumber ceiling(const DecimalNumber& x) {
    return wholeOr(x, RoundingMode::up);
}

DecimalNumber floor(const DecimalNumber& x) {
    return wholeOr(x, RoundingMode::down);
}

}  // namespace formulas

}  // namespace vemo
