// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/structure_evaluators.h"

namespace vemo {

// "EST time": a date-time that knows its zone, told in the zone written before it.
class TimePrefixedByTimeZoneEvaluator : public Evaluator {
public:
    TimePrefixedByTimeZoneEvaluator() : Evaluator({Attribute::timeZone}), matcher_(timePrefixedByTimeZoneMatcher()) {}
    std::u16string_view name() const override { return u"TimePrefixedByTimeZoneEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    FinderMatcher matcher_;
};

// "9am London", "London 9am", "17h30 à l'heure de Pékin": a written time is one of the place beside it. Directly after
// "time", a place is one that the time is told in.
class TimePlacingEvaluator : public Evaluator {
public:
    TimePlacingEvaluator() : Evaluator({Attribute::timeZone}) {}
    std::u16string_view name() const override { return u"TimePlacingEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
