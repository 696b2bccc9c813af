// SPDX-License-Identifier: MIT
#include "evaluation/unanswered_evaluator.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// With the words, whatever their case, and no letter after.
bool beginsWith(std::u16string_view text, std::u16string_view words) {
    const bool whole = text.size() == words.size() ||
                       (text.size() > words.size() && (!isLetter(text[words.size()]) || isCjk(words.back())));
    return whole && std::equal(words.begin(), words.end(), text.begin(),
                               [](char16_t word, char16_t given) { return word == lowercasedUnit(given); });
}

}  // namespace

UnansweredEvaluator::UnansweredEvaluator(const Localizer& localizer)
    : Evaluator({Attribute::decimal, Attribute::date}),
      words_(localizer.variants(u"unanswered.variants", u"Operations")) {
    // The longest first.
    std::stable_sort(words_.begin(), words_.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (const std::u16string& words : words_) firstUnits_ += words.front();
}

std::optional<ElementList> UnansweredEvaluator::evaluate(const ElementList& elements, Context& context,
                                                         const EvaluationContext&) const {
    std::u16string line;  // made when it is asked for
    std::size_t location = 0;
    const std::size_t start = startOfValue(elements);
    for (std::size_t index = 0; index < elements.size(); ++index) {
        const Element& element = elements[index];
        const std::u16string& text = element.text();
        for (std::size_t i = 0; index >= start && isPlainWords(element) && i < text.size(); ++i) {
            const bool begins = i == 0 || !isLetter(text[i - 1]) || isCjk(text[i]);
            if (!begins || firstUnits_.find(lowercasedUnit(text[i])) == std::u16string::npos) continue;
            if (line.empty()) line = elements.text();
            const std::u16string_view rest = std::u16string_view(line).substr(location + i);
            for (const std::u16string& words : words_) {
                if (!beginsWith(rest, words)) continue;
                remarksOf(context).note(NoteKind::unknownWord, {elements.location() + location + i, words.size()},
                                        rest.substr(0, words.size()));
                i += words.size() - 1;
                break;
            }
        }
        location += text.size();
    }
    return std::nullopt;
}

}  // namespace vemo
