// SPDX-License-Identifier: MIT
#include "functions/trigonometric_functions.h"

#include <algorithm>

#include "decimal/decimal_math.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

using Formula = DecimalNumber (*)(const DecimalNumber&);

// How angles are measured.
struct Measure {
    DecimalNumber quarter;  // a right angle
    DecimalNumber least;    // the radian
    Formula formulas[3];    // in the order of `AngleRatio`
};

const Measure& radians() {
    static const Measure measure{mxPi_2(), DecimalNumber::fromInt64(1), {mxSin, mxCos, mxTan}};
    return measure;
}

const Measure& degrees() {
    static const Measure measure{DecimalNumber::fromInt64(90),
                                 DecimalNumber::fromInt64(180).dividing(mxPi()),
                                 {sineOfDegrees, cosineOfDegrees, tangentOfDegrees}};
    return measure;
}

const DecimalNumber& larger(const DecimalNumber& a, const DecimalNumber& b) {
    return DecimalNumber::compare(a, b).value_or(0) < 0 ? b : a;
}

// How many right angles the angle is, modulo 4; nothing when it is no multiple of them, or 0.
std::optional<std::int64_t> rightAngles(const DecimalNumber& angle, const Measure& measure) {
    constexpr int digits = 15;      // to which an angle is known
    constexpr int leastDigits = 6;  // large angles would be anywhere otherwise
    const DecimalNumber count = angle.dividing(measure.quarter).round(0);
    if (count.isZero() || count.notANumber()) return std::nullopt;
    const DecimalNumber distance = angle.subtracting(count.multiplying(measure.quarter)).abs();
    const auto isWithin = [&](const DecimalNumber& limit, int power) {
        return DecimalNumber::compare(distance, limit.multiplyingByPowerOf10(-power)).value_or(1) <= 0;
    };
    if (!isWithin(larger(angle.abs(), measure.least), digits) || !isWithin(measure.least, leastDigits))
        return std::nullopt;
    return mxMod(count, DecimalNumber::fromInt64(4)).toInt64();
}

DecimalNumber ofRightAngles(AngleRatio ratio, std::int64_t count) {
    constexpr std::int64_t sines[] = {0, 1, 0, -1};
    if (ratio == AngleRatio::tangent) return count % 2 == 0 ? DecimalNumber() : DecimalNumber::notANumberValue();
    return DecimalNumber::fromInt64(sines[(count + (ratio == AngleRatio::cosine ? 1 : 0)) % 4]);
}

class TrigonometricFunction : public FunctionOfNumbers {
public:
    TrigonometricFunction(AngleRatio ratio, const UnitConverter& unitConverter)
        : ratio_(ratio), unitConverter_(unitConverter) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const override {
        if (values.empty() || !values[0].decimal()) return std::nullopt;
        // Degrees stay degrees, whose right angle is a number.
        const bool inDegrees = values[0].is(Attribute::unit, u"degree");
        const auto angle = inDegrees ? values[0] : unitConverter_.convert(values[0], u"radian", context);
        const auto amount = angle ? angle->decimal() : std::nullopt;
        if (!amount) return std::nullopt;
        const Measure& measure = inDegrees ? degrees() : radians();
        const auto count = rightAngles(*amount, measure);
        const DecimalNumber result =
            count ? ofRightAngles(ratio_, *count) : measure.formulas[static_cast<std::size_t>(ratio_)](*amount);
        return angle->without(Attribute::unit).with(result);
    }
    std::size_t mostValues() const override { return 1; }

private:
    AngleRatio ratio_;
    const UnitConverter& unitConverter_;
};

class InverseTrigonometricFunction : public FunctionOfNumbers {
public:
    explicit InverseTrigonometricFunction(Formula formula) : formula_(formula) {}

    std::optional<Value> evaluate(const std::vector<Value>& values, Context&) const override {
        const auto x = values.empty() ? std::nullopt : values[0].decimal();
        if (!x) return std::nullopt;
        return values[0].with(formula_(*x)).with(u"degree", Attribute::unit);
    }
    std::size_t mostValues() const override { return 1; }

private:
    Formula formula_;
};

}  // namespace

std::shared_ptr<const Function> trigonometricFunction(AngleRatio ratio, const UnitConverter& unitConverter) {
    return std::make_shared<TrigonometricFunction>(ratio, unitConverter);
}

std::shared_ptr<const Function> inverseTrigonometricFunction(Formula formula) {
    return std::make_shared<InverseTrigonometricFunction>(formula);
}

}  // namespace vemo
