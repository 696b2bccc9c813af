// SPDX-License-Identifier: MIT
#include "scanning/number_extractors.h"

#include <algorithm>

#include "decimal/whole_numbers.h"
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

// Whole numbers in a base of a power of two: 0, one of some letters, digits. Not within words and numbers: "1920x1080".
struct PrefixedLiteral {
    std::u16string_view letters;
    unsigned bitsPerDigit;
    std::u16string_view system;
    std::int64_t priority;

    bool isDigit(char16_t c) const {
        const char16_t letter = static_cast<char16_t>(c | 0x20);
        const int digit = c >= u'0' && c <= u'9'             ? c - u'0'
                          : letter >= u'a' && letter <= u'f' ? letter - u'a' + 10
                                                             : 16;
        return digit < 1 << bitsPerDigit;
    }

    void extract(std::u16string_view text, std::vector<Extraction>& result) const {
        for (std::size_t i = text.find(u'0'); i != text.npos; i = text.find(u'0', i + 1)) {
            if (i + 2 >= text.size() || letters.find(text[i + 1]) == letters.npos || !isDigit(text[i + 2])) continue;
            if (i > 0 && (isLetter(text[i - 1]) || digitValue(text[i - 1]) >= 0)) continue;
            std::size_t end = i + 3;
            while (end < text.size() && isDigit(text[end])) ++end;
            const std::u16string_view literal = text.substr(i, end - i);
            const DecimalNumber number = numberFromDigits(literal.substr(2), bitsPerDigit);
            result.push_back({{i, end - i}, priority, 0, numberElement(number, system, literal)});
            i = end - 1;
        }
    }
};

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
} wordRows[] = {
    {u"half.variants", number_word::fraction, 1, 2},       {u"third.variants", number_word::fraction, 1, 3},
    {u"quarter.variants", number_word::fraction, 1, 4},    {u"two.variants", number_word::numerator, 2, 1},
    {u"three.variants", number_word::numerator, 3, 1},     {u"and_a_half.variants", number_word::addend, 1, 2},
    {u"one_and_a_half.variants", number_word::mixed, 3, 2}};

// Durations that need no number.
constexpr struct {
    std::u16string_view key, unit;
    std::int64_t numerator, denominator;
} durationRows[] = {{u"quarter_hour.variants", u"minute", 15, 1},
                    {u"half_hour.variants", u"minute", 30, 1},
                    {u"three_quarter_hour.variants", u"minute", 45, 1},
                    {u"hour_and_a_half.variants", u"hour", 3, 2}};

}  // namespace

void DecimalNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    const auto add = [&](TextRange range) {
        const std::u16string_view literal = range.in(text);
        result.push_back({range, priority::usual, 0, numberElement(parser_.decimalNumber(literal), {}, literal)});
    };
    for (const DecimalLiteral& literal : decimalLiterals(text)) {
        if (literal.whole != literal.digits) add(literal.whole);
        add(literal.digits);
        // What is left where a date takes the beginning: "14:30 25 €".
        const std::size_t blank = literal.digits.in(text).find_last_of(u" \u00a0\u202f");
        if (blank != std::u16string_view::npos)
            add({literal.digits.location + blank + 1, literal.digits.length - blank - 1});
    }
}

void ScientificNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    // Possessive repetitions: giving digits back never helps here, and would take cubic time on long literals.
    static const Regex pattern(uR"(\.? \d++ [\s\d\._,]*+ (?<!\s|,|\.) [Ee] [+-]? (?: \d _? )++)", true);
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
    static constexpr PrefixedLiteral hex{u"x", 4, u"hex", priority::prefixedLiteral};
    hex.extract(text, result);
}

void BinaryNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static constexpr PrefixedLiteral binary{u"bB", 1, u"bin", priority::usual};
    binary.extract(text, result);
}

void OctalNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static constexpr PrefixedLiteral octal{u"oO", 3, u"oct", priority::usual};
    octal.extract(text, result);
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
            if (phrase != row.key) phrases_.add(phrase, Value(number).with(row.type, Attribute::type), true);
    }
    for (const auto& row : durationRows) {
        const auto number = DecimalNumber::fromInt64(row.numerator).dividing(DecimalNumber::fromInt64(row.denominator));
        for (const std::u16string& phrase : localizer.variants(row.key, u"Dates"))
            if (phrase != row.key) phrases_.add(phrase, Value(number).with(row.unit, Attribute::unit), true);
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
