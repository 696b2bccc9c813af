// SPDX-License-Identifier: MIT
#include "scanning/number_parsers.h"

#include "platform/text.h"

namespace vemo {

namespace {

constexpr std::u16string_view kept = u"+-eE";
constexpr std::int64_t exponentLimit = 32767;

DecimalNumber parse(std::u16string_view text, std::u16string_view separator) {
    std::u16string digits;
    for (const char16_t c : text) {
        const int digit = digitValue(c);
        if (digit >= 0) digits += static_cast<char16_t>(u'0' + digit);
        else if (kept.find(c) != kept.npos || separator.find(c) != separator.npos) digits += c;
    }
    return DecimalNumber::parse(digits, separator);
}

}  // namespace

DecimalParser::DecimalParser(LocaleInfo locale) : locale_(std::move(locale)) {}

DecimalNumber DecimalParser::decimalNumber(std::u16string_view text) const {
    if (locale_.groupingSeparator != u"." && text.find(u'.') != text.npos) return parse(text, u".");
    return parse(text, locale_.decimalSeparator);
}

std::optional<DecimalNumber> ScientificParser::decimalNumber(std::u16string_view text) const {
    const std::u16string lower = lowercased(text);
    const std::size_t e = lower.find(u'e');
    if (e == lower.npos || lower.find(u'e', e + 1) != lower.npos) return std::nullopt;
    const DecimalNumber mantissa = decimalParser_.decimalNumber(std::u16string_view(lower).substr(0, e));
    const DecimalNumber exponent = decimalParser_.decimalNumber(std::u16string_view(lower).substr(e + 1));
    if (mantissa.notANumber() || exponent.notANumber()) return std::nullopt;
    const std::int64_t power = exponent.toInt64();
    if (power >= exponentLimit || power <= -exponentLimit) return std::nullopt;
    return mantissa.multiplyingByPowerOf10(static_cast<int>(power));
}

}  // namespace vemo
