// SPDX-License-Identifier: MIT
#include "evaluation/price_evaluators.h"

#include <algorithm>

#include "base/text.h"
#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/remarks.h"

namespace vemo {

namespace {

bool isOperator(const Element& element) {
    return element.value.has(Attribute::operation);
}

// True for brackets with words and a number, as in "$54 (order 88213)".
bool isRemark(const Element& element) {
    return element.value.has(Attribute::decimal) && element.text().starts_with(u'(') && hasLetter(element.text());
}

// A line seen from its amounts of money.
class Description {
public:
    Description(const ElementList& elements, const UnitConverter& converter)
        : elements_(elements), converter_(converter) {}

    // True when there is an amount, each stands apart from every operator that is applied, and none is to a percentage.
    bool holds() const {
        for (std::size_t i = 0; i < elements_.size(); ++i)
            if (isOperator(elements_[i]) && !isHyphen(i) && touchesPercentage(i)) return false;
        bool any = false;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            const std::size_t end = amountAt(i);
            if (end == i) continue;
            if (meetsOperator(i, -1) || meetsOperator(end - 1, 1)) return false;
            any = true;
            i = end - 1;
        }
        return any;
    }

    // The next element in a direction that is no blank; their number without one.
    std::size_t neighbour(std::size_t index, int step) const {
        for (index += static_cast<std::size_t>(step); index < elements_.size(); index += static_cast<std::size_t>(step))
            if (!isBlank(elements_[index])) return index;
        return elements_.size();
    }

    bool isValueAt(std::size_t index) const {
        return index < elements_.size() && !elements_[index].value.isEmpty() && !isOperator(elements_[index]);
    }

    bool isNumberAt(std::size_t index) const {
        return index < elements_.size() && elements_[index].value.has(Attribute::decimal);
    }

private:
    // The end of the amount of money that begins there; the place itself when none does.
    std::size_t amountAt(std::size_t i) const {
        const Element& element = elements_[i];
        if (element.value.has(Attribute::decimal)) {
            if (isCurrency(element, converter_)) return i + 1;
            if (!isNumberWithoutUnit(element)) return i;
            std::size_t next = neighbour(i, 1);
            if (next < elements_.size() && elements_[next].value.has(Attribute::scale)) next = neighbour(next, 1);
            const bool follows =
                next < elements_.size() && isUnitAlone(next) && !isSignOfNextNumber(elements_, next, converter_);
            return follows ? next + 1 : i;
        }
        if (!isUnitAlone(i)) return i;
        const std::size_t next = neighbour(i, 1);
        if (next >= elements_.size() || !isNumberWithoutUnit(elements_[next])) return i;
        const std::size_t scale = neighbour(next, 1);
        return scale < elements_.size() && elements_[scale].value.has(Attribute::scale) ? scale + 1 : next + 1;
    }

    bool isUnitAlone(std::size_t i) const {
        return isCurrency(elements_[i], converter_) && !elements_[i].value.has(Attribute::decimal);
    }

    // True when, over words, an operator that is applied comes before any value.
    bool meetsOperator(std::size_t from, int step) const {
        const auto next = [&](std::size_t i) { return i + static_cast<std::size_t>(step); };
        for (std::size_t i = next(from); i < elements_.size(); i = next(i)) {
            if (elements_[i].value.isEmpty()) continue;
            if (!isOperator(elements_[i])) return false;
            if (isApplied(i)) return true;
        }
        return false;
    }

    bool isApplied(std::size_t i) const {
        const Element& op = elements_[i];
        const std::size_t before = neighbour(i, -1), after = neighbour(i, 1);
        const auto id = *op.value.string(Attribute::operation);
        if (id == u"in") {
            if (after == elements_.size() || isCode(after)) return true;
            return isValueAt(after) && !elements_[after].value.has(Attribute::decimal);
        }
        if (takesPercentage(op.value)) return followsPercentage(i);
        if (isHyphen(i) || (id == u"-" && isDash(i, before, after))) return false;
        return isOperandAt(before, -1) || isOperandAt(after, 1);
    }

    // True for a value that an operator may apply to. A unit without a number is none: "5 € * 3", "母の誕生日の花
    // 3500円".
    bool isOperandAt(std::size_t i, int step) const {
        if (!isValueAt(i)) return false;
        if (!elements_[i].value.has(Attribute::unit) || elements_[i].value.has(Attribute::decimal) ||
            elements_[i].value.has(Attribute::date))
            return true;
        return isNumberAt(neighbour(i, step)) || isNumberAt(neighbour(i, -step));
    }

    // True for a dash between blanks after a quantity from which no money can be taken: "beef 2 lbs - $11.98", "Day 2 -
    // bus $60".
    bool isDash(std::size_t i, std::size_t before, std::size_t after) const {
        if (before >= i || after == elements_.size() || !isWhitespace(elements_[i - 1].text().back()) ||
            !isWhitespace(elements_[i + 1].text().front()))
            return false;
        const auto isOther = [&](std::size_t k) {
            const auto unit = k < elements_.size() ? elements_[k].value.string(Attribute::unit) : std::nullopt;
            return unit && *unit != u"percent" && !converter_.isCurrency(*unit);
        };
        return isOther(before) || (isNumberAt(before) && isOther(neighbour(before, -1)));
    }

    // True for a word in capitals, such as a misspelt code: "$10 in EURR".
    bool isCode(std::size_t i) const {
        const std::u16string& text = elements_[i].text();
        const std::u16string_view word = trimmed(text);
        return elements_[i].value.isEmpty() && word.size() > 2 &&
               std::all_of(word.begin(), word.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; });
    }

    bool followsPercentage(std::size_t i) const {
        while (i-- > 0) {
            const Value& value = elements_[i].value;
            if (!value.isEmpty()) return value.is(Attribute::unit, u"percent");
        }
        return false;
    }

    bool touchesPercentage(std::size_t i) const {
        std::size_t after = neighbour(i, 1);
        if (after < elements_.size() && isNumberWithoutUnit(elements_[after])) after = neighbour(after, 1);
        for (const std::size_t side : {neighbour(i, -1), after})
            if (side < elements_.size() && elements_[side].value.is(Attribute::unit, u"percent")) return true;
        return false;
    }

    // True for a sign inside a word: "e-book", "H&M", "WD-40", "2-pack".
    bool isHyphen(std::size_t i) const {
        if (hasLetter(elements_[i].text())) return false;
        const auto touchesWord = [&](std::size_t side, bool atEnd) {
            if (side >= elements_.size() || !elements_[side].value.isEmpty()) return false;
            const std::u16string& text = elements_[side].text();
            return !text.empty() && isLetter(atEnd ? text.back() : text.front());
        };
        return touchesWord(i - 1, true) || touchesWord(i + 1, false);
    }

    const ElementList& elements_;
    const UnitConverter& converter_;
};

}  // namespace

bool isCurrency(const Element& element, const UnitConverter& unitConverter) {
    const auto unit = element.value.string(Attribute::unit);
    return unit && unitConverter.isCurrency(*unit);
}

bool isSignOfNextNumber(const ElementList& elements, std::size_t index, const UnitConverter& unitConverter) {
    const Element& sign = elements[index];
    if (sign.value.has(Attribute::decimal) || !isCurrency(sign, unitConverter) || sign.text().empty() ||
        isLetter(sign.text().back()))
        return false;
    const bool touchesAfter = index + 1 < elements.size() && isNumberWithoutUnit(elements[index + 1]);
    const bool touchesBefore = index > 0 && isNumberWithoutUnit(elements[index - 1]);
    return touchesAfter && !touchesBefore;
}

std::size_t numberOfCode(const ElementList& elements, std::size_t index, const UnitConverter& unitConverter) {
    const Element& code = elements[index];
    const std::size_t none = index;
    if (code.value.has(Attribute::decimal) || !isCurrency(code, unitConverter) || code.text().empty() ||
        !isLetter(code.text().back()))
        return none;
    if (index + 2 >= elements.size() || !isBlank(elements[index + 1]) || !isNumberWithoutUnit(elements[index + 2]))
        return none;
    const std::size_t before = index > 0 && isBlank(elements[index - 1]) ? index - 2 : index - 1;
    return before < elements.size() && isNumberWithoutUnit(elements[before]) ? none : index + 2;
}

std::optional<ElementList> PricedDescriptionEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                const EvaluationContext&) const {
    const auto& all = elements.pointers();
    const bool remarks = std::any_of(all.begin(), all.end(), [](const ElementPointer& e) { return isRemark(*e); });
    if (!remarks && !elements.anyHas(Attribute::operation) && !elements.anyHas(Attribute::function))
        return std::nullopt;
    const bool words = std::any_of(all.begin(), all.end(),
                                   [](const ElementPointer& e) { return e->value.isEmpty() && hasLetter(e->text()); });
    const Description description(elements, unitConverter_);
    const auto standsForItself = [&](const Element& element) {
        const auto id = element.value.string(Attribute::function);
        return id && takesNoValues_(*id);
    };
    const bool day = std::any_of(all.begin(), all.end(), [&](const ElementPointer& e) { return standsForItself(*e); });
    if ((!words && !remarks && !day) || !description.holds()) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Value& value = elements[i].value;
        const bool unused =
            standsForItself(elements[i]) || (value.has(Attribute::function) && i + 1 < elements.size() &&
                                             !description.isValueAt(description.neighbour(i, 1)));
        // "4 * 3 nights $50" was meant to be calculated; "12/3 dentist $150" hardly.
        if (value.has(Attribute::operation) && !hasLetter(elements[i].text()) && i > 0 && i + 1 < elements.size() &&
            isBlank(elements[i - 1]) && isBlank(elements[i + 1])) {
            const std::size_t before = description.neighbour(i, -1), after = description.neighbour(i, 1);
            if (description.isNumberAt(before) && description.isNumberAt(after))
                remarksOf(context).note(NoteKind::unusedValue, elements.trimmedRangeOf(before, after + 1));
        }
        if (unused || value.has(Attribute::operation) ||
            (isRemark(elements[i]) && !isCurrency(elements[i], unitConverter_)))
            replacer.replace({i, 1}).append(makeElement({}, AttributedText(elements[i].text())));
    }
    return replacer.finished();
}

std::optional<ElementList> PriceEvaluator::evaluate(const ElementList& elements, Context& context,
                                                    const EvaluationContext&) const {
    std::size_t values = 0;
    std::optional<Value> total;
    const Element* before = nullptr;  // the element before, blanks aside
    TextRange place{elements.location(), 0};
    Remarks::Price price;
    for (const ElementPointer& element : elements.pointers()) {
        place = {place.end(), element->text().size()};
        if (!element->value.isEmpty()) ++values;
        if (element->value.has(Attribute::decimal) && isCurrency(*element, unitConverter_)) {
            // "log $100" lacks an argument: it is no price.
            if (before && before->value.has(Attribute::function)) return std::nullopt;
            const auto sum = total ? operationCalculator_.apply(u"+", *total, element->value, context) : element->value;
            if (sum && !(sum->decimal() && sum->decimal()->notANumber())) {
                const TextRange left{elements.location(), place.location - elements.location()};
                if (total)
                    keepStep(context, [&] {
                        return ReadingStep{u"+",
                                           {{*total, left}, {element->value, place}},
                                           *sum,
                                           {left.location, place.end() - left.location}};
                    });
                total = sum;
                price.amounts.push_back(place);
            }
        }
        if (!isBlank(*element)) before = element.get();
    }
    if (values < 2 || !total) return std::nullopt;
    price.description = {elements.location(), place.end() - elements.location()};
    remarksOf(context).setPrice(std::move(price));
    if (percentageWords_.mayApply(elements))
        for (std::size_t i = 0; i < elements.size(); ++i)
            if (elements[i].value.is(Attribute::unit, u"percent"))
                remarksOf(context).note(NoteKind::unusedPercentage, elements.trimmedRangeOf(i, i + 1));
    return reducedTo(*total, elements);
}

}  // namespace vemo
