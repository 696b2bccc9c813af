// SPDX-License-Identifier: MIT
#include "scanning/function_extractor.h"

#include "records/number_words.h"
#include "scanning/extraction_priorities.h"
#include "scanning/words/localizer.h"
#include "vemo/context.h"

namespace vemo {

namespace {

constexpr std::size_t groupLength = 3;  // digits

std::size_t digitsBefore(std::u16string_view text, std::size_t end) {
    std::size_t count = 0;
    while (count < end && isDigitAt(text, end - count - 1)) ++count;
    return count;
}

std::size_t digitsFrom(std::u16string_view text, std::size_t start) {
    std::size_t count = 0;
    while (isDigitAt(text, start + count)) ++count;
    return count;
}

// True for a function right before a bracket, or with at most operators beside it: "max" among words is one of them.
bool hasItsPlace(std::u16string_view text, TextRange range) {
    if (range.end() < text.size() && text[range.end()] == u'(') return true;
    // "l/min"
    if (range.location > 0 && text[range.location - 1] == u'/') return false;
    constexpr std::u16string_view signs = u"+-*/^=:;,\u00d7\u00f7\u2212";
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    if (!before.empty() && before.back() != u'(' && signs.find(before.back()) == signs.npos) return false;
    const std::u16string_view after = trimmed(text.substr(range.end()));
    return after.empty() || after.front() == u')' || after.front() == u'"' ||
           (after.front() != u'=' && after.front() != u':' && signs.find(after.front()) != signs.npos);
}

// The length of the word that stands at `start`, as a whole word or as a sign; 0 when none of the words does.
std::size_t wordAt(std::u16string_view text, std::size_t start, const std::vector<std::u16string>& words) {
    for (const std::u16string& word : words) {
        const std::size_t end = start + word.size();
        if (end <= text.size() && lowercased(text.substr(start, word.size())) == word &&
            (end == text.size() || !isLetter(text[end]) || !isLetter(word.back())))
            return word.size();
    }
    return 0;
}

std::size_t afterBlanks(std::u16string_view text, std::size_t i) {
    while (i < text.size() && isWhitespace(text[i])) ++i;
    return i;
}

}  // namespace

FunctionExtractor::FunctionExtractor(const FunctionManager& functions, const UnitManager& units,
                                     const Localizer& localizer, LocaleInfo locale,
                                     std::vector<std::shared_ptr<const Extractor>> numbers)
    : functions_(functions),
      units_(units),
      locale_(std::move(locale)),
      ofWords_(localizer.variants(u"list_of.variants", u"Operations")),
      andWords_(localizer.variants(u"list_and.variants", u"Operations")),
      numbers_(std::move(numbers)) {}

void FunctionExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    const auto matches = functions_.phraseDetector().detect(text);
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const auto& match = matches[i];
        const Function* function = functions_.function(match.object);
        const bool word = function && function->isWord();
        std::vector<TextRange> list;
        const bool hasList =
            function && function->takesSeveral() && listAfter(text, match.range.end(), word, context, list);
        if (word && !hasList && !hasItsPlace(text, match.range)) continue;
        const std::u16string_view name = match.range.in(text);
        const bool endsInDigit = isDigitAt(text, match.range.end() - 1);
        // A name that is a unit's or a multiplier's too ("min", a script's "gross") is that after a number only.
        const std::size_t end = match.range.end();
        const std::u16string_view before = trimmed(std::u16string_view(text).substr(0, match.range.location));
        if (name.find(u' ') != name.npos && units_.isRateWord(before.substr(before.find_last_of(u' ') + 1))) continue;
        const bool afterNumber = !before.empty() && digitValue(before.back()) >= 0;
        result.push_back(
            {match.range, endsInDigit ? priority::operatorSymbol : priority::usual,
             afterNumber ? 0 : priority::unitOverOperator,
             makeElement(Value(Attribute::function, match.object), AttributedText(name, RunType::function))});
        context.addQuickTypeToken(name);
        // Its digits would join a number that follows. No number goes on beyond the next name.
        if (endsInDigit) {
            const std::size_t next = i + 1 < matches.size() ? matches[i + 1].range.location : text.size();
            numbersIn(text, {end, next - end}, context, result);
        }
        if (!function || !function->takesSeveral()) continue;
        if (hasList) addList(text, end, list, context, result);
        std::size_t opening = end;
        while (function->takesSigns() && opening < text.size() && isWhitespace(text[opening])) ++opening;
        if (opening < text.size() && text[opening] == u'(') separators(text, opening, context, result);
    }
}

// True for a number, with a sign of money or a bracket before it, and for the name of a value.
bool FunctionExtractor::beginsItem(std::u16string_view text, std::size_t start, const Context& context) const {
    std::size_t i = afterBlanks(text, start);
    while (i < text.size() && i < start + groupLength && digitValue(text[i]) < 0 && !isLetter(text[i])) ++i;
    if (i >= text.size() || text[i] == u',') return false;
    if (digitValue(text[i]) >= 0) return true;
    std::size_t end = i;
    while (end < text.size() && isLetter(text[end])) ++end;
    return end > i && context.getVariable(std::u16string(text.substr(i, end - i))) != nullptr;
}

// Finds the separators of "of 12, 15 and 20" and, right after a name that is not a word first, of "12, 15, 20". False
// for anything else.
bool FunctionExtractor::listAfter(const std::u16string& text, std::size_t end, bool isWord, const Context& context,
                                  std::vector<TextRange>& found) const {
    const std::size_t blank = text.rfind(u' ', end - 1);
    bool led = blank != text.npos && wordAt(text, blank + 1, ofWords_) == end - blank - 1;
    std::size_t i = afterBlanks(text, end);
    if (!led && i > end) {
        const std::size_t length = wordAt(text, i, ofWords_);
        led = length > 0;
        i = afterBlanks(text, i + length);
    }
    if ((!led && (isWord || (i < text.size() && text[i] == u'('))) || !beginsItem(text, i, context)) return false;
    for (std::size_t depth = 0; i < text.size(); ++i) {
        if (text[i] == u'(') ++depth;
        if (text[i] == u')' && depth-- == 0) break;
        const bool mark = text[i] == u';' || (text[i] == u',' && separates(text, i));
        if (depth > 0 || (!mark && !(i > 0 && isWhitespace(text[i])))) continue;
        // ", and 20", " and 20"
        const std::size_t start = i;
        std::size_t next = afterBlanks(text, i + 1);
        const std::size_t length = wordAt(text, next, andWords_);
        next += length;
        if (!mark && length == 0) continue;
        if (!beginsItem(text, next, context)) return false;
        found.push_back({start, next - start});
        i = next - 1;
    }
    return !found.empty();
}

void FunctionExtractor::addList(const std::u16string& text, std::size_t end, const std::vector<TextRange>& separators,
                                Context& context, std::vector<Extraction>& result) const {
    static const Value separator(Attribute::type, number_word::separator);
    std::size_t start = end;
    for (const TextRange& range : separators) {
        numbersIn(text, {start, range.location - start}, context, result);
        result.push_back(
            {range, priority::argumentSeparator, 0, makeElement(separator, AttributedText(range.in(text)))});
        start = range.end();
    }
    numbersIn(text, {start, text.size() - start}, context, result);
}

bool FunctionExtractor::separates(std::u16string_view text, std::size_t comma) const {
    if (locale_.decimalSeparator == u",") return comma + 1 < text.size() && isWhitespace(text[comma + 1]);
    const std::size_t before = digitsBefore(text, comma);
    return digitsFrom(text, comma + 1) != groupLength || before == 0 || before > groupLength;
}

void FunctionExtractor::separators(const std::u16string& text, std::size_t bracket, Context& context,
                                   std::vector<Extraction>& result) const {
    static const Value separator(Attribute::type, number_word::separator);
    std::size_t depth = 0, start = bracket + 1;
    bool any = false;
    for (std::size_t i = bracket; i < text.size(); ++i) {
        if (text[i] == u'(') ++depth;
        if (text[i] == u')' && --depth == 0) {
            if (any) numbersIn(text, {start, i - start}, context, result);
            return;
        }
        if (depth != 1 || !(text[i] == u';' || (text[i] == u',' && separates(text, i)))) continue;
        numbersIn(text, {start, i - start}, context, result);
        result.push_back({{i, 1},
                          priority::argumentSeparator,
                          0,
                          makeElement(separator, AttributedText(std::u16string_view(text).substr(i, 1)))});
        start = i + 1;
        any = true;
    }
}

void FunctionExtractor::numbersIn(const std::u16string& text, TextRange range, Context& context,
                                  std::vector<Extraction>& result) const {
    const std::u16string part(range.in(text));
    const std::size_t before = result.size();
    for (const auto& extractor : numbers_) extractor->extract(part, context, result);
    for (std::size_t i = before; i < result.size(); ++i) result[i].range.location += range.location;
}

}  // namespace vemo
