// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "units/unit_converter.h"
#include "units/unit_manager.h"

namespace vemo {

// "$65/hour", "60 km per hour", "$3.50 per 100 g": a quantity told per a unit gets a unit of both. And where a rate
// stands after "at", or before "for", what it is told of: "100 hours at $65/hour", "$5 a day for a year" are products.
class RateEvaluator : public Evaluator {
public:
    RateEvaluator(const UnitManager& units, const UnitConverter& converter)
        : Evaluator({Attribute::unit}), units_(units), converter_(converter) {}
    std::u16string_view name() const override { return u"RateEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const UnitManager& units_;
    const UnitConverter& converter_;
};

}  // namespace vemo
