// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "platform/locale_info.h"
#include "units/unit_converter.h"

namespace vemo {

// Literals of digits that the locale would not join so. Beside an amount's currency they are read as they were meant:
// on a line with words, of several numbers ("table 5, 12.80 €") the one that touches the currency is the amount, and
// cents may be set off as elsewhere ("€1,20" in English). Other such literals get a note that tells the number.
class JoinedDigitsEvaluator : public Evaluator {
public:
    JoinedDigitsEvaluator(const LocaleInfo& locale, const UnitConverter& unitConverter)
        : Evaluator({Attribute::decimal}), locale_(locale), unitConverter_(unitConverter) {}
    std::u16string_view name() const override { return u"JoinedDigitsEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<ElementList> asMeant(const ElementList& elements, std::size_t index) const;

    const LocaleInfo& locale_;
    const UnitConverter& unitConverter_;
};

}  // namespace vemo
