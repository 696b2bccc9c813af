// SPDX-License-Identifier: MIT
#include "scanning/number_extractors.h"

#include <algorithm>

#include "decimal/whole_numbers.h"
#include "records/number_words.h"
#include "scanning/extraction_priorities.h"
#include "scanning/string_extractor.h"
#include "scanning/words/localizer.h"
#include "units/shared_currency_names.h"

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

// Whole numbers in a base of a power of two: 0, one of some letters, digits. None within words and numbers:
// "1920x1080".
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
} numeralSystems[] = {{u"decimal.variants", u"decimal"}, {u"binary.variants", u"bin"},
                      {u"octal.variants", u"oct"},       {u"hex.variants", u"hex"},
                      {u"scientific.variants", u"sci"},  {u"fraction.variants", u"fraction"}};

constexpr struct {
    std::u16string_view key, type;
    std::int64_t numerator, denominator;
} wordRows[] = {
    {u"half.variants", number_word::fraction, 1, 2},        {u"third.variants", number_word::fraction, 1, 3},
    {u"quarter.variants", number_word::fraction, 1, 4},     {u"and_a_half.variants", number_word::addend, 1, 2},
    {u"one_and_a_half.variants", number_word::mixed, 3, 2}, {u"twice.variants", number_word::multiple, 2, 1},
    {u"thrice.variants", number_word::multiple, 3, 1},      {u"squared.variants", number_word::power, 2, 1},
    {u"cubed.variants", number_word::power, 3, 1}};

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
        // What is left of the literal where a date takes its beginning: "14:30 25 €".
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

NumeralRepresentationExtractor::NumeralRepresentationExtractor(const Localizer& localizer, std::string_view locale,
                                                               StringRangeDetector& stringRangeDetector)
    : phrases_(stringRangeDetector),
      ofWords_(localizer.variants(u"percent_of.variants", u"Percent")),
      articles_(localizer.variants(u"article.variants", u"Numbers")) {
    const auto off = localizer.variants(u"percent_off.variants", u"Percent");
    ofWords_.insert(ofWords_.end(), off.begin(), off.end());
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
    for (const SharedCurrencyNames& names : sharedCurrencyNames(localizer, locale)) {
        if (!names.currency.empty()) continue;
        const Value value(Attribute::type, std::u16string(number_word::currency) + u' ' + names.codes);
        for (const std::u16string& word : names.words) phrases_.add(word, value, true);
    }
    // "twenty 20"
    for (const std::u16string& row : localizer.variants(u"counts.variants", u"Numbers")) {
        const std::size_t blank = row.rfind(u' ');
        if (blank == row.npos) continue;
        const Value number(DecimalNumber::parse(toUtf8(std::u16string_view(row).substr(blank + 1))));
        phrases_.add(row.substr(0, blank), number.with(number_word::count, Attribute::type), true);
    }
}

// True before "of", "off" or an article, where alone the word means a fraction; "3 quarters" are units of time.
bool NumeralRepresentationExtractor::isFraction(std::u16string_view text, TextRange range) const {
    constexpr char16_t japaneseOf = u'\u306e';
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    if (!before.empty() && before.back() == japaneseOf) return true;
    const std::u16string_view after = trimmed(text.substr(range.end()));
    const auto begins = [&](const std::u16string& word) {
        return after.size() > word.size() && isWhitespace(after[word.size()]) &&
               lowercased(after.substr(0, word.size())) == word;
    };
    return std::any_of(ofWords_.begin(), ofWords_.end(), begins) ||
           std::any_of(articles_.begin(), articles_.end(), begins);
}

bool NumeralRepresentationExtractor::isBesideDigits(std::u16string_view text, TextRange range) {
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    return !before.empty() && digitValue(before.back()) >= 0;
}

void NumeralRepresentationExtractor::extract(const std::u16string& text, Context&,
                                             std::vector<Extraction>& result) const {
    for (const auto& match : phrases_.detect(text)) {
        const bool word = match.object.has(Attribute::type);
        if (word && match.object.is(Attribute::type, number_word::fraction) && !isFraction(text, match.range)) continue;
        if (word && !match.object.has(Attribute::decimal) && !isBesideDigits(text, match.range)) continue;
        result.push_back(
            {match.range, priority::usual, 0,
             makeElement(match.object, AttributedText(match.range.in(text), word ? RunType::none : RunType::unit))});
    }
}

namespace {

constexpr std::u16string_view kanjiDigits = u"\u3007\u4e00\u4e8c\u4e09\u56db\u4e94\u516d\u4e03\u516b\u4e5d";
constexpr struct {
    char16_t sign;
    std::int64_t value;
} kanjiPowers[] = {{u'\u5341', 10},    {u'\u767e', 100},       {u'\u5343', 1000},
                   {u'\u4e07', 10000}, {u'\u5104', 100000000}, {u'\u5146', 1000000000000}};
constexpr std::int64_t kanjiGroup = 10000;
constexpr std::size_t mostKanji = 16;

std::int64_t kanjiPower(char16_t c) {
    for (const auto& row : kanjiPowers)
        if (row.sign == c) return row.value;
    return 0;
}

bool isKanjiNumeral(char16_t c) {
    return kanjiDigits.find(c) != kanjiDigits.npos || kanjiPower(c) > 0;
}

DecimalNumber kanjiNumber(std::u16string_view text) {
    DecimalNumber total;  // which so many signs may take beyond 64 bits
    std::int64_t group = 0, digit = 0;
    for (const char16_t c : text) {
        const std::int64_t power = kanjiPower(c);
        if (power == 0) {
            digit = digit * 10 + static_cast<std::int64_t>(kanjiDigits.find(c));
        } else if (power < kanjiGroup) {
            group += (digit > 0 ? digit : 1) * power;
            digit = 0;
        } else {
            total = total.adding(DecimalNumber::fromInt64(group + digit).multiplying(DecimalNumber::fromInt64(power)));
            group = digit = 0;
        }
    }
    return total.adding(DecimalNumber::fromInt64(group + digit));
}

}  // namespace

void KanjiNumberExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] < kanjiDigits[0] || !isKanjiNumeral(text[i])) continue;
        const std::size_t start = i;
        while (i < text.size() && isKanjiNumeral(text[i])) ++i;
        // "5千万" is for the words that scale a number, and no number begins with one of those.
        if (start > 0 && (digitValue(text[start - 1]) >= 0 || text[start - 1] == u'.')) continue;
        if (kanjiPower(text[start]) >= kanjiGroup || i - start > mostKanji) continue;
        const TextRange range{start, i - start};
        const DecimalNumber number = kanjiNumber(range.in(text));
        result.push_back(
            {range, priority::usual, priority::unitOverOperator,
             makeElement(Value(number).with(number_word::count, Attribute::type), AttributedText(range.in(text)))});
    }
}

}  // namespace vemo
