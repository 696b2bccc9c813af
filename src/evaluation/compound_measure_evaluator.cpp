// SPDX-License-Identifier: MIT
#include "evaluation/compound_measure_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"

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

std::optional<ElementList> CompoundMeasureEvaluator::evaluate(const ElementList& elements, Context&,
                                                              const EvaluationContext&) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 1; i + 1 < elements.size(); ++i) {
        const auto unit = elements[i].value.string(Attribute::unit);
        if (!unit || elements[i].value.has(Attribute::decimal)) continue;
        for (const auto& row : rows) {
            if (*unit != row.unit) continue;
            const std::size_t before = neighbourOf(elements, i, -1), behind = neighbourOf(elements, i, 1);
            if (before == elements.size() || behind == elements.size()) break;
            if (!isNumber(elements[before]) || !isWhole(elements[before]) || !isNumber(elements[behind])) break;
            const bool below =
                elements[behind].value.decimal()->subtracting(DecimalNumber::fromInt64(row.limit)).isNegative();
            if (!below || !endsThere(elements, neighbourOf(elements, behind, 1))) break;
            replacer.replace({behind, 1})
                .append(makeElement(elements[behind].value.with(row.part, Attribute::unit),
                                    elements[behind].attributedText));
            i = behind;
            break;
        }
    }
    return replacer.finished();
}

}  // namespace vemo
