// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/places.h"

namespace vemo {

class Localizer;

// "time difference between London and Tokyo", put as the time there less the time here. With a server for places, which
// would have to be asked for words of any kind, the line stays text.
class TimeDifferenceEvaluator : public Evaluator {
public:
    // `places` may be null.
    TimeDifferenceEvaluator(const Localizer& localizer, const Places* places);
    std::u16string_view name() const override { return u"TimeDifferenceEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    // Where a place stands in the line, and its zone.
    struct Place {
        TextRange range;
        std::u16string zone;
    };
    std::optional<Place> placeIn(std::u16string_view line, TextRange range) const;
    std::optional<std::pair<Place, Place>> placesAfter(std::u16string_view line, std::size_t start) const;

    const Places* places_;
    std::vector<std::u16string> beginnings_, links_;
    std::u16string firstUnits_;  // of all beginnings
};

}  // namespace vemo
