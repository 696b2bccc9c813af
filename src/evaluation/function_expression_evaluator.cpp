// SPDX-License-Identifier: MIT
#include "evaluation/function_expression_evaluator.h"

#include "evaluation/element_replacement.h"
#include "records/remarks.h"

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
        auto result = function->evaluate(values, context);
        const std::u16string& name = elements[match.group(u"function")->location].text();
        if (!result && function->takesSigns()) remarksOf(context).reason(ReasonCode::missingArgument, name);
        if (result && result->decimal() && result->decimal()->notANumber())
            remarksOf(context).reason(ReasonCode::outOfRange, name);
        const std::vector<ElementRange> arguments = match.groups(u"values");
        keepStep(context, [&] {
            ReadingStep step{
                name, {}, result.value_or(Value()), elements.rangeOf(match.range.location, match.range.end()), true};
            for (std::size_t i = 0; i < std::min(arguments.size(), function->mostValues()); ++i)
                step.operands.push_back({values[i], elements.rangeOf(arguments[i].location, arguments[i].end())});
            return step;
        });
        for (std::size_t i = function->mostValues(); result && i < arguments.size(); ++i)
            remarksOf(context).note(NoteKind::unusedArgument,
                                    elements.trimmedRangeOf(arguments[i].location, arguments[i].end()), name);
        return result;
    });
}

}  // namespace vemo
