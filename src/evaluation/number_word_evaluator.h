// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "units/scale_manager.h"

namespace vemo {

class Localizer;

// Decides which of the words that may stand for numbers do so: "half of 80", "two thirds of 90", "two hundred dollars",
// "twice 15", "a mile in km", but not "cut in half", "one of us", "$5 a day". The others become text.
class NumberWordEvaluator : public Evaluator {
public:
    NumberWordEvaluator(const Localizer& localizer, const ScaleManager& scales);
    std::u16string_view name() const override { return u"NumberWordEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    struct Count {
        DecimalNumber number;
        std::size_t end = 0;  // after its last element; 0 for none
    };

    Count countAt(const ElementList& elements, std::size_t start) const;
    bool isLink(const Element& element) const;
    bool isOne(const Element& element, bool linked) const;
    bool endsCount(const ElementList& elements, std::size_t index) const;
    std::size_t articleAt(const ElementList& elements, std::size_t index) const;
    bool isMeasured(const ElementList& elements, std::size_t index) const;
    const Scale* scaleAt(const ElementList& elements, std::size_t index) const;
    std::optional<ElementList> withParts(const ElementList& elements) const;
    std::optional<ElementList> withMillions(const ElementList& elements) const;
    std::optional<ElementList> withArticles(const ElementList& elements) const;
    std::optional<ElementList> withWords(const ElementList& elements, Context& context) const;

    const ScaleManager& scales_;
    const std::vector<std::u16string> links_, articles_, ones_;
};

}  // namespace vemo
