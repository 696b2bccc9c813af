// SPDX-License-Identifier: MIT
#include "functions/mathematical_functions.h"

#include <cmath>

#include "units/unit_converter.h"

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
    std::size_t mostValues() const override { return 2; }

private:
    BinaryFormula formula_;
};

class TrigonometricFunction : public FunctionOfNumbers {
public:
    TrigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter)
        : formula_(formula), unitConverter_(unitConverter) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const override {
        if (values.empty() || !values[0].decimal()) return std::nullopt;
        const auto angle = unitConverter_.convert(values[0], u"radian", context);
        const auto radians = angle ? angle->decimal() : std::nullopt;
        return radians ? std::optional(angle->without(Attribute::unit).with(formula_(*radians))) : std::nullopt;
    }
    std::size_t mostValues() const override { return 1; }

private:
    UnaryFormula formula_;
    const UnitConverter& unitConverter_;
};

class InverseTrigonometricFunction : public FunctionOfNumbers {
public:
    InverseTrigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter)
        : formula_(formula), unitConverter_(unitConverter) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const override {
        const auto x = values.empty() ? std::nullopt : values[0].decimal();
        if (!x) return std::nullopt;
        const Value angle = values[0].with(formula_(*x)).with(u"radian", Attribute::unit);
        const auto degrees = unitConverter_.convert(angle, u"degree", context);
        return degrees ? degrees : angle;
    }
    std::size_t mostValues() const override { return 1; }

private:
    UnaryFormula formula_;
    const UnitConverter& unitConverter_;
};

}  // namespace

std::shared_ptr<const Function> unaryFunction(UnaryFormula formula) {
    return std::make_shared<UnaryFunction>(formula);
}

std::shared_ptr<const Function> binaryFunction(BinaryFormula formula) {
    return std::make_shared<BinaryFunction>(formula);
}

std::shared_ptr<const Function> trigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter) {
    return std::make_shared<TrigonometricFunction>(formula, unitConverter);
}

std::shared_ptr<const Function> inverseTrigonometricFunction(UnaryFormula formula, const UnitConverter& unitConverter) {
    return std::make_shared<InverseTrigonometricFunction>(formula, unitConverter);
}

namespace formulas {

DecimalNumber squareRoot(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::sqrt(x.toDouble()));
}
DecimalNumber cubeRoot(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::cbrt(x.toDouble()));
}

DecimalNumber root(const DecimalNumber& degree, const DecimalNumber& x) {
    const double n = degree.toDouble();
    const double value = x.toDouble();
    const bool negativeOdd = value < 0 && std::fmod(std::fabs(n), 2) == 1;
    return DecimalNumber::fromDouble(negativeOdd ? -std::pow(-value, 1 / n) : std::pow(value, 1 / n));
}

DecimalNumber logarithm(const DecimalNumber& base, const DecimalNumber& x) {
    const double divisor = std::log2(base.toDouble());
    if (divisor == 0) return DecimalNumber::notANumberValue();
    return DecimalNumber::fromDouble(std::log2(x.toDouble()) / divisor);
}

DecimalNumber naturalLogarithm(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::log(x.toDouble()));
}
DecimalNumber sine(const DecimalNumber& radians) {
    return DecimalNumber::fromDouble(std::sin(radians.toDouble()));
}
DecimalNumber cosine(const DecimalNumber& radians) {
    return DecimalNumber::fromDouble(std::cos(radians.toDouble()));
}
DecimalNumber tangent(const DecimalNumber& radians) {
    return DecimalNumber::fromDouble(std::tan(radians.toDouble()));
}
DecimalNumber arctangent(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::atan(x.toDouble()));
}
DecimalNumber ceiling(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::ceil(x.toDouble()));
}
DecimalNumber floor(const DecimalNumber& x) {
    return DecimalNumber::fromDouble(std::floor(x.toDouble()));
}

}  // namespace formulas

}  // namespace vemo
