// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "units/unit_converter.h"

namespace vemo {

// "1/2 cup" is one amount, and a fraction before "of" multiplies: "2/3 of 90".
class FractionEvaluator : public Evaluator {
public:
    explicit FractionEvaluator(const UnitConverter& unitConverter)
        : Evaluator({Attribute::operation}), unitConverter_(unitConverter) {}
    std::u16string_view name() const override { return u"FractionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const UnitConverter& unitConverter_;
};

}  // namespace vemo
