// SPDX-License-Identifier: MIT
#include "evaluation/each_price_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "evaluation/price_evaluators.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// Where the phrase begins that ends the text, with any blanks between its words; npos where it does not.
std::size_t startOfPhrase(std::u16string_view text, std::u16string_view phrase) {
    std::size_t start = text.size();
    for (std::size_t i = phrase.size(); i > 0; --i) {
        const bool blank = phrase[i - 1] == u' ';
        if (start == 0 || (blank ? !isWhitespace(text[start - 1]) : lowercasedUnit(text[start - 1]) != phrase[i - 1]))
            return text.npos;
        --start;
        while (blank && start > 0 && isWhitespace(text[start - 1])) --start;
    }
    return start;
}

// Where a phrase begins with which the text ends, as whole words; npos when it ends with none.
std::size_t startOfLast(std::u16string_view text, const std::vector<std::u16string>& phrases) {
    while (!text.empty() && isWhitespace(text.back())) text.remove_suffix(1);
    for (const std::u16string& phrase : phrases) {
        const std::size_t start = startOfPhrase(text, phrase);
        if (start == text.npos) continue;
        if (start == 0 || !isLetter(text[start - 1]) || !isLetter(phrase.front())) return start;
    }
    return text.npos;
}

bool beginsWith(std::u16string_view text, const std::vector<std::u16string>& phrases) {
    const std::u16string lower = spoken(text);
    return std::any_of(phrases.begin(), phrases.end(), [&](const std::u16string& phrase) {
        return lower.starts_with(phrase) &&
               (lower.size() == phrase.size() || isCjk(phrase.front()) || !isLetter(lower[phrase.size()]));
    });
}

ElementPointer asOperator(std::u16string_view id, std::u16string_view text) {
    return makeElement(Value(Attribute::operation, id), AttributedText(text, RunType::operatorWord));
}

bool isNumber(const Element& element) {
    return runTypeOf(element) == RunType::number && isNumberWithoutUnit(element);
}

}  // namespace

EachPriceEvaluator::EachPriceEvaluator(const Localizer& localizer, const UnitConverter& unitConverter)
    : unitConverter_(unitConverter),
      at_(localizer.variants(u"each_at.variants", u"Operations")),
      by_(localizer.variants(u"measured_by.variants", u"Operations")),
      each_(localizer.variants(u"each.variants", u"Operations")),
      and_(localizer.variants(u"list_and.variants", u"Operations")) {}

// True for the word between measures of length, or between a number and one: "10 ft by 12 ft", "3 by 4 m".
bool EachPriceEvaluator::isBy(const ElementList& elements, std::size_t word) const {
    if (!isPlainWords(elements[word]) || by_.empty()) return false;
    const std::u16string text = spoken(elements[word].text());
    if (std::find(by_.begin(), by_.end(), text) == by_.end()) return false;
    const auto isLength = [&](std::size_t unit) {
        return unit < elements.size() && isUnitAlone(elements[unit]) &&
               unitConverter_.isConvertible(*elements[unit].value.string(Attribute::unit), u"m");
    };
    const std::size_t before = neighbourOf(elements, word, -1), after = neighbourOf(elements, word, 1);
    if (before >= elements.size() || after >= elements.size() || !isNumber(elements[after])) return false;
    const std::size_t unit = neighbourOf(elements, after, 1);
    const bool measured = isLength(unit) || (unit < elements.size() && isBy(elements, unit));
    const bool counted = isNumber(elements[before]) ||
                         (isLength(before) && before > 0 && neighbourOf(elements, before, -1) < elements.size() &&
                          isNumber(elements[neighbourOf(elements, before, -1)]));
    return measured && counted;
}

// True for a number that begins an operand; one that is described may have words before it, too.
bool EachPriceEvaluator::isCount(const ElementList& elements, std::size_t index, bool described) const {
    if (!isNumber(elements[index])) return false;
    std::size_t before = neighbourOf(elements, index, -1);
    while (before < elements.size() && runTypeOf(elements[before]) == RunType::comment)
        before = neighbourOf(elements, before, -1);
    if (before == elements.size()) return true;
    const Value& value = elements[before].value;
    return runTypeOf(elements[before]) == RunType::label || value.has(Attribute::operation) ||
           value.has(Attribute::assignment) || value.is(Attribute::parenthesis, u"(") ||
           (described && isPlainWords(elements[before]));
}

// "and", "&" or a comma.
bool EachPriceEvaluator::isAnd(const Element& element) const {
    if (isOperator(element, u"and")) return true;
    const std::u16string text = lowercased(trimmed(element.text()));
    return element.value.isEmpty() && (text == u"," || std::find(and_.begin(), and_.end(), text) != and_.end());
}

// Replaces the words between a count and what one of it costs by a multiplication: "5 items at $12.50", "15 gal @
// $3.459", "2 @ 3.75", "buy 4 at 12.5 each". `following` tells that one stands before, which is added to: "3 pizzas at
// $14 and 2 salads at $9". False where nothing is priced.
bool EachPriceEvaluator::multiplyPrice(const ElementList& elements, std::size_t index, bool following,
                                       ElementReplacer& replacer) const {
    const std::size_t size = elements.size();
    std::size_t last = index;
    const std::size_t unit = neighbourOf(elements, index, 1);
    const bool counts = unit < size && (isUnitAlone(elements[unit]) || elements[unit].value.has(Attribute::scale));
    if (counts && !isCurrencyAt(elements, unit, unitConverter_)) last = unit;
    std::size_t words = neighbourOf(elements, last, 1);
    if (words == size) return false;
    // "2 kg de naranjas a 3 €"
    const std::size_t of = words;
    if (isOperator(elements[of], u"percent_of") && hasLetter(elements[of].text())) words = neighbourOf(elements, of, 1);
    if (words == size) return false;
    std::u16string_view text = elements[words].text();
    std::size_t at = isPlainWords(elements[words]) || trimmed(text) == u"@" ? startOfLast(text, at_) : text.npos;
    std::size_t price = neighbourOf(elements, words, 1);
    // "5 pièces à 3 €": the last of the words is an operator elsewhere.
    if (at == text.npos && price < size && isPlainWords(elements[words]) &&
        elements[price].value.has(Attribute::operation) && startOfLast(elements[price].text(), at_) == 0) {
        words = price;
        text = elements[words].text();
        at = 0;
        price = neighbourOf(elements, words, 1);
    }
    if (at == text.npos || price == size) return false;
    const bool each = isPricedEach(elements, price);
    const bool money = isMoney(elements, price);
    const bool sign = text.find(u'@') != text.npos;
    // "45 min @ 6 min/km" has no price.
    const std::size_t after = neighbourOf(elements, price, 1);
    const bool measured = after < size && isUnitAlone(elements[after]);
    const bool priced =
        money || (isNumber(elements[price]) && !measured && (each || sign || isPriceOfMeasure(elements, last, price)));
    const bool described = each || (sign && (at > 0 || last != index));
    const std::size_t link = neighbourOf(elements, index, -1);
    const bool added = following && link < size && isAnd(elements[link]);
    if (!priced || (!added && !isCount(elements, index, described))) return false;
    if (added) replacer.replace({link, 1}).append(asOperator(u"+", elements[link].text()));
    // "3 kg @ 2.50" are no kilograms.
    if (!money && last != index && elements[last].value.has(Attribute::unit))
        replacer.replace({last, 1}).append(plainText(elements[last].text()));
    if (of != words && elements[of].value.has(Attribute::operation))
        replacer.replace({of, 1}).append(plainText(elements[of].text()));
    ElementList& result = replacer.replace({words, 1});
    if (at > 0) result.append(plainText(text.substr(0, at)));
    result.append(asOperator(u"*", text.substr(at)));
    return true;
}

// True for a number with cents after a measure that is not one of time: "48 l at 1.79".
bool EachPriceEvaluator::isPriceOfMeasure(const ElementList& elements, std::size_t unit, std::size_t price) const {
    const auto id = elements[unit].value.string(Attribute::unit);
    const std::u16string* base = id ? unitConverter_.baseUnit(*id) : nullptr;
    if (!base || *base == u"second") return false;
    const std::u16string& text = elements[price].text();
    const std::size_t point = text.find_last_of(u".,");
    const std::size_t cents = point == text.npos ? 0 : text.size() - point - 1;
    return cents == 2 || cents == 3;
}

// True when "each" follows the amount that begins there.
bool EachPriceEvaluator::isPricedEach(const ElementList& elements, std::size_t price) const {
    std::size_t after = price;
    while (after < elements.size() &&
           (isNumberWithoutUnit(elements[after]) || isCurrencyAt(elements, after, unitConverter_)))
        after = neighbourOf(elements, after, 1);
    return after < elements.size() && isPlainWords(elements[after]) && beginsWith(elements[after].text(), each_);
}

bool EachPriceEvaluator::isMoney(const ElementList& elements, std::size_t index) const {
    const auto isMoneyAt = [&](std::size_t i) { return isCurrencyAt(elements, i, unitConverter_); };
    if (index >= elements.size()) return false;
    const std::size_t next = neighbourOf(elements, index, 1);
    // "30 cents"
    if (isNumber(elements[index]) && next < elements.size() && elements[next].value.is(Attribute::scale, u"cent"))
        return true;
    if (elements[index].value.has(Attribute::decimal))
        return isMoneyAt(index) || (next < elements.size() && !elements[next].value.has(Attribute::decimal) &&
                                    isNumber(elements[index]) && isMoneyAt(next));
    return isMoneyAt(index) && next < elements.size() && isNumber(elements[next]);
}

std::optional<ElementList> EachPriceEvaluator::evaluate(const ElementList& elements, Context&,
                                                        const EvaluationContext&) const {
    const auto& all = elements.pointers();
    if (std::all_of(all.begin(), all.end(), [](const ElementPointer& e) { return !e->value.isEmpty() || isBlank(*e); }))
        return std::nullopt;
    ElementReplacer replacer(elements);
    bool value = false, priced = false;  // one stands before
    for (std::size_t i = 0; i < elements.size(); ++i) {
        value = value || elements[i].value.has(Attribute::decimal);
        if (value && isBy(elements, i)) {
            // A number without a unit has that of the last one: "10 by 12 ft".
            const std::size_t before = neighbourOf(elements, i, -1);
            std::size_t unit = i;
            while (unit + 1 < elements.size() && !isUnitAlone(elements[unit])) ++unit;
            ElementList& result = replacer.replace({before, i + 1 - before});
            result.append(isNumber(elements[before]) ? makeElement(elements[before].value.merging(elements[unit].value),
                                                                   elements[before].attributedText)
                                                     : elements.pointers()[before]);
            result.append(asOperator(u"*", elements.slice(before + 1, i + 1).text()));
            continue;
        }
        if (isNumber(elements[i])) priced = multiplyPrice(elements, i, priced, replacer) || priced;
    }
    return replacer.finished();
}

}  // namespace vemo
