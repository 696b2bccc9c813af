// SPDX-License-Identifier: MIT
#include "evaluation/compound_measure_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr struct {
    std::u16string_view unit, part;
    std::int64_t limit;  // so many parts are one more of the unit
} rows[] = {{u"foot", u"inch", 12}, {u"stone", u"pound", 14}, {u"pound", u"ounce", 16}, {u"m", u"cm", 100}};

bool isNumber(const Element& element) {
    return runTypeOf(element) == RunType::number && isNumberWithoutUnit(element) &&
           !element.value.has(Attribute::nsystem);
}

bool isWhole(const Element& element) {
    const auto number = element.value.decimal();
    return number && number->fractionDigitsCount() == 0;
}

bool endsThere(const ElementList& elements, std::size_t i) {
    if (i == elements.size()) return true;
    const Element& next = elements[i];
    return next.value.has(Attribute::operation) || next.value.is(Attribute::parenthesis, u")") ||
           runTypeOf(next) == RunType::comment || runTypeOf(next) == RunType::header;
}

}  // namespace

CompoundMeasureEvaluator::CompoundMeasureEvaluator(const Localizer& localizer)
    : Evaluator({Attribute::unit}), andWords_(localizer.variants(u"list_and.variants", u"Operations")) {}

bool CompoundMeasureEvaluator::joinsUnits(const Element& element) const {
    const std::u16string text = spoken(element.text());
    return text == u"," || isOperator(element, u"and") ||
           (element.value.isEmpty() && std::find(andWords_.begin(), andWords_.end(), text) != andWords_.end());
}

// The targets of a conversion as one: "feet and inches" is feet, the rest of which is told in inches.
void CompoundMeasureEvaluator::joinTargets(const ElementList& elements, ElementReplacer& replacer) const {
    for (std::size_t i = 0; i + 3 < elements.size(); ++i) {
        if (!isOperator(elements[i], u"in")) continue;
        const std::size_t first = neighbourOf(elements, i, 1);
        if (first == elements.size() || !isUnitAlone(elements[first])) continue;
        std::u16string parts;
        std::size_t end = first + 1;
        for (std::size_t word = neighbourOf(elements, first, 1); word < elements.size();) {
            const std::size_t unit = neighbourOf(elements, word, 1);
            if (!joinsUnits(elements[word]) || unit == elements.size() || !isUnitAlone(elements[unit])) break;
            if (!parts.empty()) parts += u' ';
            parts += *elements[unit].value.string(Attribute::unit);
            end = unit + 1;
            word = neighbourOf(elements, unit, 1);
        }
        // "in EUR and $5" has a sign of the next number.
        const std::size_t next = neighbourOf(elements, end - 1, 1);
        if (parts.empty() || (next < elements.size() && elements[next].value.has(Attribute::decimal))) continue;
        replacer.replace({first, end - first})
            .append(makeElement(elements[first].value.with(parts, Attribute::precision),
                                AttributedText(elements.slice(first, end).text(), RunType::unit)));
        i = end - 1;
    }
}

std::optional<ElementList> CompoundMeasureEvaluator::evaluate(const ElementList& elements, Context&,
                                                              const EvaluationContext&) const {
    ElementReplacer replacer(elements);
    if (elements.anyHas(Attribute::operation)) joinTargets(elements, replacer);
    if (replacer.changed()) return replacer.finished();
    for (std::size_t i = 1; i + 1 < elements.size(); ++i) {
        const auto unit = elements[i].value.string(Attribute::unit);
        if (!unit || elements[i].value.has(Attribute::decimal)) continue;
        for (const auto& row : rows) {
            if (*unit != row.unit) continue;
            const std::size_t before = neighbourOf(elements, i, -1), after = neighbourOf(elements, i, 1);
            if (before == elements.size() || after == elements.size()) break;
            if (!isNumber(elements[before]) || !isWhole(elements[before]) || !isNumber(elements[after])) break;
            const bool below =
                elements[after].value.decimal()->subtracting(DecimalNumber::fromInt64(row.limit)).isNegative();
            if (!below || !endsThere(elements, neighbourOf(elements, after, 1))) break;
            replacer.replace({after, 1})
                .append(
                    makeElement(elements[after].value.with(row.part, Attribute::unit), elements[after].attributedText));
            i = after;
            break;
        }
    }
    return replacer.finished();
}

}  // namespace vemo
