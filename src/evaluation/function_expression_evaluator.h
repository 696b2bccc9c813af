// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/evaluator.h"
#include "functions/function_manager.h"
#include "matching/domain_matchers.h"

namespace vemo {

// Applies functions to the values after their names.
class FunctionExpressionEvaluator : public Evaluator {
public:
    explicit FunctionExpressionEvaluator(const FunctionManager& functionManager)
        : Evaluator({Attribute::function}),
          functionManager_(functionManager),
          functionExpressionMatcher_(functionExpressionMatcher()) {}
    std::u16string_view name() const override { return u"FunctionExpressionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    std::optional<Value> valueOf(const ElementList& elements, std::size_t place, const std::vector<Value>& values,
                                 Context& context) const;

    const FunctionManager& functionManager_;
    FinderMatcher functionExpressionMatcher_;
};

}  // namespace vemo
