// SPDX-License-Identifier: MIT
#include "vemo/number_formatter.h"

#include <unicode/numberformatter.h>
#include <unicode/plurrule.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "base/text.h"
#include "platform/icu_locale.h"

namespace vemo {

namespace {

constexpr int mostFraction = 999;  // ICU's limit

std::u16string integerText(const DecimalNumber& decimal, unsigned bitsPerDigit, std::u16string_view prefix) {
    auto rest = static_cast<std::uint64_t>(decimal.toInt64());
    std::u16string digits;
    do {
        digits += u"0123456789abcdef"[rest & ((1u << bitsPerDigit) - 1)];
        rest >>= bitsPerDigit;
    } while (rest != 0);
    return std::u16string(prefix).append(digits.rbegin(), digits.rend());
}

}  // namespace

struct VemoEngineNumberFormatter::Formatters {
    icu::Locale locale;
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
};

VemoEngineNumberFormatter::VemoEngineNumberFormatter(std::string_view locale, std::string_view language)
    : formatters_(std::make_unique<Formatters>()) {
    formatters_->locale = icuLocale(locale);
    UErrorCode status = U_ZERO_ERROR;
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
    const icu::UnicodeString text =
        formatters_->formatter(system == NumeralSystem::scientific, maxFraction, minFraction)
            .formatDecimal(decimal.toString(), status)
            .toString(status);
    if (U_FAILURE(status)) return std::nullopt;
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

}  // namespace vemo
