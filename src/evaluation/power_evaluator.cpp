// SPDX-License-Identifier: MIT
#include "evaluation/power_evaluator.h"

#include "evaluation/element_tests.h"
#include "records/number_words.h"

namespace vemo {

namespace {

// Where the operand that ends the list begins: a value, or brackets with the function before them.
std::size_t operandStart(const std::vector<ElementPointer>& elements) {
    std::size_t i = elements.size() - 1;
    if (!elements[i]->value.is(Attribute::parenthesis, u")")) return i;
    for (std::size_t depth = 0;; --i) {
        if (elements[i]->value.is(Attribute::parenthesis, u")")) ++depth;
        if (elements[i]->value.is(Attribute::parenthesis, u"(") && --depth == 0) break;
        if (i == 0) return elements.size();
    }
    return i > 0 && elements[i - 1]->value.has(Attribute::function) ? i - 1 : i;
}

// True when the last element but blanks is a number without a unit, a name's value or a closing bracket.
bool endsOperand(const std::vector<ElementPointer>& elements) {
    for (std::size_t i = elements.size(); i-- > 0;) {
        if (isBlank(*elements[i])) continue;
        const Value& value = elements[i]->value;
        return value.is(Attribute::parenthesis, u")") || (value.has(Attribute::decimal) && !value.has(Attribute::unit));
    }
    return false;
}

}  // namespace

// The id of the area or volume that a power of a length is; empty where the element begins none.
std::u16string PowerEvaluator::poweredUnit(const ElementList& elements, std::size_t i) const {
    const auto unit = elements[i].value.string(Attribute::unit);
    if (!unit || elements[i].value.has(Attribute::decimal) || i + 2 >= elements.size()) return {};
    if (!isOperator(elements[i + 1], u"^")) return {};
    const std::u16string& power = elements[i + 2].text();
    if (power != u"2" && power != u"3") return {};
    const std::u16string* base = unitConverter_.baseUnit(*unit);
    if (!base || *base != u"m") return {};
    const std::u16string id = std::u16string(*unit) + power;
    return unitConverter_.baseUnit(id) ? id : u"";
}

std::optional<ElementList> PowerEvaluator::evaluate(const ElementList& elements, Context&,
                                                    const EvaluationContext&) const {
    const auto& all = elements.pointers();
    if (!elements.anyHas(Attribute::type) &&
        std::none_of(all.begin(), all.end(), [](const ElementPointer& e) { return isOperator(*e, u"^"); }))
        return std::nullopt;
    std::vector<ElementPointer> result;
    bool changed = false;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (element.value.is(Attribute::type, number_word::power) && hasLetter(element.text()) &&
            !endsOperand(result)) {
            result.push_back(makeElement({}, AttributedText(element.text())));  // "squared paper"
        } else if (element.value.is(Attribute::type, number_word::power)) {
            result.push_back(makeElement(Value(Attribute::operation, u"^"), {}));
            result.push_back(
                makeElement(Value(*element.value.decimal()), AttributedText(element.text(), RunType::number)));
        } else if (element.value.is(Attribute::type, number_word::factorial)) {
            const std::size_t start = hasPlainWords(elements) || result.empty() ? result.size() : operandStart(result);
            if (start < result.size())
                result.insert(result.begin() + static_cast<std::ptrdiff_t>(start),
                              makeElement(Value(Attribute::function, u"fact"), {}));
            const RunType type = start + 1 < result.size() ? RunType::operatorSymbol : RunType::none;
            result.push_back(makeElement({}, AttributedText(element.text(), type)));
        } else if (const std::u16string unit = poweredUnit(elements, i); !unit.empty()) {
            AttributedText text(elements.slice(i, i + 3).text(), RunType::unit);
            result.push_back(makeElement(Value(Attribute::unit, unit), std::move(text)));
            i += 2;
        } else {
            result.push_back(elements.pointers()[i]);
            continue;
        }
        changed = true;
    }
    return changed ? std::optional(ElementList(std::move(result))) : std::nullopt;
}

}  // namespace vemo
