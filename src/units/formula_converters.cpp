// SPDX-License-Identifier: MIT
#include "units/formula_converters.h"

#include <functional>

#include "records/context_map.h"

namespace vemo {

namespace {

using Formula = std::function<std::optional<DecimalNumber>(const DecimalNumber&, Context&)>;

// Applies a formula to amounts of one unit.
class FormulaConverter : public ValueConverter {
public:
    FormulaConverter(std::u16string from, std::u16string to, Formula formula)
        : from_(std::move(from)), to_(std::move(to)), formula_(std::move(formula)) {}

    std::optional<Value> convert(const Value& value, Context& context) const override {
        const auto amount = value.decimal();
        if (!amount || !value.is(Attribute::unit, from_)) return std::nullopt;
        const auto result = formula_(*amount, context);
        if (!result) return std::nullopt;
        return value.with(*result).with(to_, Attribute::unit);
    }

private:
    std::u16string from_;
    std::u16string to_;
    Formula formula_;
};

std::shared_ptr<const ValueConverter> formula(std::u16string from, std::u16string to, Formula formula) {
    return std::make_shared<FormulaConverter>(std::move(from), std::move(to), std::move(formula));
}

DecimalNumber number(std::string_view text) {
    return DecimalNumber::parse(text);
}

std::optional<DecimalNumber> pixelsPerMeter(Context& context) {
    const Value* ppi = context.getVariable(u"ppi");
    const auto amount = ppi ? ppi->decimal() : std::nullopt;
    context.addDependencyOn(variableKey(u"ppi"), std::nullopt, Value());
    return amount ? std::optional(amount->dividing(number("0.0254"))) : std::nullopt;
}

constexpr std::int64_t pixelsOfRem = 16;

// The converters of a unit of that many pixels.
std::shared_ptr<const ValueConverter> pixelsToMeter(std::u16string unit, std::int64_t pixels) {
    return formula(std::move(unit), u"m",
                   [pixels](const auto& amount, Context& context) -> std::optional<DecimalNumber> {
                       const auto density = pixelsPerMeter(context);
                       if (!density) return std::nullopt;
                       return amount.multiplying(DecimalNumber::fromInt64(pixels)).dividing(*density);
                   });
}

std::shared_ptr<const ValueConverter> meterToPixels(std::u16string unit, std::int64_t pixels) {
    return formula(u"m", std::move(unit),
                   [pixels](const auto& amount, Context& context) -> std::optional<DecimalNumber> {
                       const auto density = pixelsPerMeter(context);
                       if (!density) return std::nullopt;
                       return amount.multiplying(*density).dividing(DecimalNumber::fromInt64(pixels));
                   });
}

// What one em is, in pixels where no unit is given; nothing when the variable has no amount or is given in ems, which
// would have no end.
std::optional<Value> emSize(Context& context) {
    const Value* em = context.getVariable(u"em");
    context.addDependencyOn(variableKey(u"em"), std::nullopt, Value());
    if (!em || !em->decimal() || em->is(Attribute::unit, u"em")) return std::nullopt;
    return em->has(Attribute::unit) ? *em : em->with(u"pixel", Attribute::unit);
}

class EmToMeterConverter : public ValueConverter {
public:
    explicit EmToMeterConverter(const UnitConverter& converter) : converter_(converter) {}

    std::optional<Value> convert(const Value& value, Context& context) const override {
        const auto amount = value.decimal();
        if (!amount || !value.is(Attribute::unit, u"em")) return std::nullopt;
        const auto em = emSize(context);
        if (!em) return std::nullopt;
        const Value length = value.with(amount->multiplying(*em->decimal()));
        return converter_.convert(length.with(*em->string(Attribute::unit), Attribute::unit), u"m", context);
    }

private:
    const UnitConverter& converter_;
};

class MoneyConverter : public ValueConverter {
public:
    MoneyConverter(std::u16string currency, bool toUsd, Rates rates)
        : currency_(std::move(currency)), toUsd_(toUsd), rates_(rates) {}

    std::optional<Value> convert(const Value& value, Context& context) const override {
        const auto amount = value.decimal();
        const std::u16string_view from = toUsd_ ? std::u16string_view(currency_) : u"USD";
        if (!amount || !value.is(Attribute::unit, from)) return std::nullopt;
        const DecimalNumber* rate = nullptr;
        if (rates_ == Rates::currency)
            rate = rateIn(context_keys::currencyRates, context_keys::currencyRatesTime, context);
        // Some crypto-currencies are listed among the others.
        if (!rate) rate = rateIn(context_keys::cryptoRates, context_keys::cryptoRatesTime, context);
        if (!rate) return value.with(DecimalNumber::notANumberValue());
        if (toUsd_) return value.with(amount->dividing(*rate)).with(u"USD", Attribute::unit);
        return value.with(amount->multiplying(*rate)).with(currency_, Attribute::unit);
    }

private:
    const DecimalNumber* rateIn(std::u16string_view ratesKey, std::u16string_view timeKey, Context& context) const {
        context.addDependencyOn(timeKey, std::nullopt, Value());
        const auto* rates = context.get<std::shared_ptr<const CurrencyRatesContainer>>(ratesKey);
        if (!rates || !*rates) return nullptr;
        const auto rate = (*rates)->rates.find(currency_);
        return rate == (*rates)->rates.end() ? nullptr : &rate->second;
    }

    std::u16string currency_;
    bool toUsd_;
    Rates rates_;
};

}  // namespace

std::shared_ptr<const ValueConverter> celsiusToKelvinConverter() {
    return formula(u"celsius", u"kelvin", [](const auto& amount, Context&) { return amount.adding(number("273.15")); });
}

std::shared_ptr<const ValueConverter> kelvinToCelsiusConverter() {
    return formula(u"kelvin", u"celsius",
                   [](const auto& amount, Context&) { return amount.subtracting(number("273.15")); });
}

std::shared_ptr<const ValueConverter> fahrenheitToKelvinConverter() {
    return formula(u"fahrenheit", u"kelvin", [](const auto& amount, Context&) {
        return amount.adding(number("459.67")).multiplying(number("5")).dividing(number("9"));
    });
}

std::shared_ptr<const ValueConverter> kelvinToFahrenheitConverter() {
    return formula(u"kelvin", u"fahrenheit", [](const auto& amount, Context&) {
        return amount.multiplying(number("9")).dividing(number("5")).subtracting(number("459.67"));
    });
}

std::shared_ptr<const ValueConverter> pixelToMeterConverter() {
    return pixelsToMeter(u"pixel", 1);
}

std::shared_ptr<const ValueConverter> meterToPixelConverter() {
    return meterToPixels(u"pixel", 1);
}

std::shared_ptr<const ValueConverter> remToMeterConverter() {
    return pixelsToMeter(u"rem", pixelsOfRem);
}

std::shared_ptr<const ValueConverter> meterToRemConverter() {
    return meterToPixels(u"rem", pixelsOfRem);
}

std::shared_ptr<const ValueConverter> emToMeterConverter(const UnitConverter& converter) {
    return std::make_shared<EmToMeterConverter>(converter);
}

std::shared_ptr<const ValueConverter> meterToEmConverter(const UnitConverter& converter) {
    return formula(u"m", u"em", [&converter](const auto& amount, Context& context) -> std::optional<DecimalNumber> {
        const auto em = emSize(context);
        const auto length = em ? converter.convert(*em, u"m", context) : std::nullopt;
        const auto meters = length ? length->decimal() : std::nullopt;
        return meters ? std::optional(amount.dividing(*meters)) : std::nullopt;
    });
}

std::shared_ptr<const ValueConverter> currencyToUsdConverter(std::u16string currencyUnitId, Rates rates) {
    return std::make_shared<MoneyConverter>(std::move(currencyUnitId), true, rates);
}

std::shared_ptr<const ValueConverter> usdToCurrencyConverter(std::u16string currencyUnitId, Rates rates) {
    return std::make_shared<MoneyConverter>(std::move(currencyUnitId), false, rates);
}

}  // namespace vemo
