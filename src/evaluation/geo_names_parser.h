// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "evaluation/places.h"
#include "matching/domain_matchers.h"

namespace vemo {

// Makes time zones of the places in "time in Tokyo" and "New York time". Other words stay words: a place stands
// beside a time. Where a server is asked, a place that has no answer yet makes the line an error value; else the places
// are those that are built in.
class GeoNamesParser : public Evaluator {
public:
    // Without `places`, a server is asked.
    explicit GeoNamesParser(const Places* places)
        : Evaluator({Attribute::operation, Attribute::function, Attribute::date}),
          places_(places),
          matcher_(geoNameSequenceMatcher()) {}
    std::u16string_view name() const override { return u"GeoNamesParser"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> withKnownPlaces(const ElementList& elements, Context& context) const;
    std::optional<ElementList> withLookedUpPlaces(const ElementList& elements, Context& context) const;

    const Places* places_;
    FinderMatcher matcher_;
};

}  // namespace vemo
