// SPDX-License-Identifier: MIT
#include "scanning/number_parsers.h"

#include "base/text.h"
#include "platform/locale_info.h"

namespace vemo {

namespace {

constexpr std::u16string_view kept = u"+-eE";
constexpr std::int64_t exponentLimit = 32767;

DecimalNumber parse(std::u16string_view text, std::u16string_view separator) {
    std::u16string digits;
    for (const char16_t c : text) {
        const int digit = digitValue(c);
        if (digit >= 0)
            digits += static_cast<char16_t>(u'0' + digit);
        else if (kept.find(c) != kept.npos || separator.find(c) != separator.npos)
            digits += c;
    }
    return DecimalNumber::parse(digits, separator);
}

}  // namespace

// By hand, for nearly every line is searched: the expression takes several times as long.
std::vector<DecimalLiteral> decimalLiterals(std::u16string_view text) {
    std::vector<DecimalLiteral> result;
    const auto isDigit = [&](std::size_t i) { return i < text.size() && digitValue(text[i]) >= 0; };
    for (std::size_t start = 0; start < text.size();) {
        std::size_t first = start;
        if (text[start] == u'+' || text[start] == u'-')
            for (++first; first < text.size() && isWhitespace(text[first]);) ++first;
        std::size_t end = first;
        if (end < text.size() && text[end] == u'.') ++end;
        if (!isDigit(end)) {
            ++start;
            continue;
        }
        std::size_t last = end;  // after the last character that a literal may end with
        for (; end < text.size(); ++end) {
            const char16_t c = text[end];
            if (isDigit(end) || c == u'_')
                last = end + 1;
            else if (c != u'.' && c != u',' && !isWhitespace(c))
                break;
        }
        result.push_back({{start, last - start}, {first, last - first}});
        start = last;
    }
    return result;
}

DecimalParser::DecimalParser(std::string_view locale) {
    LocaleInfo info = LocaleInfo::forIdentifier(locale);
    decimalSeparator_ = std::move(info.decimalSeparator);
    groupsWithPoint_ = info.groupingSeparator == u".";
}

DecimalNumber DecimalParser::decimalNumber(std::u16string_view text) const {
    if (!groupsWithPoint_ && text.find(u'.') != text.npos) return parse(text, u".");
    return parse(text, decimalSeparator_);
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
