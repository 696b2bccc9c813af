// SPDX-License-Identifier: MIT
#include "scanning/structural_extractors.h"

#include <algorithm>

#include "platform/locale_info.h"
#include "records/context_map.h"
#include "scanning/extraction_priorities.h"
#include "scanning/string_extractor.h"
#include "scanning/words/localizer.h"

namespace vemo {

// A sign before digits after something else is a number's: "bus #38", "#B118".
constexpr StructuralPattern headerPattern{
    u"HeaderExtractor", u"^\\s*\\#.*|\\s*\\#(?![A-Za-z]?\\d).*", u"#", false, RunType::header, priority::comment};
constexpr StructuralPattern labelPattern{u"LabelExtractor", u".*:", u":", true, RunType::label, priority::label};
constexpr StructuralPattern slashCommentPattern{u"SlashCommentExtractor", u"//.*",          u"//", false,
                                                RunType::comment,         priority::comment};

namespace {

// The place after the last colon that is followed by a blank and comes before every clock time; 0 without one.
std::size_t labelEnd(std::u16string_view text) {
    std::size_t end = 0;
    for (std::size_t i = text.find(u':'); i != text.npos; i = text.find(u':', i + 1)) {
        if (i + 1 == text.size()) break;
        if (isWhitespace(text[i + 1])) end = i + 1;
        const bool time = i > 0 && digitValue(text[i - 1]) >= 0 && digitValue(text[i + 1]) >= 0;
        if (time) break;
    }
    return end;
}

}  // namespace

StructuralExtractor::StructuralExtractor(const StructuralPattern& pattern)
    : pattern_(pattern), regex_(pattern.pattern, true) {}

void StructuralExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    // Searches only where a match can be: up to the last of what it needs, or from the first on with the blanks before.
    std::size_t begin = text.find(pattern_.needed);
    if (begin == text.npos) return;
    std::size_t end = text.size();
    if (pattern_.endsWithNeeded) {
        begin = 0;
        end = text.rfind(pattern_.needed) + pattern_.needed.size();
    } else {
        while (begin > 0 && isWhitespace(text[begin - 1])) --begin;
        if (begin > 0) --begin;  // so that the start of the line is not taken to be here
    }
    for (TextRange range : regex_.ranges(std::u16string_view(text).substr(begin, end - begin))) {
        range.location += begin;
        const auto add = [&](TextRange found) {
            result.push_back(
                {found, pattern_.priority, 0, makeElement({}, AttributedText(found.in(text), pattern_.type))});
        };
        // A colon between digits ends no label: "5k in 27:30", "16:9".
        const bool inDigits = pattern_.type == RunType::label && range.length > 1 && range.end() < text.size() &&
                              digitValue(text[range.end() - 2]) >= 0 && digitValue(text[range.end()]) >= 0;
        if (!inDigits) add(range);
        if (pattern_.type != RunType::label) continue;
        // A label may also end before a clock time, whose colon was taken for its own: "Total: 17:00 - 9:15".
        const std::size_t earlier = labelEnd(range.in(text));
        if (earlier > 0 && earlier < range.length) add({range.location, earlier});
    }
}

// True for the brackets of ":(" and ";-)" that stand alone.
static bool isEmoticon(const std::u16string& text, std::size_t bracket) {
    std::size_t eyes = bracket;
    if (eyes > 0 && text[eyes - 1] == u'-') --eyes;
    if (eyes == 0 || (text[eyes - 1] != u':' && text[eyes - 1] != u';')) return false;
    --eyes;
    return (eyes == 0 || isWhitespace(text[eyes - 1])) &&
           (bracket + 1 == text.size() || isWhitespace(text[bracket + 1]));
}

void ParenthesesExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Value opening(Attribute::parenthesis, u"(");
    static const Value closing(Attribute::parenthesis, u")");
    for (std::size_t i = text.find_first_of(u"()"); i != text.npos; i = text.find_first_of(u"()", i + 1)) {
        if (isEmoticon(text, i)) continue;
        const std::u16string_view bracket = std::u16string_view(text).substr(i, 1);
        result.push_back(
            {{i, 1},
             priority::usual,
             0,
             makeElement(bracket == u"(" ? opening : closing, AttributedText(bracket, RunType::parenthesis))});
    }
}

AssignmentExtractor::AssignmentExtractor(const Localizer& localizer, StringRangeDetector& stringRangeDetector)
    : phraseDetector_(stringRangeDetector) {
    for (const std::u16string& phrase : localizer.variants(u"assignment.variants", u"Operations"))
        phraseDetector_.add(phrase, true, true);
}

void AssignmentExtractor::extract(const std::u16string& text, Context&, std::vector<Extraction>& result) const {
    static const Value assignment(Attribute::assignment, DecimalNumber::fromInt64(1));
    for (const auto& match : phraseDetector_.detect(text)) {
        result.push_back({match.range, priority::usual, 0,
                          makeElement(assignment, AttributedText(match.range.in(text), RunType::operatorWord))});
    }
}

void VariablesExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    if (context.longestVariableName() == 0) return;
    // Lowered word by word only where a character changes its length.
    const std::u16string lower = lowercased(text);
    const bool sameLength = lower.size() == text.size();
    std::u16string own;
    const auto lowerIn = [&](TextRange range) {
        return sameLength ? range.in(lower) : std::u16string_view(own = lowercased(range.in(text)));
    };
    const std::vector<TextRange>& words = stringRangeDetector_.wordRanges(text);
    for (std::size_t i = 0; i < words.size();) {
        std::size_t used = 1;
        const std::size_t start = words[i].location;
        if (context.mayNameVariable(lowerIn(words[i]).front())) {
            for (std::size_t count = std::min(words.size() - i, PhraseDetector<bool>::maxWordsLookup); count > 0;
                 --count) {
                const TextRange range{start, words[i + count - 1].end() - start};
                if (range.length > context.longestVariableName()) continue;
                const std::u16string_view name = lowerIn(range);
                const Value* value = context.getVariable(name);
                if (!value) continue;
                used = count;
                const bool* hidden = context.get<bool>(std::u16string(context_keys::hiddenVariable).append(name));
                if (hidden && *hidden) break;
                result.push_back({range, priority::usual, priority::variable,
                                  makeElement(*value, AttributedText(range.in(text), RunType::variable))});
                context.addDependencyOn(variableKey(name), *value);
                break;
            }
        }
        i += used;
    }
}

}  // namespace vemo
