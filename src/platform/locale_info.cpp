// SPDX-License-Identifier: MIT
#include "platform/locale_info.h"

#include <unicode/dcfmtsym.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>

#include "platform/icu_locale.h"

namespace vemo {

namespace {

std::u16string symbol(const icu::DecimalFormatSymbols& symbols, icu::DecimalFormatSymbols::ENumberFormatSymbol which) {
    const icu::UnicodeString text = symbols.getSymbol(which);
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

}  // namespace

LocaleInfo LocaleInfo::forIdentifier(std::string_view identifier) {
    const std::string name(identifier.substr(0, identifier.find('.')));
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icuLocale(name), status);
    return {name, symbol(symbols, icu::DecimalFormatSymbols::kDecimalSeparatorSymbol),
            symbol(symbols, icu::DecimalFormatSymbols::kGroupingSeparatorSymbol),
            symbol(symbols, icu::DecimalFormatSymbols::kExponentialSymbol)};
}

std::u16string currencyOfLocale(std::string_view identifier) {
    constexpr int codeLength = 3;
    char16_t code[codeLength + 1] = {};
    UErrorCode status = U_ZERO_ERROR;
    ucurr_forLocale(icuLocale(identifier).getName(), code, codeLength + 1, &status);
    return U_SUCCESS(status) ? std::u16string(code) : std::u16string();
}

int digitValueBeyondAscii(char16_t character) {
    return u_charDigitValue(character);
}

}  // namespace vemo
