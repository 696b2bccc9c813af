// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"

namespace vemo {

class Localizer;

// Notes words that ask for more than the values they stand beside, such as "how old" and "monthly payment". It changes
// nothing.
class UnansweredEvaluator : public Evaluator {
public:
    explicit UnansweredEvaluator(const Localizer& localizer);
    std::u16string_view name() const override { return u"UnansweredEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::vector<std::u16string> words_;
    std::u16string firstUnits_;
};

}  // namespace vemo
