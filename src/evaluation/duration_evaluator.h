// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"

namespace vemo {

// What people write for hours and minutes: "6h 30m", "7h45", "2 h 30", "1:30 h", and in languages that write clock
// times as "1h30" also that one, where it is calculated with or converted.
class DurationEvaluator : public Evaluator {
public:
    DurationEvaluator() : Evaluator({Attribute::date, Attribute::unit}) {}
    std::u16string_view name() const override { return u"DurationEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
