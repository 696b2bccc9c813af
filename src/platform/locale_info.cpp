// SPDX-License-Identifier: MIT
#include "platform/locale_info.h"

#include <unicode/dcfmtsym.h>
#include <unicode/uchar.h>

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

int digitValueBeyondAscii(char16_t character) {
    return u_charDigitValue(character);
}

}  // namespace vemo
