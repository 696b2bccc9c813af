// SPDX-License-Identifier: MIT
#include "evaluation/number_word_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/number_words.h"

namespace vemo {

namespace {

bool isFraction(const ElementList& elements, std::size_t i) {
    if (i >= elements.size() || !elements[i].value.is(Attribute::type, number_word::fraction)) return false;
    // In Japanese the whole comes first, and the word between is a multiplication.
    const std::size_t before = neighbourOf(elements, i, -1);
    if (before < elements.size() && isOperator(elements[before], u"*")) return true;
    const std::size_t of = neighbourOf(elements, i, 1);
    return of < elements.size() && isOperator(elements[of], u"percent_of") &&
           beginsValue(elements, neighbourOf(elements, of, 1));
}

bool isNumerator(const Element& element) {
    return element.value.is(Attribute::type, number_word::numerator) ||
           (isNumberWithoutUnit(element) && runTypeOf(element) == RunType::number);
}

bool isAddend(const ElementList& elements, std::size_t i) {
    return i < elements.size() && elements[i].value.is(Attribute::type, number_word::addend);
}

bool isUnit(const ElementList& elements, std::size_t i) {
    return i < elements.size() && elements[i].value.has(Attribute::unit) && !elements[i].value.has(Attribute::decimal);
}

}  // namespace

std::optional<ElementList> NumberWordEvaluator::evaluate(const ElementList& elements, Context&,
                                                         const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::type)) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Value& value = elements[i].value;
        const auto become = [&](std::size_t end, const DecimalNumber& number) {
            const std::u16string text = elements.slice(i, end).text();
            replacer.replace({i, end - i}).append(makeElement(Value(number), AttributedText(text, RunType::number)));
        };
        const std::size_t next = neighbourOf(elements, i, 1);
        const std::size_t third = neighbourOf(elements, next, 1);
        if (isNumerator(elements[i]) && isUnit(elements, next) && isAddend(elements, third)) {
            become(i + 1, value.decimal()->adding(*elements[third].value.decimal()));
            const std::u16string text = elements.slice(next, third + 1).text();
            replacer.replace({next, third + 1 - next})
                .append(makeElement(elements[next].value, AttributedText(text, RunType::unit)));
            i = third;
        } else if (isNumerator(elements[i]) && isAddend(elements, next) && isUnit(elements, third)) {
            become(next + 1, value.decimal()->adding(*elements[next].value.decimal()));
            i = next;
        } else if (value.is(Attribute::type, number_word::mixed) && isUnit(elements, next)) {
            become(i + 1, *value.decimal());
        } else if (isNumerator(elements[i]) && isFraction(elements, next)) {
            become(next + 1, value.decimal()->multiplying(*elements[next].value.decimal()));
            i = next;
        } else if (isFraction(elements, i)) {
            become(i + 1, *value.decimal());
        } else if (value.has(Attribute::type)) {
            replacer.replace({i, 1}).append(makeElement({}, AttributedText(elements[i].text())));
        }
    }
    return replacer.finished();
}

}  // namespace vemo
