// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "matching/domain_matchers.h"

namespace vemo {

// Collects the explicit conversions of a line ("inch in cm") as completion material. Changes nothing.
class QuickTypeExpressionEvaluator : public Evaluator {
public:
    QuickTypeExpressionEvaluator() : Evaluator({Attribute::unit}), matcher_(explicitUnitConversionMatcher()) {}
    std::u16string_view name() const override { return u"QuickTypeExpressionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    FinderMatcher matcher_;
};

}  // namespace vemo
