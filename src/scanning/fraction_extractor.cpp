// SPDX-License-Identifier: MIT
#include "scanning/fraction_extractor.h"

#include <algorithm>
#include <iterator>

#include "scanning/extraction_priorities.h"

namespace vemo {

namespace {

constexpr struct {
    char16_t sign;
    std::int8_t numerator, denominator;
} signRows[] = {{u'\u00bc', 1, 4},  {u'\u00bd', 1, 2}, {u'\u00be', 3, 4}, {u'\u2150', 1, 7}, {u'\u2151', 1, 9},
                {u'\u2152', 1, 10}, {u'\u2153', 1, 3}, {u'\u2154', 2, 3}, {u'\u2155', 1, 5}, {u'\u2156', 2, 5},
                {u'\u2157', 3, 5},  {u'\u2158', 4, 5}, {u'\u2159', 1, 6}, {u'\u215a', 5, 6}, {u'\u215b', 1, 8},
                {u'\u215c', 3, 8},  {u'\u215d', 5, 8}, {u'\u215e', 7, 8}};

constexpr std::size_t longestPart = 2;  // digits of a numerator or denominator

// Where the whole number begins that ends there, with the marks that group its digits; `end` without one.
std::size_t wholeStart(std::u16string_view text, std::size_t end) {
    std::size_t start = end;
    for (std::size_t i = end; i-- > 0;) {
        if (isDigitAt(text, i))
            start = i;
        else if (!isWhitespace(text[i]) && text[i] != u',' && text[i] != u'.' && text[i] != u'_')
            break;
    }
    return start;
}

std::int64_t numberOf(std::u16string_view digits) {
    std::int64_t number = 0;
    for (const char16_t c : digits) number = number * 10 + digitValue(c);
    return number;
}

DecimalNumber quotient(std::int64_t numerator, std::int64_t denominator) {
    return DecimalNumber::fromInt64(numerator).dividing(DecimalNumber::fromInt64(denominator));
}

}  // namespace

bool isFractionSign(char16_t c) {
    return std::any_of(std::begin(signRows), std::end(signRows), [c](const auto& row) { return row.sign == c; });
}

void FractionExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'/')
            atStroke(text, i, result);
        else if (text[i] >= signRows[0].sign)
            atSign(text, i, result);
    }
}

void FractionExtractor::atStroke(std::u16string_view text, std::size_t stroke, std::vector<Extraction>& result) const {
    std::size_t start = stroke, end = stroke + 1;
    while (start > 0 && isDigitAt(text, start - 1)) --start;
    while (isDigitAt(text, end)) ++end;
    const std::size_t above = stroke - start, below = end - stroke - 1;
    if (above == 0 || above > longestPart || below == 0 || below > longestPart) return;
    if (start < 2 || !isWhitespace(text[start - 1]) || !isDigitAt(text, start - 2)) return;
    // Part of a date, or of a decimal.
    if (end < text.size() && text[end] == u'/') return;
    if (end < text.size() && (text[end] == u'.' || text[end] == u',') && isDigitAt(text, end + 1)) return;
    const std::int64_t numerator = numberOf(text.substr(start, above));
    const std::int64_t denominator = numberOf(text.substr(stroke + 1, below));
    if (numerator > 0 && numerator < denominator) add(text, start - 1, end, quotient(numerator, denominator), result);
}

void FractionExtractor::atSign(std::u16string_view text, std::size_t sign, std::vector<Extraction>& result) const {
    for (const auto& row : signRows) {
        if (row.sign != text[sign]) continue;
        std::size_t whole = sign;
        if (whole > 0 && isWhitespace(text[whole - 1])) --whole;
        if (whole == 0 || !isDigitAt(text, whole - 1)) whole = sign;
        add(text, whole, sign + 1, quotient(row.numerator, row.denominator), result);
    }
}

// `whole` is the end of the whole number before, if there is one; the fraction goes up to `end`.
void FractionExtractor::add(std::u16string_view text, std::size_t whole, std::size_t end, const DecimalNumber& fraction,
                            std::vector<Extraction>& result) const {
    const std::size_t start = wholeStart(text, whole);
    DecimalNumber number = fraction;
    if (start < whole) {
        if (start > 0 && (isLetter(text[start - 1]) || text[start - 1] == u'/' || text[start - 1] == u':')) return;
        const DecimalNumber before = parser_.decimalNumber(text.substr(start, whole - start));
        if (before.notANumber() || before.round(0) != before) return;
        number = before.adding(fraction);
    }
    const TextRange range{start, end - start};
    result.push_back(
        {range, priority::fraction, 0, makeElement(Value(number), AttributedText(range.in(text), RunType::number))});
}

}  // namespace vemo
