// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"

namespace vemo {

// Keeps the result of a line with a label, "rate: $28", for the lines below that calculate with these words.
class LabelledResultEvaluator : public Evaluator {
public:
    std::u16string_view name() const override { return u"LabelledResultEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
