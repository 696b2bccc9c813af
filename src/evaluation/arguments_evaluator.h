// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "functions/function_manager.h"

namespace vemo {

// Applies a function to the several values in the brackets after its name: "max(3, 7)", and
// to those of a list after it: "sum of 12, 15 and 20".
class ArgumentsEvaluator : public Evaluator {
public:
    explicit ArgumentsEvaluator(const FunctionManager& functions)
        : Evaluator({Attribute::type}), functions_(functions) {}
    std::u16string_view name() const override { return u"ArgumentsEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    // The value of the function. Nothing for a list without brackets some part of which is no value.
    std::optional<Value> valueOf(const ElementList& elements, std::size_t function,
                                 const std::vector<std::size_t>& cuts, std::size_t end, Context& context,
                                 const EvaluationContext& evaluationContext) const;

    const FunctionManager& functions_;
};

}  // namespace vemo
