// SPDX-License-Identifier: MIT
#include "evaluation/implicit_product_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "functions/constants.h"
#include "records/remarks.h"

namespace vemo {

namespace {

bool isName(const Element& element) {
    return runTypeOf(element) == RunType::variable && element.value.has(Attribute::decimal);
}

bool isPi(const Element& element) {
    return isName(element) && (lowercased(element.text()) == u"pi" || element.text() == u"\u03c0") &&
           isBuiltInConstant(element.text(), element.value);
}

bool isNumber(const Element& element) {
    return runTypeOf(element) == RunType::number && isNumberWithoutUnit(element);
}

// True for a number that belongs to the sign of money before it: "$5 price".
bool followsUnit(const ElementList& elements, std::size_t index) {
    const std::size_t before = neighbourOf(elements, index, -1);
    return before < elements.size() && elements[before].value.has(Attribute::unit) &&
           !elements[before].value.has(Attribute::decimal);
}

// True for the letters e and r, which are words too: they count only in lower case, on a line of numbers.
bool mayBeWord(const Element& element) {
    return element.text().size() == 1 && !isPi(element) && isBuiltInConstant(element.text(), element.value);
}

// The first element of the expression: names are defined before the sign of an assignment.
std::size_t expressionStart(const ElementList& elements) {
    for (std::size_t i = elements.size(); i-- > 0;)
        if (elements[i].value.has(Attribute::assignment)) return i + 1;
    return 0;
}

}  // namespace

bool ImplicitProductEvaluator::isFunctionWithArgument(const ElementList& elements, std::size_t index) const {
    const auto id = elements[index].value.string(Attribute::function);
    const Function* function = id ? functions_.function(*id) : nullptr;
    const std::size_t next = neighbourOf(elements, index, 1);
    if (!function || next == elements.size()) return false;
    if (function->takesSeveral() && elements[next].value.is(Attribute::parenthesis, u"(")) return true;
    if (!function->takesSigns()) return false;
    return beginsValue(elements, next) || isOperator(elements[next], u"-");
}

bool ImplicitProductEvaluator::isFactor(const ElementList& elements, std::size_t index, bool words) const {
    const Element& element = elements[index];
    if (!isName(element)) return isFunctionWithArgument(elements, index);
    return !mayBeWord(element) || (!words && element.text() == lowercased(element.text()));
}

std::optional<ElementList> ImplicitProductEvaluator::evaluate(const ElementList& elements, Context& context,
                                                              const EvaluationContext&) const {
    const auto& all = elements.pointers();
    const auto isBeside = [](const ElementPointer& element) {
        return runTypeOf(*element) == RunType::variable || element->value.has(Attribute::function);
    };
    if (std::none_of(all.begin(), all.end(), isBeside)) return std::nullopt;
    const bool words = hasPlainWords(elements);
    ElementReplacer replacer(elements);
    for (std::size_t i = expressionStart(elements); i + 1 < elements.size(); ++i) {
        const bool starts = (isNumber(elements[i]) && !followsUnit(elements, i)) || isPi(elements[i]);
        if (!starts) continue;
        const std::size_t start = i, before = neighbourOf(elements, i, -1);
        for (std::size_t next = neighbourOf(elements, i, 1); next < elements.size() && isFactor(elements, next, words);
             next = neighbourOf(elements, i, 1)) {
            // What stands between, if anything, becomes the sign.
            const std::u16string between = elements.slice(i + 1, next).text();
            replacer.replace({i + 1, next - i - 1}).append(unwrittenOperator(u"*", between));
            i = next;
            if (!isName(elements[i])) break;
        }
        const bool divides = before < elements.size() && isOperator(elements[before], u"/");
        const bool argument = before < elements.size() && elements[before].value.has(Attribute::function);
        if (i > start && (divides || argument)) {
            std::size_t first = divides ? neighbourOf(elements, before, -1) : before;
            if (first == elements.size()) first = before;
            const std::u16string left = elements.slice(first, start + 1).text();
            const std::u16string right = elements.slice(start + 1, i + 1).text();
            std::u16string reading = u"(";
            reading.append(trimmed(left)).append(u") \u00d7 ").append(trimmed(right));
            remarksOf(context).note(NoteKind::implicitProduct, elements.trimmedRangeOf(first, i + 1), reading);
        }
    }
    return replacer.finished();
}

}  // namespace vemo
