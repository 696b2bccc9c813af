// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/percentage_words.h"

namespace vemo {

class Localizer;

// Lines, and what stands in brackets, that begin with what is asked for: "how many cm in 5 inches", "what % of 80 is
// 20", "% change 80 to 100". They are put as "5 inches in cm", and as two values with an operator between them; so is
// "$64 is 20% off what".
class QuestionEvaluator : public Evaluator {
public:
    QuestionEvaluator(const Localizer& localizer, const PercentageWords& percentageWords);
    std::u16string_view name() const override { return u"QuestionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    struct Question {
        std::vector<std::u16string> beginnings, links;
        std::u16string_view operation;
        std::u16string firstUnits = {};  // of its beginnings
    };

    std::optional<ElementList> answered(const ElementList& elements, Context& context) const;
    std::optional<ElementList> askedWhole(const ElementList& elements) const;
    void noteUnanswered(const ElementList& elements, Context& context) const;
    std::u16string_view askedComparison(std::u16string_view words) const;
    std::optional<ElementList> lessThan(const ElementList& elements, std::size_t start) const;
    std::optional<ElementList> askedChange(const ElementList& elements) const;
    std::size_t endOfBeginning(const ElementList& elements, std::size_t start, const Question& question) const;
    std::optional<ElementList> asConversion(const ElementList& elements, std::size_t start, std::size_t end,
                                            const Question& question) const;
    std::optional<ElementList> asOperation(const ElementList& elements, std::size_t start, std::size_t end,
                                           const Question& question, Context& context) const;

    const PercentageWords& percentageWords_;
    std::vector<Question> questions_;
    std::vector<std::u16string> wholeIs_, wholeAsked_, changeTo_, changeAsked_, unanswered_;
    std::u16string firstUnits_;       // of all beginnings
    std::u16string unansweredUnits_;  // of the words that ask for more
};

}  // namespace vemo
