// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "platform/locale_info.h"
#include "units/unit_converter.h"

namespace vemo {

// Literals whose digits the locale would not join. Beside a currency they are read as they were meant: on a line with
// words, the one of several numbers that touches the currency is the amount ("table 5, 12.80 €"), and cents may be set
// off as in other places ("€1,20" in English). Other such literals get a note that tells how they were read.
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
