// SPDX-License-Identifier: MIT
#include "vemo/number_formatter.h"

#include <unicode/dcfmtsym.h>
#include <unicode/numberformatter.h>
#include <unicode/plurrule.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>

#include "base/text.h"
#include "decimal/whole_numbers.h"
#include "platform/icu_locale.h"

namespace vemo {

namespace {

constexpr int mostFraction = 999;  // ICU's limit

std::u16string integerText(const DecimalNumber& decimal, unsigned bitsPerDigit, std::u16string_view prefix) {
    const DecimalNumber whole = wholeNumber(decimal);
    return std::u16string(whole.isNegative() ? u"-" : u"").append(prefix) + digitsInBase(whole, bitsPerDigit);
}

}  // namespace

struct VemoEngineNumberFormatter::Formatters {
    icu::Locale locale;
    std::unique_ptr<icu::DecimalFormatSymbols> symbols;
    std::unique_ptr<icu::PluralRules> plurals;
    mutable std::map<std::tuple<bool, int, int>, icu::number::LocalizedNumberFormatter> built;

    const icu::number::LocalizedNumberFormatter& formatter(bool scientific, int maxFraction, int minFraction) const {
        const auto key = std::tuple(scientific, maxFraction, minFraction);
        if (const auto found = built.find(key); found != built.end()) return found->second;
        auto formatter = icu::number::NumberFormatter::withLocale(locale)
                             .precision(icu::number::Precision::minMaxFraction(minFraction, maxFraction))
                             .roundingMode(UNUM_ROUND_HALFUP);
        if (scientific) formatter = formatter.notation(icu::number::Notation::scientific());
        return built.emplace(key, std::move(formatter)).first->second;
    }

    icu::UnicodeString text(const DecimalNumber& number, bool scientific, int maxFraction, int minFraction,
                            UErrorCode& status) const {
        return formatter(scientific, maxFraction, minFraction)
            .formatDecimal(number.toString(), status)
            .toString(status);
    }

    // True where digits take two units: ICU tears those of exponents apart.
    bool hasPairs() const { return symbols->getCodePointZero() > 0xffff; }
    icu::UnicodeString scientificText(const DecimalNumber& number, int maxFraction, int minFraction,
                                      UErrorCode& status) const {
        static const DecimalNumber ten = DecimalNumber::fromInt64(10);
        DecimalNumber mantissa = number.abs();
        int exponent = 0;
        if (!number.isZero()) exponent = static_cast<int>(mantissaDigits(number)) - 1 + number.exponent();
        mantissa = mantissa.multiplyingByPowerOf10(-exponent).round(static_cast<std::int16_t>(maxFraction));
        if (mantissa == ten) {
            mantissa = DecimalNumber::fromInt64(1);
            ++exponent;
        }
        if (number.isNegative()) mantissa = mantissa.negative();
        icu::UnicodeString result = text(mantissa, false, maxFraction, minFraction, status);
        result += symbols->getConstSymbol(icu::DecimalFormatSymbols::kExponentialSymbol);
        if (exponent < 0) result += symbols->getConstSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol);
        return result + text(DecimalNumber::fromInt64(std::abs(exponent)), false, 0, 0, status);
    }

private:
    static std::size_t mantissaDigits(const DecimalNumber& number) {
        const std::string digits = number.abs().multiplyingByPowerOf10(-number.exponent()).toString();
        return digits.size();
    }
};

VemoEngineNumberFormatter::VemoEngineNumberFormatter(std::string_view locale, std::string_view language)
    : formatters_(std::make_unique<Formatters>()) {
    formatters_->locale = icuLocale(locale);
    UErrorCode status = U_ZERO_ERROR;
    formatters_->symbols = std::make_unique<icu::DecimalFormatSymbols>(formatters_->locale, status);
    formatters_->plurals.reset(icu::PluralRules::forLocale(icuLocale(language), status));
}

VemoEngineNumberFormatter::~VemoEngineNumberFormatter() = default;

bool VemoEngineNumberFormatter::isSingular(const DecimalNumber& count) const {
    return formatters_->plurals && formatters_->plurals->select(count.toDouble()) == icu::UnicodeString(u"one");
}

std::optional<std::u16string> VemoEngineNumberFormatter::stringFrom(const DecimalNumber& decimal, NumeralSystem system,
                                                                    int maxFraction, int minFraction) const {
    if (decimal.notANumber()) return std::nullopt;
    switch (system) {
        case NumeralSystem::binary:
            return integerText(decimal, 1, u"0b");
        case NumeralSystem::octal:
            return integerText(decimal, 3, u"0o");
        case NumeralSystem::hexadecimal:
            return integerText(decimal, 4, u"0x");
        case NumeralSystem::decimal:
        case NumeralSystem::scientific:
            break;
    }
    maxFraction = std::clamp(maxFraction, 0, mostFraction);
    minFraction = std::clamp(minFraction, 0, maxFraction);
    UErrorCode status = U_ZERO_ERROR;
    const bool scientific = system == NumeralSystem::scientific;
    const icu::UnicodeString text = scientific && formatters_->hasPairs()
                                        ? formatters_->scientificText(decimal, maxFraction, minFraction, status)
                                        : formatters_->text(decimal, scientific, maxFraction, minFraction, status);
    if (U_FAILURE(status)) return std::nullopt;
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

}  // namespace vemo
