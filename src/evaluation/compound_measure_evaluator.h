// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"

namespace vemo {

// "5 ft 11 in cm": a number after feet, with nothing but an operator after it, is inches, and so on.
class CompoundMeasureEvaluator : public Evaluator {
public:
    CompoundMeasureEvaluator() : Evaluator({Attribute::unit}) {}
    std::u16string_view name() const override { return u"CompoundMeasureEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
