// SPDX-License-Identifier: MIT
#include "evaluation/quantity_evaluators.h"

#include "evaluation/element_tests.h"
#include "evaluation/price_evaluators.h"
#include "records/context_map.h"
#include "records/remarks.h"

namespace vemo {

namespace {

// True when nothing but a label, a comment or blanks stand before the name: "e-mail count = 12" defines no name.
bool isWholeName(const ElementList& elements, std::size_t start) {
    for (std::size_t i = 0; i < start; ++i) {
        const Element& element = elements[i];
        const RunType type =
            element.attributedText.runs().size() > 0 ? element.attributedText.runs()[0].type : RunType::none;
        if (type == RunType::label || type == RunType::comment) continue;
        if (!element.value.isEmpty() || !trimmed(element.text()).empty()) return false;
    }
    return true;
}

bool isValidName(std::u16string_view name) {
    return !name.empty() && (name.front() < u'0' || name.front() > u'9');
}

}  // namespace

std::optional<ElementList> AssignmentEvaluator::evaluate(const ElementList& elements, Context& context,
                                                         const EvaluationContext& evaluationContext) const {
    std::vector<std::size_t> signs;
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (elements[i].value.has(Attribute::assignment)) signs.push_back(i);
    // "100 / 4 =" asks for a result.
    const auto isBlankFrom = [&](std::size_t i) {
        while (i < elements.size() && trimmed(elements[i].text()).empty()) ++i;
        return i == elements.size();
    };
    if (!signs.empty() && isBlankFrom(signs.back() + 1)) signs.pop_back();
    if (signs.empty()) return std::nullopt;
    const ElementList evaluated =
        evaluationContext.evaluate(elements.slice(signs.back() + 1, elements.size()), context);
    const Value assigned = evaluated.empty() ? Value() : evaluated[0].value;
    // "a = b = 5": the last name first, each by itself, so that a long chain needs no recursion.
    std::vector<ElementList> parts;
    parts.reserve(signs.size());
    for (std::size_t i = 0; i < signs.size(); ++i)
        parts.push_back(elements.slice(i == 0 ? 0 : signs[i - 1] + 1, signs[i] + 1));
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) assign(*part, assigned, context);
    AttributedText text;
    for (const ElementList& part : parts) text.append(part.attributedText());
    text.append(evaluated.attributedText());
    return ElementList({makeElement(assigned, std::move(text))});
}

// Gives the name before the sign that ends the list the value, and marks it in the text.
void AssignmentEvaluator::assign(ElementList& part, const Value& assigned, Context& context) const {
    part.append(makeElement(assigned, {}));  // in place of the expression
    const auto matches = matcher_.occurrences(part);
    const Match& match = matches.front();
    const ElementRange& nameParts = *match.group(u"varnameparts");
    const AttributedText nameText = part.attributedText(nameParts.location, nameParts.end());
    const std::u16string name = lowercased(trimmed(nameText.compoundString()));
    std::optional<Value> stored = assigned;
    if (const ElementRange* operation = match.group(u"operation")) {
        const std::u16string key = variableKey(name);
        const Value* current = context.getVariable(name);
        const auto op = part[operation->location].value.string(Attribute::operation);
        stored = operationCalculator_.apply(*op, current ? *current : Value(), assigned, context);
        context.addDependencyOn(key, std::nullopt, Value());
    }

    if (stored && !stored->isEmpty() && isValidName(name) && isWholeName(part, nameParts.location)) {
        context.setValue(*stored, name);
        for (std::size_t i = nameParts.location; i < nameParts.end(); ++i)
            part.replace(i, 1, makeElement({}, AttributedText(part[i].text(), RunType::variable)));
    } else if (!assigned.isEmpty()) {
        const TextRange written = part.trimmedRangeOf(0, match.group(u"assignment")->location);
        remarksOf(context).note(NoteKind::withoutEffect, written);
    }
}

namespace {

// True for money, which no word counts in dozens: "$5,000 gross".
bool isCountOfMoney(const ElementList& elements, std::size_t number) {
    const std::size_t before = neighbourOf(elements, number, -1);
    return elements[number].value.has(Attribute::unit) ||
           (before < elements.size() && elements[before].value.has(Attribute::unit) &&
            !elements[before].value.has(Attribute::decimal));
}

bool isMoreThanAHundred(const DecimalNumber& number) {
    return DecimalNumber::fromInt64(100).subtracting(number).isNegative();
}

}  // namespace

std::optional<ElementList> ScaleEvaluator::evaluate(const ElementList& elements, Context&,
                                                    const EvaluationContext&) const {
    const auto scaled = [&](const ElementList& list) {
        return replacingMatches(list, matcher_, [&](const Match& match) -> std::optional<Value> {
            const std::size_t place = match.group(u"value")->location;
            const Value& number = list[place].value;
            const Scale* scale =
                scaleManager_.scale(*list[match.group(u"scale")->location].value.string(Attribute::scale));
            if (!scale) return std::nullopt;
            if (scale->isCount() && (isCountOfMoney(list, place) || isMoreThanAHundred(*number.decimal())))
                return std::nullopt;
            const Value product = number.with(scale->times(*number.decimal()));
            return scale->unit.empty() ? product : product.with(scale->unit, Attribute::unit);
        });
    };
    // "gross 62400": a scale counts what stands before it.
    const auto& all = elements.pointers();
    const auto first = std::find_if(all.begin(), all.end(), [](const auto& e) { return !e->value.isEmpty(); });
    if ((*first)->value.has(Attribute::scale) && elements.anyHas(Attribute::decimal)) {
        ElementReplacer replacer(elements);
        replacer.replace({static_cast<std::size_t>(first - all.begin()), 1}).append(plainText((*first)->text()));
        return replacer.finished();
    }
    // "5 hundred thousand"
    auto result = scaled(elements);
    for (auto more = result; more; more = scaled(*result)) result = std::move(more);
    return result;
}

std::optional<ElementList> DecimalSurroundByCurrencyEvaluator::evaluate(const ElementList& elements, Context&,
                                                                        const EvaluationContext&) const {
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        if (isSignOfNextNumber(elements, match.group(u"unit2")->location, unitConverter_)) return std::nullopt;
        const Value& after = elements[match.group(u"unit2")->location].value;
        for (const Value* unit : {&elements[match.group(u"unit1")->location].value, &after}) {
            const auto id = unit->string(Attribute::unit);
            if (!id || !unitConverter_.isCurrency(*id)) return std::nullopt;
        }
        return elements[match.group(u"decimal")->location].value.merging(after);
    });
}

std::optional<ElementList> DecimalUnitEvaluator::withSigns(const ElementList& elements) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i + 1 < elements.size(); ++i) {
        const std::size_t number =
            isSignOfNextNumber(elements, i, unitConverter_) ? i + 1 : numberOfCode(elements, i, unitConverter_);
        if (number == i) continue;
        replacer.replace({i, number + 1 - i})
            .append(
                makeElement(elements[number].value.merging(elements[i].value), elements.attributedText(i, number + 1)));
        i = number;
    }
    return replacer.finished();
}

std::optional<ElementList> DecimalUnitEvaluator::evaluate(const ElementList& given, Context&,
                                                          const EvaluationContext&) const {
    const std::optional<ElementList> withSigned = withSigns(given);
    const ElementList& elements = withSigned ? *withSigned : given;
    const auto attach = [](const ElementList& list, const FinderMatcher& matcher) {
        return replacingMatches(list, matcher, [&](const Match& match) -> std::optional<Value> {
            return list[match.group(u"value")->location].value.merging(list[match.group(u"unit")->location].value);
        });
    };
    auto after = attach(elements, decimalUnitMatcher_);
    auto before = attach(after ? *after : elements, unitDecimalMatcher_);
    if (before) return before;
    return after ? after : withSigned;
}

std::optional<ElementList> ConvertableValueSequenceEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                       const EvaluationContext&) const {
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        const std::vector<ElementRange> values = match.groups(u"value");
        if (values.size() == 1) return std::nullopt;
        bool money = false, others = false;
        for (const ElementRange& range : values) {
            const auto unit = *elements[range.location].value.string(Attribute::unit);
            if (unit == u"percent") continue;
            if (unitConverter_.rate(unit)) return std::nullopt;
            (unitConverter_.isCurrency(unit) ? money : others) = true;
        }
        // "2% milk $3.89"
        const auto first = elements[values.front().location].value.string(Attribute::unit);
        if (money && (others || *first == u"percent")) return std::nullopt;
        // "£120 inc 20% VAT"
        for (std::size_t i = match.range.location; i < match.range.end(); ++i)
            if (isPlainWords(elements[i]) && percentageWords_.isIncluding(elements[i].text())) return std::nullopt;
        return foldGroup(elements, match, u"value", u"+", operationCalculator_, context);
    });
}

}  // namespace vemo
