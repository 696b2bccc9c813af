// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/element_replacement.h"
#include "evaluation/evaluator.h"
#include "units/unit_converter.h"

namespace vemo {

class Localizer;

// "5 items at $12.50": a count with words after it, and what one of them costs. "10 ft by 12 ft" multiplies, too.
class EachPriceEvaluator : public Evaluator {
public:
    EachPriceEvaluator(const Localizer& localizer, const UnitConverter& unitConverter);
    std::u16string_view name() const override { return u"EachPriceEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    bool isCount(const ElementList& elements, std::size_t index, bool described) const;
    bool isAnd(const Element& element) const;
    bool multiplyPrice(const ElementList& elements, std::size_t index, bool following, ElementReplacer& replacer) const;
    bool isPriceOfMeasure(const ElementList& elements, std::size_t unit, std::size_t price) const;
    bool isPricedEach(const ElementList& elements, std::size_t price) const;
    bool isMoney(const ElementList& elements, std::size_t index) const;
    bool isBy(const ElementList& elements, std::size_t word) const;

    const UnitConverter& unitConverter_;
    const std::vector<std::u16string> at_, by_, each_, and_;
};

}  // namespace vemo
