// SPDX-License-Identifier: MIT
#include "evaluation/quantity_evaluators.h"

#include "records/context_map.h"

namespace vemo {

namespace {

bool isValidName(std::u16string_view name) {
    return !name.empty() && (name.front() < u'0' || name.front() > u'9');
}

}  // namespace

std::optional<ElementList> AssignmentEvaluator::evaluate(const ElementList& elements, Context& context,
                                                         const EvaluationContext& evaluationContext) const {
    if (!elements.anyHas(Attribute::assignment)) return std::nullopt;
    const auto matches = matcher_.occurrences(elements);
    if (matches.empty()) return std::nullopt;
    const Match& match = matches.front();
    const ElementRange& nameParts = *match.group(u"varnameparts");
    const ElementRange& expression = *match.group(u"expression");
    const ElementList evaluated =
        evaluationContext.evaluate(elements.slice(expression.location, expression.end()), context);
    const Value assigned = evaluated.empty() ? Value() : evaluated[0].value;

    const AttributedText nameText = elements.attributedText(nameParts.location, nameParts.end());
    const std::u16string name = lowercased(trimmed(nameText.compoundString()));
    std::optional<Value> stored = assigned;
    if (const ElementRange* operation = match.group(u"operation")) {
        const std::u16string key = variableKey(name);
        const Value* current = context.getVariable(name);
        const auto op = elements[operation->location].value.string(Attribute::operation);
        stored = operationCalculator_.apply(*op, current ? *current : Value(), assigned, context);
        context.addDependencyOn(key, std::nullopt, Value());
    }

    ElementList text = elements.slice(0, expression.location);
    for (const ElementPointer& element : evaluated.pointers()) text.append(element);
    if (stored && !stored->isEmpty() && isValidName(name)) {
        context.setValue(*stored, name);
        for (std::size_t i = nameParts.location; i < nameParts.end(); ++i)
            text.replace(i, 1, makeElement({}, AttributedText(elements[i].text(), RunType::variable)));
    }
    return reducedTo(assigned, text);
}

std::optional<ElementList> ScaleEvaluator::evaluate(const ElementList& elements, Context&,
                                                    const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::scale)) return std::nullopt;
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        const Value& number = elements[match.group(u"value")->location].value;
        const Scale* scale =
            scaleManager_.scale(*elements[match.group(u"scale")->location].value.string(Attribute::scale));
        if (!scale) return std::nullopt;
        return number.with(number.decimal()->multiplyingByPowerOf10(scale->ratio));
    });
}

std::optional<ElementList> DecimalSurroundByCurrencyEvaluator::evaluate(const ElementList& elements, Context&,
                                                                        const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::unit)) return std::nullopt;
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        const Value& behind = elements[match.group(u"unit2")->location].value;
        for (const Value* unit : {&elements[match.group(u"unit1")->location].value, &behind}) {
            const auto id = unit->string(Attribute::unit);
            if (!id || !unitConverter_.isCurrency(*id)) return std::nullopt;
        }
        return elements[match.group(u"decimal")->location].value.merging(behind);
    });
}

std::optional<ElementList> DecimalUnitEvaluator::evaluate(const ElementList& elements, Context&,
                                                          const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::unit) && !elements.anyHas(Attribute::nsystem)) return std::nullopt;
    const auto attach = [](const ElementList& list, const FinderMatcher& matcher) {
        return replacingMatches(list, matcher, [&](const Match& match) -> std::optional<Value> {
            return list[match.group(u"value")->location].value.merging(list[match.group(u"unit")->location].value);
        });
    };
    auto behind = attach(elements, decimalUnitMatcher_);
    auto before = attach(behind ? *behind : elements, unitDecimalMatcher_);
    return before ? before : behind;
}

std::optional<ElementList> ConvertableValueSequenceEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                       const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::unit)) return std::nullopt;
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        if (match.groups(u"value").size() == 1) return std::nullopt;
        return foldGroup(elements, match, u"value", u"+", operationCalculator_, context);
    });
}

}  // namespace vemo
