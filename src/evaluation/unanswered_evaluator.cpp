// SPDX-License-Identifier: MIT
#include "evaluation/unanswered_evaluator.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"

namespace vemo {

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
    for (const ElementPointer& element : elements.pointers()) {
        const std::u16string& text = element->text();
        for (std::size_t i = 0; isPlainWords(*element) && i < text.size(); ++i) {
            const bool begins = i == 0 || !isLetter(text[i - 1]) || isCjk(text[i]);
            if (!begins || firstUnits_.find(lowercasedUnit(text[i])) == std::u16string::npos) continue;
            if (line.empty()) line = elements.text();
            const std::u16string_view rest = std::u16string_view(line).substr(location + i);
            for (const std::u16string& words : words_) {
                const bool whole = rest.size() <= words.size() || !isLetter(rest[words.size()]) || isCjk(words.back());
                if (!whole || lowercased(rest.substr(0, words.size())) != words) continue;
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
