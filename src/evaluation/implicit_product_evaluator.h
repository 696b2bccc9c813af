// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "functions/function_manager.h"

namespace vemo {

// Products without a sign: a number right before a name, the number pi or a function of numbers, and the names that
// follow: "2x + 3", "4/3 pi r^3", "2 sqrt 16". A sign is put between them.
class ImplicitProductEvaluator : public Evaluator {
public:
    explicit ImplicitProductEvaluator(const FunctionManager& functions) : functions_(functions) {}
    std::u16string_view name() const override { return u"ImplicitProductEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    bool isFactor(const ElementList& elements, std::size_t index, bool words) const;
    bool isFunctionWithArgument(const ElementList& elements, std::size_t index) const;

    const FunctionManager& functions_;
};

}  // namespace vemo
