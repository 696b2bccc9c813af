// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/structure_evaluators.h"

namespace vemo {

// "EST time": a date-time that knows its zone, told in the zone written before it.
class TimePrefixedByTimeZoneEvaluator : public Evaluator {
public:
    TimePrefixedByTimeZoneEvaluator() : matcher_(timePrefixedByTimeZoneMatcher()) {}
    std::u16string_view name() const override { return u"TimePrefixedByTimeZoneEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    FinderMatcher matcher_;
};

}  // namespace vemo
