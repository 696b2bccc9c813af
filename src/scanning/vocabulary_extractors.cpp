// SPDX-License-Identifier: MIT
#include "scanning/vocabulary_extractors.h"

#include <algorithm>

#include "evaluation/operator_collection.h"
#include "platform/locale_info.h"
#include "scanning/extraction_priorities.h"
#include "units/unit_manager.h"
#include "vemo/context.h"

namespace vemo {

namespace {

// A candidate whose value is the id stored under the phrase.
Extraction phraseExtraction(std::u16string_view text, const PhraseMatch<std::u16string>& match, Attribute attribute,
                            RunType type) {
    return {match.range, priority::usual, 0,
            makeElement(Value(attribute, match.object), AttributedText(match.range.in(text), type))};
}

}  // namespace

void OperatorExtractor::prepare() {
    for (const auto& op : operators_.operators()) {
        for (const std::u16string& symbol : op->symbols) {
            symbols_.insert_or_assign(symbol, Value(Attribute::operation, op->id));
            if (symbol.front() < asciiStarts_.size()) asciiStarts_[symbol.front()] = true;
            longestSymbol_ = std::max(longestSymbol_, symbol.size());
        }
    }
}

void OperatorExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (std::size_t i = 0; i < text.size();) {
        std::size_t used = 1;
        if (text[i] < asciiStarts_.size() && !asciiStarts_[text[i]]) {
            ++i;
            continue;
        }
        for (std::size_t length = std::min(longestSymbol_, text.size() - i); length > 0; --length) {
            const auto found = symbols_.find(std::u16string_view(text).substr(i, length));
            if (found == symbols_.end()) continue;
            result.push_back({{i, length},
                              priority::operatorSymbol,
                              0,
                              makeElement(found->second, AttributedText(found->first, RunType::operatorSymbol))});
            context.addQuickTypeToken(found->first);
            used = length;
            break;
        }
        i += used;
    }
    for (const auto& match : operators_.phraseDetector().detect(text)) {
        result.push_back(phraseExtraction(text, match, Attribute::operation, RunType::operatorWord));
        context.addQuickTypeToken(match.range.in(text));
    }
}

void FunctionExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (const auto& match : functions_.detect(text)) {
        result.push_back(phraseExtraction(text, match, Attribute::function, RunType::function));
        context.addQuickTypeToken(match.range.in(text));
    }
}

void UnitExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    for (const auto& match : units_.phraseDetector().detect(text)) {
        if (isWord(text, match.range)) continue;
        result.push_back(phraseExtraction(text, match, Attribute::unit, RunType::unit));
        if (displacesOperator(text, match.range)) result.back().secondaryPriority = priority::unitOverOperator;
        context.addQuickTypeToken(match.range.in(text));
    }
}

// True for a word that is a currency's code only in a conversion, and stands in none.
bool UnitExtractor::isWord(std::u16string_view text, TextRange range) const {
    const std::u16string written(range.in(text));
    const std::u16string lower = lowercased(written);
    const bool capitals =
        std::none_of(written.begin(), written.end(), [](char16_t c) { return c >= u'a' && c <= u'z'; });
    if (capitals || !units_.isForConversionsOnly(lower)) return false;
    const auto isConversion = [&](const PhraseMatch<std::u16string>& match) { return match.object == u"in"; };
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    const std::u16string_view after = trimmed(text.substr(range.end()));
    const auto words = operators_.phraseDetector().detect(before);
    if (!words.empty() && words.back().range.end() == before.size() && isConversion(words.back())) return false;
    if (before.empty() || digitValue(before.back()) < 0) return true;
    const auto next = operators_.phraseDetector().detect(after);
    return next.empty() || next.front().range.location != 0 || !isConversion(next.front());
}

bool UnitExtractor::displacesOperator(std::u16string_view text, TextRange range) const {
    if (!operators_.phraseDetector().find(lowercased(range.in(text)))) return false;
    const std::u16string_view before = trimmed(text.substr(0, range.location));
    if (before.empty() || digitValue(before.back()) < 0) return false;
    const std::u16string_view behind = trimmed(text.substr(range.end()));
    if (behind.empty() || behind.front() == u')' || behind.front() == u'"') return true;
    if (operators_.isSymbol(behind.substr(0, 1))) return true;
    const auto next = operators_.phraseDetector().detect(behind);
    return !next.empty() && next.front().range.location == 0;
}

void ScalesExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (const auto& match : scales_.detect(text))
        result.push_back(phraseExtraction(text, match, Attribute::scale, RunType::unit));
}

void PercentageSymbolExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (std::size_t i = text.find(u'%'); i != text.npos; i = text.find(u'%', i + 1))
        result.push_back({{i, 1},
                          priority::usual,
                          0,
                          makeElement(Value(Attribute::unit, u"percent"), AttributedText(u"%", RunType::unit))});
}

void MultiplyXSymbolExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    for (const TextRange& range : stringRangeDetector_.wordRanges(text)) {
        const std::u16string_view word = range.in(text);
        if (word != u"x" && word != u"X") continue;
        result.push_back({range, priority::multiplicationLetter, 0,
                          makeElement(Value(Attribute::operation, u"*"), AttributedText(word, RunType::operatorWord))});
    }
}

}  // namespace vemo
