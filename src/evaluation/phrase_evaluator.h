// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/phrase_pattern.h"

namespace vemo {

class Localizer;

// Calculations that are put into words, such as "how many cm in 5 inches" and "$64 is 20% off what". Each is written
// anew with operators; what is calculated stands in the table of readings, the ways of putting it in the phrase tables.
class PhraseEvaluator : public Evaluator {
public:
    // `log`, which may be empty, is told of patterns that can't be read.
    PhraseEvaluator(const Localizer& localizer, const std::function<void(std::string_view)>& log);
    std::u16string_view name() const override { return u"PhraseEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> calculation(const ElementList& elements, Context& context) const;

    // A slot of the pattern, or what stands beside it: an operator, a bracket, a number or a unit.
    struct Part {
        std::optional<std::size_t> slot;
        Value value;
    };
    struct Phrase {
        PhrasePattern pattern;
        std::vector<Part> reading;  // empty: what the last words ask for is not known
    };

    static std::optional<Phrase> phrase(std::u16string_view pattern, std::u16string_view reading);
    static ElementList rewritten(const PhrasePattern::Line& line, const Phrase& phrase,
                                 const std::vector<ElementRange>& ranges);

    void readTables() const;

    const Localizer& localizer_;
    const std::function<void(std::string_view)>& log_;
    // Made for the first line that has words.
    mutable std::vector<Phrase> phrases_;
    mutable std::vector<PhrasePattern::Filter> filters_;  // of the phrases
};

}  // namespace vemo
