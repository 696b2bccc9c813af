// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"

namespace vemo {

class ElementReplacer;
class Localizer;

// "5 ft 11 in cm": a number after feet, with nothing but an operator after it, is inches, and so on. "in feet and
// inches" has one target of two units.
class CompoundMeasureEvaluator : public Evaluator {
public:
    explicit CompoundMeasureEvaluator(const Localizer& localizer);
    std::u16string_view name() const override { return u"CompoundMeasureEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    bool joinsUnits(const Element& element) const;
    void joinTargets(const ElementList& elements, ElementReplacer& replacer) const;

    const std::vector<std::u16string> andWords_;
};

}  // namespace vemo
