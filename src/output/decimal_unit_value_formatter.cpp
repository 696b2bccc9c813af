// SPDX-License-Identifier: MIT
#include "output/decimal_unit_value_formatter.h"

#include <algorithm>

#include "base/text.h"
#include "decimal/whole_numbers.h"
#include "output/fraction_text.h"
#include "records/context_parts.h"
#include "units/unit_converter.h"
#include "units/unit_manager.h"

namespace vemo {

namespace {

using NumeralSystem = VemoEngineNumberFormatter::NumeralSystem;

constexpr std::int64_t defaultPrecision = 2;
constexpr std::int64_t mostFraction = 999;
constexpr std::size_t shortLength = 9;  // a text must have fewer characters to be short

NumeralSystem numeralSystem(const Value& value) {
    const auto name = value.string(Attribute::nsystem).value_or(u"");
    if (name == u"hex") return NumeralSystem::hexadecimal;
    if (name == u"oct") return NumeralSystem::octal;
    if (name == u"bin") return NumeralSystem::binary;
    if (name == u"sci") return NumeralSystem::scientific;
    return NumeralSystem::decimal;
}

// So many of those asked for as there can be.
int fractionDigits(std::int64_t digits) {
    return static_cast<int>(std::clamp<std::int64_t>(digits, 0, mostFraction));
}

// The fraction digits of a value that was rounded to more than the usual ones; 0 for others.
std::int64_t roundedTo(const Value& value) {
    std::int64_t digits = 0;
    for (const char16_t c : value.string(Attribute::nsystem).value_or(u"")) {
        if (!isAsciiDigit(c)) return 0;
        digits = digits * 10 + (c - u'0');
    }
    return digits;
}

// A number that the usual two fraction digits would show as 0, though it is none: see `format`.
class TinyNumber {
public:
    explicit TinyNumber(const DecimalNumber& magnitude)
        : fractionDigits_(1 - leadingPower(magnitude)),
          shown_(magnitude.round(static_cast<std::int16_t>(fractionDigits_))) {}

    static bool is(const DecimalNumber& magnitude) {
        static const DecimalNumber least = DecimalNumber::fromParts(0, 1, -15, false);
        return DecimalNumber::compare(magnitude, least).value_or(-1) >= 0;
    }
    int fractionDigits() const { return fractionDigits_; }
    const DecimalNumber& shown() const { return shown_; }
    bool isScientific() const {
        static const DecimalNumber limit = DecimalNumber::fromParts(0, 1, -6, false);
        return DecimalNumber::compare(shown_, limit).value_or(0) < 0;
    }

private:
    // Of a number below 1: 0.0025 has -3.
    static int leadingPower(const DecimalNumber& magnitude) {
        const std::string text = magnitude.toString();
        return 1 - static_cast<int>(text.find_first_not_of("0."));
    }

    int fractionDigits_;  // that two significant digits take
    DecimalNumber shown_;
};

bool isShort(std::u16string_view text) {
    return graphemeCount(text, shortLength) < shortLength;
}

}  // namespace

std::u16string DecimalUnitValueFormatter::displayFormat(const Value& value, const DecimalNumber& shown) const {
    const auto unit = value.string(Attribute::unit);
    if (!unit) return u"%@";
    if (unitCollection_.format(*unit)) return formatOf(*unit, shown);
    // A rate: "$%@/h", "%@ l/100 km".
    const auto rate = unitConverter_.rate(*unit);
    if (!rate) return u"%@";
    const DecimalNumber one = DecimalNumber::fromInt64(1);
    const bool several = rate->count != one;
    const std::u16string lower = formatOf(rate->lower, rate->count);
    const auto count = several ? numberFormatter_.stringFrom(rate->count, NumeralSystem::decimal, 0, 0) : std::nullopt;
    const std::u16string below = formatted(lower, count.value_or(u"")).value_or(std::u16string(rate->lower));
    return formatOf(rate->upper, shown).append(u"/").append(trimmed(below));
}

bool DecimalUnitValueFormatter::isMoney(std::u16string_view unit) const {
    if (unitConverter_.isCurrency(unit)) return true;
    const auto rate = unitConverter_.rate(unit);
    return rate && unitConverter_.isCurrency(rate->upper);
}

std::u16string DecimalUnitValueFormatter::formatOf(std::u16string_view unit, const DecimalNumber& shown) const {
    const std::u16string* format = unitCollection_.format(unit);
    if (!format) return u"%@";
    if (format->find(u"%@") == format->npos) return u"%@ " + *format;
    // "%@ day|%@ days"
    const std::size_t bar = format->find(u'|');
    if (bar == format->npos || bar < format->find(u"%@") || format->find(u"%@", bar) == format->npos) return *format;
    return numberFormatter_.isSingular(shown) ? format->substr(0, bar) : format->substr(bar + 1);
}

std::u16string DecimalUnitValueFormatter::unitName(std::u16string_view unit) const {
    const DecimalNumber one = DecimalNumber::fromInt64(1);
    const std::u16string text = displayFormat(Value(Attribute::unit, unit), one);
    const std::u16string name(trimmed(formatted(text, u"").value_or(u"")));
    return name.empty() ? std::u16string(unit) : name;
}

// "4 ft 11.06 in", where a conversion asked for feet and inches: see `Attribute::precision`.
std::optional<FormattedValue> DecimalUnitValueFormatter::inParts(const Value& value, Context& context) const {
    struct Part {
        std::u16string unit;
        DecimalNumber count;  // so many are one of the unit before
    };
    std::vector<Part> parts{{std::u16string(*value.string(Attribute::unit)), DecimalNumber::fromInt64(1)}};
    std::u16string_view told = *value.string(Attribute::precision);
    while (!told.empty()) {
        const std::size_t blank = told.find(u' ');
        if (blank == told.npos) return std::nullopt;
        const std::u16string_view count = told.substr(blank + 1, told.find(u' ', blank + 1) - blank - 1);
        parts.push_back({std::u16string(told.substr(0, blank)), DecimalNumber::parse(toUtf8(count))});
        if (parts.back().count.notANumber()) return std::nullopt;
        told.remove_prefix(std::min(told.size(), blank + 1 + count.size() + 1));
    }
    DecimalNumber rest = value.decimal()->abs();
    for (const Part& part : parts) rest = rest.multiplying(part.count);
    rest = rest.round(static_cast<std::int16_t>(fractionDigits(context.precision().value_or(defaultPrecision))));
    std::u16string text;
    for (std::size_t i = parts.size(); i-- > 0;) {
        const DecimalNumber larger = i == 0 ? DecimalNumber() : rest.dividing(parts[i].count).integer();
        const DecimalNumber amount = rest.subtracting(larger.multiplying(parts[i].count));
        rest = larger;
        if (amount.isZero() && !(text.empty() && larger.isZero())) continue;
        const auto component = format(Value(amount).with(parts[i].unit, Attribute::unit), context);
        if (!component || !component->regular) return std::nullopt;
        text = text.empty() ? *component->regular : *component->regular + u' ' + text;
    }
    auto result = format(value.without(Attribute::precision), context);
    if (result) result->regular = (value.decimal()->isNegative() ? u"-" : u"") + text;
    return result;
}

std::optional<FormattedValue> DecimalUnitValueFormatter::format(const Value& value, Context& context) const {
    const auto number = value.decimal();
    if (!number || number->notANumber()) return std::nullopt;
    if (value.has(Attribute::precision) && value.has(Attribute::unit))
        if (auto parts = inParts(value, context)) return parts;
    const auto precision = context.precision();
    const std::int64_t digits = std::max(precision.value_or(defaultPrecision), roundedTo(value));
    const int maxFraction = fractionDigits(digits);
    // Recording its absence too lets a later setting recalculate the line.
    if (precision)
        context.addDependencyOn(context_keys::precision);
    else
        ContextParts::addDependencies(context, noPrecision_);

    const DecimalNumber magnitude = number->abs();
    // One and a half dollars are 1.50; what is cut off for display does not count.
    const auto unit = value.string(Attribute::unit);
    const NumeralSystem system = numeralSystem(value);
    DecimalNumber shown = magnitude.round(static_cast<std::int16_t>(maxFraction));
    if (system == NumeralSystem::scientific) shown = magnitude;
    std::optional<std::u16string> text;
    if (value.is(Attribute::nsystem, u"fraction")) text = fractionText(magnitude);
    if (text) {
        shown = magnitude;
    } else if (shown.isZero() && system == NumeralSystem::decimal && !precision && TinyNumber::is(magnitude)) {
        // Two digits of what would be no more than a 0.
        const TinyNumber tiny(magnitude);
        shown = tiny.shown();
        text = tiny.isScientific() ? numberFormatter_.stringFrom(shown, NumeralSystem::scientific, 1, 0)
                                   : numberFormatter_.stringFrom(shown, system, tiny.fractionDigits(), 0);
    } else {
        const bool cents = unit && shown.fractionDigitsCount() == 1 && isMoney(*unit);
        text = numberFormatter_.stringFrom(magnitude, system, maxFraction, cents ? 2 : 0);
    }
    if (!text) return std::nullopt;
    const std::u16string format = displayFormat(value, shown);
    const bool zero = system == NumeralSystem::decimal || system == NumeralSystem::scientific
                          ? shown.isZero()
                          : wholeNumber(magnitude).isZero();
    const std::u16string sign = number->isNegative() && !zero ? u"-" : u"";

    FormattedValue result;
    result.regular = sign + formatted(format, *text).value_or(*text);
    if (isShort(*result.regular)) {
        result.shortText = result.regular;
    } else if (!isShort(*text)) {
        const auto scientific = numberFormatter_.stringFrom(magnitude, NumeralSystem::scientific, 2, 0).value_or(*text);
        const std::u16string candidate = formatted(format, scientific).value_or(scientific);
        result.shortText = sign + (isShort(candidate) ? candidate : scientific);
    } else {
        result.shortText = sign + *text;
    }
    return result;
}

}  // namespace vemo
