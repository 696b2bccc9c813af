// SPDX-License-Identifier: MIT
#include "scanning/number_extractors.h"

#include <algorithm>
#include <cstdlib>

#include "records/number_words.h"
#include "scanning/extraction_priorities.h"
#include "scanning/string_extractor.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

bool hasDigit(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), [](char16_t c) { return digitValue(c) >= 0; });
}

ElementPointer numberElement(const DecimalNumber& number, std::u16string_view system, std::u16string_view text) {
    Value value(number);
    if (!system.empty()) value = value.with(system, Attribute::nsystem);
    return makeElement(std::move(value), AttributedText(text, RunType::number));
}

// The digits after the two characters of a prefix, in base 2 or 8.
DecimalNumber integerLiteral(std::u16string_view text, std::uint64_t base) {
    std::uint64_t value = 0;
    for (const char16_t c : text.substr(2)) value = value * base + static_cast<std::uint64_t>(digitValue(c));
    return DecimalNumber::fromInt64(static_cast<std::int64_t>(value));
}

constexpr struct {
    std::u16string_view key;
    std::u16string_view system;
} numeralSystems[] = {{u"decimal.variants", u"decimal"},
                      {u"binary.variants", u"bin"},
                      {u"octal.variants", u"oct"},
                      {u"hex.variants", u"hex"},
                      {u"scientific.variants", u"sci"}};

constexpr struct {
    std::u16string_view key, type;
    std::int64_t numerator, denominator;
} wordRows[] = {{u"half.variants", number_word::fraction, 1, 2},
                {u"third.variants", number_word::fraction, 1, 3},
                {u"quarter.variants", number_word::fraction, 1, 4},
                {u"two.variants", number_word::numerator, 2, 1},
                {u"three.variants", number_word::numerator, 3, 1}};

}  // namespace

void DecimalNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    const auto add = [&](TextRange range) {
        const std::u16string_view literal = range.in(text);
        result.push_back({range, priority::usual, 0, numberElement(parser_.decimalNumber(literal), {}, literal)});
    };
    for (const DecimalLiteral& literal : decimalLiterals(text)) {
        if (literal.whole != literal.digits) add(literal.whole);
        add(literal.digits);
    }
}

void ScientificNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    // Possessive repetitions: giving digits back never helps here, and would take cubic time on long literals.
    static const Regex pattern(uR"(\.? \d++ [\s\d\._,]*+ (?<!\s|,|\.) [Ee] [+-]? \d+)", true);
    if (text.find_first_of(u"eE") == text.npos || !hasDigit(text)) return;
    StringExtractor::extract(
        text, pattern, priority::prefixedLiteral,
        [&](std::u16string_view literal) {
            const auto number = parser_.decimalNumber(literal);
            return numberElement(number.value_or(DecimalNumber::notANumberValue()), u"sci", literal);
        },
        result);
}

void HexNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Regex pattern(u"0x([0-9a-fA-F]+)", false);
    if (text.find(u"0x") == text.npos) return;
    StringExtractor::extract(
        text, pattern, priority::prefixedLiteral,
        [&](std::u16string_view literal) {
            const double value = std::strtod(toUtf8(literal).c_str(), nullptr);
            return numberElement(DecimalNumber::fromDouble(value), u"hex", literal);
        },
        result);
}

void BinaryNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Regex pattern(u"0b([0-1]+)", true);
    if (text.find_first_of(u"bB") == text.npos) return;
    StringExtractor::extract(
        text, pattern, priority::usual,
        [&](std::u16string_view literal) { return numberElement(integerLiteral(literal, 2), u"bin", literal); },
        result);
}

void OctalNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Regex pattern(u"0o([0-7]+)", true);
    if (text.find_first_of(u"oO") == text.npos) return;
    StringExtractor::extract(
        text, pattern, priority::usual,
        [&](std::u16string_view literal) { return numberElement(integerLiteral(literal, 8), u"oct", literal); },
        result);
}

NumeralRepresentationExtractor::NumeralRepresentationExtractor(const Localizer& localizer,
                                                               StringRangeDetector& stringRangeDetector)
    : phrases_(stringRangeDetector) {
    for (const auto& row : numeralSystems) {
        for (const std::u16string& phrase : localizer.variants(row.key, u"Numbers")) {
            if (!phrases_.find(phrase)) phrases_.add(phrase, Value(Attribute::nsystem, row.system), true);
        }
    }
    for (const auto& row : wordRows) {
        const auto number = DecimalNumber::fromInt64(row.numerator).dividing(DecimalNumber::fromInt64(row.denominator));
        for (const std::u16string& phrase : localizer.variants(row.key, u"Numbers"))
            phrases_.add(phrase, Value(number).with(row.type, Attribute::type), true);
    }
}

void NumeralRepresentationExtractor::extract(const std::u16string& text, Context&,
                                             std::vector<Extraction>& result) const {
    for (const auto& match : phrases_.detect(text)) {
        const RunType type = match.object.has(Attribute::type) ? RunType::none : RunType::unit;
        result.push_back(
            {match.range, priority::usual, 0, makeElement(match.object, AttributedText(match.range.in(text), type))});
    }
}

}  // namespace vemo
