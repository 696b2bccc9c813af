// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo {

// How a locale writes numbers.
struct LocaleInfo {
    std::string identifier;
    std::u16string decimalSeparator;
    std::u16string groupingSeparator;
    std::u16string exponentSign;  // between mantissa and exponent: "E", "×10^"

    // An ICU or POSIX identifier ("de_DE", "de-DE.UTF-8"). Unknown ones follow the root locale.
    static LocaleInfo forIdentifier(std::string_view identifier);
};

// The ISO 4217 code of the money that the region of an identifier has; empty where it names no region.
std::u16string currencyOfLocale(std::string_view identifier);

// Value 0 to 9 of a decimal digit of any script, -1 for other characters. Asked for every character of a line.
int digitValueBeyondAscii(char16_t character);
inline int digitValue(char16_t character) {
    if (character >= 0x80) return digitValueBeyondAscii(character);
    return character >= u'0' && character <= u'9' ? character - u'0' : -1;
}
inline bool isDigitAt(std::u16string_view text, std::size_t place) {
    return place < text.size() && digitValue(text[place]) >= 0;
}

}  // namespace vemo
