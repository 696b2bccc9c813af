// SPDX-License-Identifier: MIT
#include "scanning/locale_numerals.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "base/text.h"

namespace vemo {

namespace {

constexpr char16_t filler = u'_';  // is skipped between the digits of a literal
constexpr char16_t apostrophe = u'\u2019';
constexpr std::size_t digitsOfAGroup = 3;

// True after a digit, with the filler of its second unit where it had two.
bool isAfterDigit(std::u16string_view text, std::size_t at) {
    return at > 0 && (isDigitAt(text, at - 1) || text[at - 1] == filler);
}

// The separator as a sign to be folded; 0 for one that literals may hold already.
char16_t toFold(std::u16string_view separator) {
    if (separator.size() != 1 || isWhitespace(separator[0])) return 0;
    return separator == u"." || separator == u"," ? u'\0' : separator[0];
}

bool isDirectionMark(char16_t c) {
    return c == u'\u200e' || c == u'\u200f' || c == u'\u061c';
}

// Digits of other scripts.
void foldDigits(std::u16string& text) {
    for (char16_t& c : text)
        if (const int digit = c < 0x80 ? -1 : digitValue(c); digit >= 0) c = static_cast<char16_t>(u'0' + digit);
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (!U16_IS_LEAD(text[i]) || !U16_IS_TRAIL(text[i + 1])) continue;
        const int digit = u_charDigitValue(U16_GET_SUPPLEMENTARY(text[i], text[i + 1]));
        if (digit < 0) continue;
        text[i] = static_cast<char16_t>(u'0' + digit);
        text[++i] = filler;
    }
}

// The place after the exponent's sign, where its digits begin; `at` when there are none. `negative` tells whether the
// sign is a minus.
std::size_t exponentDigits(std::u16string_view text, std::size_t at, bool& negative) {
    const auto skipMarks = [&] {
        while (at < text.size() && isDirectionMark(text[at])) ++at;
    };
    const std::size_t start = at;
    skipMarks();
    negative = at < text.size() && (text[at] == u'-' || text[at] == u'\u2212');
    if (negative || (at < text.size() && text[at] == u'+')) ++at;
    skipMarks();
    return isDigitAt(text, at) ? at : start;
}

}  // namespace

LocaleNumerals::LocaleNumerals(const LocaleInfo& locale)
    : locale_(locale),
      decimal_(toFold(locale.decimalSeparator)),
      grouping_(toFold(locale.groupingSeparator)),
      apostrophes_(grouping_ == apostrophe || grouping_ == u'\'') {
    foldDigits(locale_.exponentSign);  // "×۱۰^"
    if (decimal_ != 0) locale_.decimalSeparator = u".";
    if (grouping_ != 0) locale_.groupingSeparator = filler;
}

std::u16string LocaleNumerals::folded(std::u16string_view line) const {
    std::u16string text = foldedWidth(line);
    const bool plain = std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
    if (plain && !apostrophes_) return text;
    foldDigits(text);
    foldSeparators(text);
    foldExponents(text);
    return text;
}

bool LocaleNumerals::isGrouping(std::u16string_view text, std::size_t at) const {
    if (!apostrophes_) return grouping_ != 0 && text[at] == grouping_;
    if (text[at] != apostrophe && text[at] != u'\'') return false;
    // Otherwise it is a sign of feet or minutes.
    std::size_t end = at + 1;
    while (isDigitAt(text, end)) ++end;
    return end - at - 1 == digitsOfAGroup;
}

void LocaleNumerals::foldSeparators(std::u16string& text) const {
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (!isAfterDigit(text, i) || !isDigitAt(text, i + 1)) continue;
        if (decimal_ != 0 && text[i] == decimal_)
            text[i] = u'.';
        else if (isGrouping(text, i))
            text[i] = filler;
    }
}

// True where an exponent's mark stands. If the mark looks like a product, as in "1,2×10^−7", only one digit may stand
// before the point: others are calculated.
bool LocaleNumerals::isExponent(std::u16string_view text, std::size_t at, std::u16string_view mark) const {
    if (mark.empty() || text.substr(at, mark.size()) != mark) return false;
    if (mark.back() != u'^') return true;
    std::size_t start = at, digits = 0;
    for (; start > 0 && (isAfterDigit(text, start) || text[start - 1] == u'.' || text[start - 1] == u','); --start) {
        if (isDigitAt(text, start - 1)) ++digits;
        if (text[start - 1] == u'.' || text[start - 1] == u',') digits = 0;
    }
    const std::u16string_view before = trimmed(text.substr(0, start));
    return digits == 1 && (before.empty() || before.back() != u'^');
}

void LocaleNumerals::foldExponents(std::u16string& text) const {
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (!isAfterDigit(text, i)) continue;
        const bool usual = text[i] == u'e' || text[i] == u'E';
        const bool own = isExponent(text, i, locale_.exponentSign);
        if (!usual && !own) continue;
        bool negative = false;
        const std::size_t signs = i + (own ? locale_.exponentSign.size() : 1);
        const std::size_t end = exponentDigits(text, signs, negative);
        if (end == signs && !isDigitAt(text, end)) continue;
        std::fill(text.begin() + static_cast<std::ptrdiff_t>(i), text.begin() + static_cast<std::ptrdiff_t>(end),
                  filler);
        text[end - (negative ? 2 : 1)] = u'e';
        if (negative) text[end - 1] = u'-';
        i = end;
    }
}

}  // namespace vemo
