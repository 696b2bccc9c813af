// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "units/unit_converter.h"

namespace vemo {

// Raised digits as powers, "10!" as a factorial on a line without words, and "20 m^2" as an area.
class PowerEvaluator : public Evaluator {
public:
    explicit PowerEvaluator(const UnitConverter& unitConverter)
        : Evaluator({Attribute::type, Attribute::unit}), unitConverter_(unitConverter) {}
    std::u16string_view name() const override { return u"PowerEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::u16string poweredUnit(const ElementList& elements, std::size_t index) const;

    const UnitConverter& unitConverter_;
};

}  // namespace vemo
