// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "evaluation/evaluator.h"
#include "evaluation/operation_calculator.h"
#include "evaluation/percentage_words.h"
#include "units/unit_converter.h"

namespace vemo {

// "Dinner at 7-Eleven for 2 $54": where every amount of money stands apart from the operators of a line with words,
// these belong to the description. They become text, and so do functions without an argument and brackets with words.
class PricedDescriptionEvaluator : public Evaluator {
public:
    // `takesNoValues` tells functions such as "today", which stand for themselves.
    PricedDescriptionEvaluator(const UnitConverter& unitConverter,
                               std::function<bool(std::u16string_view function)> takesNoValues)
        : Evaluator({Attribute::unit}), unitConverter_(unitConverter), takesNoValues_(std::move(takesNoValues)) {}
    std::u16string_view name() const override { return u"PricedDescriptionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const UnitConverter& unitConverter_;
    const std::function<bool(std::u16string_view)> takesNoValues_;
};

// "iPhone 15 $799": of values that nothing joins, the amount of money stands for all; several are added.
class PriceEvaluator : public Evaluator {
public:
    PriceEvaluator(const UnitConverter& unitConverter, const OperationCalculator& operationCalculator,
                   const PercentageWords& percentageWords)
        : Evaluator({Attribute::unit}),
          unitConverter_(unitConverter),
          operationCalculator_(operationCalculator),
          percentageWords_(percentageWords) {}
    std::u16string_view name() const override { return u"PriceEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const UnitConverter& unitConverter_;
    const OperationCalculator& operationCalculator_;
    const PercentageWords& percentageWords_;
};

// True for the sign, code or name of a currency, alone or with its amount.
bool isCurrency(const Element& element, const UnitConverter& unitConverter);
inline bool isCurrencyAt(const ElementList& elements, std::size_t index, const UnitConverter& unitConverter) {
    return index < elements.size() && isCurrency(elements[index], unitConverter);
}

// True for a currency's sign, such as "$", that touches the number after it and none before.
bool isSignOfNextNumber(const ElementList& elements, std::size_t index, const UnitConverter& unitConverter);

// The place of the number that belongs to a currency's code or name before it, as in "1 night JPY 3500"; the place
// itself for what is no such code, or where a number stands right before it, too.
std::size_t numberOfCode(const ElementList& elements, std::size_t index, const UnitConverter& unitConverter);

}  // namespace vemo
