// SPDX-License-Identifier: MIT
#include "evaluation/function_expression_evaluator.h"

#include "evaluation/element_replacement.h"

namespace vemo {

std::optional<ElementList> FunctionExpressionEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                 const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::function)) return std::nullopt;
    return replacingMatches(elements, functionExpressionMatcher_, [&](const Match& match) -> std::optional<Value> {
        const auto id = elements[match.group(u"function")->location].value.string(Attribute::function);
        const Function* function = functionManager_.function(*id);
        if (!function) return std::nullopt;
        std::vector<Value> values;
        for (const ElementRange& range : match.groups(u"values")) values.push_back(elements[range.location].value);
        return function->evaluate(values, context);
    });
}

}  // namespace vemo
