// SPDX-License-Identifier: MIT
#include "evaluation/time_zone_evaluator.h"

#include "functions/date_values.h"

namespace vemo {

std::optional<ElementList> TimePrefixedByTimeZoneEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                     const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::timeZone)) return std::nullopt;
    return replacingMatches(elements, matcher_, [&](const Match& match) {
        const Value& zone = elements[match.group(u"timezone")->location].value;
        const Value& time = elements[match.group(u"time")->location].value;
        return movedToTimeZone(time, *zone.timeZone(), context);
    });
}

}  // namespace vemo
