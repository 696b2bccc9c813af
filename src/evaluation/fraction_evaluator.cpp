// SPDX-License-Identifier: MIT
#include "evaluation/fraction_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "evaluation/price_evaluators.h"
#include "platform/locale_info.h"

namespace vemo {

namespace {

constexpr std::size_t longestPart = 2;   // digits of a numerator or denominator before a unit
constexpr std::size_t longestOfOne = 4;  // digits of a denominator below 1: "1/250 s"
constexpr std::size_t strokeLength = 3;  // elements

bool isStroke(const Element& element) {
    return isOperator(element, u"/") && element.text() == u"/";
}

// True where two whole numbers have a stroke between them, without blanks, and no further stroke beside them.
bool isStrokeFraction(const ElementList& elements, std::size_t i) {
    if (i + strokeLength > elements.size() || !isStroke(elements[i + 1]) || !isWholeNumber(elements[i]) ||
        !isWholeNumber(elements[i + 2]) || elements[i + 2].value.decimal()->isZero())
        return false;
    if (i > 0 && (isStroke(elements[i - 1]) || isOperator(elements[i - 1], u"^"))) return false;
    return i + strokeLength == elements.size() || !isStroke(elements[i + strokeLength]);
}

// True for a fraction that was read as one number already: "1 1/2", "½", "half".
bool isFractionNumber(const Element& element) {
    const std::u16string& text = element.text();
    if (!isNumberWithoutUnit(element) || runTypeOf(element) != RunType::number) return false;
    if (element.value.has(Attribute::nsystem)) return false;
    return std::any_of(text.begin(), text.end(), [](char16_t c) {
        return c == u'/' || isLetter(c) || (c >= 0x80 && digitValue(c) < 0 && !isWhitespace(c));
    });
}

}  // namespace

std::optional<ElementList> FractionEvaluator::evaluate(const ElementList& elements, Context&,
                                                       const EvaluationContext&) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i + 1 < elements.size(); ++i) {
        const bool stroke = isStrokeFraction(elements, i);
        if (!stroke && !isFractionNumber(elements[i])) continue;
        const std::size_t end = i + (stroke ? strokeLength : 1);
        const std::size_t next = neighbourOf(elements, end - 1, 1);
        if (next == elements.size()) continue;
        const bool of = isOperator(elements[next], u"percent_of") && beginsWhole(elements, next);
        const bool touches = next == end || elements[end].text().size() == 1;
        const std::size_t longest = elements[i].text() == u"1" ? longestOfOne : longestPart;
        const bool isShort = elements[i].text().size() <= longestPart && elements[end - 1].text().size() <= longest;
        const bool unit = stroke && touches && isShort && elements[next].value.has(Attribute::unit) &&
                          !elements[next].value.has(Attribute::decimal) &&
                          !isSignOfNextNumber(elements, next, unitConverter_);
        const bool off = isOperator(elements[next], u"percent_off") && beginsWhole(elements, next);
        if (!of && !off && !unit) continue;
        ElementList& result = replacer.replace({i, (of ? next + 1 : end) - i});
        if (stroke || off) {
            DecimalNumber number = *elements[i].value.decimal();
            if (stroke) number = number.dividing(*elements[i + 2].value.decimal());
            const Value value =
                off ? Value(number.multiplyingByPowerOf10(2)).with(u"percent", Attribute::unit) : Value(number);
            result.append(makeElement(value, elements.attributedText(i, end)));
        } else {
            result.append(elements.pointers()[i]);
        }
        i = end - 1;
        if (!of) continue;
        for (std::size_t k = end; k < next; ++k) result.append(elements.pointers()[k]);
        result.append(makeElement(Value(Attribute::operation, u"*"), elements[next].attributedText));
        i = next;
    }
    return replacer.finished();
}

}  // namespace vemo
