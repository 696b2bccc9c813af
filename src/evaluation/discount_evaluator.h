// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/percentage_words.h"

namespace vemo {

class Localizer;

// A percentage that a word such as "discount" takes off: "$80 with 10% discount", "$80, 10% off", "20% discount $50".
class DiscountEvaluator : public Evaluator {
public:
    DiscountEvaluator(const Localizer& localizer, const PercentageWords& words);
    std::u16string_view name() const override { return u"DiscountEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    // True for words with one for a discount.
    bool isDiscount(const ElementList& elements, std::size_t index) const;
    bool isLedByDiscount(const ElementList& elements, std::size_t percentage) const;
    bool endsWithPart(std::u16string_view text) const;
    bool isIdle(const ElementList& elements, std::size_t op) const;

    std::optional<ElementList> withTenths(const ElementList& elements) const;

    const PercentageWords& words_;
    std::vector<std::u16string> tenthsOff_, parts_;
};

}  // namespace vemo
