// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"

namespace vemo {

// Decides which of the words that may stand for numbers do: "half of 80", "two thirds of 90", but not "cut in half".
// The others are text.
class NumberWordEvaluator : public Evaluator {
public:
    std::u16string_view name() const override { return u"NumberWordEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;
};

}  // namespace vemo
