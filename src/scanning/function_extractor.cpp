// SPDX-License-Identifier: MIT
#include "scanning/function_extractor.h"

#include "records/number_words.h"
#include "scanning/extraction_priorities.h"
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

// "max" among words is one of them: the function stands right before a bracket, or has at most operators beside it.
bool hasItsPlace(std::u16string_view text, TextRange range) {
    if (range.end() < text.size() && text[range.end()] == u'(') return true;
    // "l/min"
    if (range.location > 0 && text[range.location - 1] == u'/') return false;
    constexpr std::u16string_view signs = u"+-*/^=:;,\u00d7\u00f7\u2212";
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    if (!before.empty() && before.back() != u'(' && signs.find(before.back()) == signs.npos) return false;
    const std::u16string_view behind = trimmed(text.substr(range.end()));
    return behind.empty() || behind.front() == u')' || behind.front() == u'"' ||
           (behind.front() != u'=' && behind.front() != u':' && signs.find(behind.front()) != signs.npos);
}

}  // namespace

void FunctionExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (const auto& match : functions_.phraseDetector().detect(text)) {
        const Function* function = functions_.function(match.object);
        const bool word = function && function->isWord();
        if (word && !hasItsPlace(text, match.range)) continue;
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
        if (endsInDigit) numbersIn(text, {end, text.size() - end}, context, result);
        if (!function || !function->takesSeveral()) continue;
        std::size_t opening = end;
        while (function->takesSigns() && opening < text.size() && isWhitespace(text[opening])) ++opening;
        if (opening < text.size() && text[opening] == u'(') separators(text, opening, context, result);
    }
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
