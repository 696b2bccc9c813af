// SPDX-License-Identifier: MIT
#include "evaluation/quick_type_expression_evaluator.h"

namespace vemo {

std::optional<ElementList> QuickTypeExpressionEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                  const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::operation)) return std::nullopt;
    for (const Match& match : matcher_.occurrences(elements))
        context.addQuickTypeExpression(elements.slice(match.range.location, match.range.end()).text());
    return std::nullopt;
}

}  // namespace vemo
