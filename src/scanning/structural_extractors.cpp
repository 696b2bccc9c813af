// SPDX-License-Identifier: MIT
#include "scanning/structural_extractors.h"

#include <algorithm>

#include "engine/context_map.h"
#include "evaluation/operator_collection.h"
#include "scanning/localizer.h"
#include "scanning/string_extractor.h"

namespace vemo {

constexpr StructuralPattern headerPattern{u"HeaderExtractor", u"\\s*\\#.*", u"#", false, RunType::header, 1000};
constexpr StructuralPattern labelPattern{u"LabelExtractor", u".*:", u":", true, RunType::label, 20};
constexpr StructuralPattern quotedCommentPattern{u"QuotedCommentExtractor", u"\"[^\"]*\"", u"\"", true,
                                                 RunType::comment, 1000};
constexpr StructuralPattern slashCommentPattern{u"SlashCommentExtractor", u"//.*", u"//", false, RunType::comment,
                                                1000};

StructuralExtractor::StructuralExtractor(const StructuralPattern& pattern)
    : pattern_(pattern), regex_(pattern.pattern, true) {}

void StructuralExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    const std::size_t last = text.rfind(pattern_.needed);
    if (last == text.npos) return;
    std::u16string_view searched = text;
    if (pattern_.endsWithNeeded) searched = searched.substr(0, last + pattern_.needed.size());
    StringExtractor::extract(searched, regex_, pattern_.priority, [&](std::u16string_view token) {
        return makeElement({}, AttributedText(token, pattern_.type));
    }, result);
}

void ParenthesesExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Value opening(Attribute::parenthesis, u"(");
    static const Value closing(Attribute::parenthesis, u")");
    for (std::size_t i = text.find_first_of(u"()"); i != text.npos; i = text.find_first_of(u"()", i + 1)) {
        const std::u16string_view bracket = std::u16string_view(text).substr(i, 1);
        result.push_back({{i, 1}, 0, 0,
                          makeElement(bracket == u"(" ? opening : closing,
                                      AttributedText(bracket, RunType::parenthesis))});
    }
}

AssignmentExtractor::AssignmentExtractor(const Localizer& localizer, StringRangeDetector& stringRangeDetector,
                                         const OperatorCollection& operators)
    : stringRangeDetector_(stringRangeDetector), operators_(operators), phraseDetector_(stringRangeDetector) {
    for (const std::u16string& phrase : localizer.variants(u"assignment.variants", u"Operations"))
        phraseDetector_.add(phrase, true, true);
}

void AssignmentExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Value assignment(Attribute::assignment, DecimalNumber::fromInt64(1));
    const auto add = [&](TextRange range) {
        result.push_back({range, 0, 0, makeElement(assignment, AttributedText(range.in(text), RunType::operatorWord))});
    };
    const auto matches = phraseDetector_.detect(text);
    for (const auto& match : matches) add(match.range);
    // "+=" is one word; its parts are told by the symbol it begins with.
    for (const TextRange& word : stringRangeDetector_.wordRanges(text)) {
        for (std::size_t sign = 1; sign < word.length; ++sign) {
            const std::u16string_view symbol = word.in(text).substr(0, sign);
            if (phraseDetector_.find(word.in(text).substr(sign)) && operators_.isSymbol(symbol))
                add({word.location + sign, word.length - sign});
        }
    }
}

void VariablesExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    if (context.longestVariableName() == 0) return;
    const std::u16string lower = lowercased(text);
    if (lower.size() != text.size()) return;  // a character whose lower case is longer: no name has one
    const std::vector<TextRange>& words = stringRangeDetector_.wordRanges(text);
    for (std::size_t i = 0; i < words.size();) {
        std::size_t used = 1;
        const std::size_t start = words[i].location;
        if (context.mayNameVariable(lower[start])) {
            for (std::size_t count = std::min(words.size() - i, PhraseDetector<bool>::maxWordsLookup); count > 0; --count) {
                const TextRange range{start, words[i + count - 1].end() - start};
                if (range.length > context.longestVariableName()) continue;
                const std::u16string_view name = range.in(lower);
                const Value* value = context.getVariable(name);
                if (!value) continue;
                used = count;
                const bool* hidden = context.get<bool>(std::u16string(context_keys::hiddenVariable).append(name));
                if (hidden && *hidden) break;
                result.push_back({range, 0, 10, makeElement(*value, AttributedText(range.in(text), RunType::variable))});
                context.addDependencyOn(variableKey(name), *value);
                break;
            }
        }
        i += used;
    }
}

}  // namespace vemo
