// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "functions/function_manager.h"
#include "units/unit_converter.h"

namespace vemo {

// Marks that belong to the page and not to the calculation become text: those of lists ("1. food $400", "- milk $3",
// "[x] paint"), a dash between words and a number or an amount of money, an arrow that converts nothing. "Total:" alone
// is the aggregate.
class LineMarksEvaluator : public Evaluator {
public:
    LineMarksEvaluator(const FunctionManager& functions, const UnitConverter& unitConverter)
        : functions_(functions), unitConverter_(unitConverter) {}
    std::u16string_view name() const override { return u"LineMarksEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> aggregateOf(const ElementList& elements) const;
    std::size_t listMark(const ElementList& elements) const;
    bool isPriceAt(const ElementList& elements, std::size_t index) const;
    bool isIdleArrow(const ElementList& elements, std::size_t index) const;
    bool isDashBesidePrice(const ElementList& elements, std::size_t index) const;

    const FunctionManager& functions_;
    const UnitConverter& unitConverter_;
};

}  // namespace vemo
