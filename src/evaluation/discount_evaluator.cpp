// SPDX-License-Identifier: MIT
#include "evaluation/discount_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// True where an amount ends: for a number, or a unit after one. A percentage is no amount.
bool endsAmount(const ElementList& elements, std::size_t index) {
    if (index >= elements.size()) return false;
    const Value& value = elements[index].value;
    if (value.is(Attribute::unit, u"percent")) return false;
    return value.has(Attribute::decimal) ||
           (value.has(Attribute::unit) && index > 0 && neighbourOf(elements, index, -1) < index &&
            elements[neighbourOf(elements, index, -1)].value.has(Attribute::decimal));
}

bool beginsAmount(const ElementList& elements, std::size_t index) {
    return index < elements.size() &&
           (elements[index].value.has(Attribute::decimal) || elements[index].value.has(Attribute::unit));
}

}  // namespace

DiscountEvaluator::DiscountEvaluator(const Localizer& localizer, const PercentageWords& words)
    : Evaluator({Attribute::unit}),
      words_(words),
      tenthsOff_(localizer.variants(u"tenths_off.variants", u"Operations")) {
    // The words of "tip on", but without the one for "on".
    const auto on = localizer.variants(u"percent_on.variants", u"Percent");
    for (std::u16string& phrase : localizer.variants(u"percent_of.variants", u"Percent")) {
        const std::size_t blank = phrase.rfind(u' ');
        if (blank == phrase.npos || std::find(on.begin(), on.end(), phrase.substr(blank + 1)) == on.end()) continue;
        phrase.resize(blank);
        parts_.push_back(std::move(phrase));
    }
}

bool DiscountEvaluator::isDiscount(const ElementList& elements, std::size_t index) const {
    return index < elements.size() && isPlainWords(elements[index]) && words_.isDiscount(elements[index].text());
}

// True for words that end with one for a part of an amount: "tip", as in "15% tip on $84".
bool DiscountEvaluator::endsWithPart(std::u16string_view text) const {
    const std::u16string words = spoken(text);
    return std::any_of(parts_.begin(), parts_.end(), [&](const std::u16string& part) {
        return words.ends_with(part) &&
               (words.size() == part.size() || !isLetter(words[words.size() - part.size() - 1]));
    });
}

// True when a word for a discount stands before the percentage, and no amount does.
bool DiscountEvaluator::isLedByDiscount(const ElementList& elements, std::size_t percentage) const {
    bool named = false;
    for (std::size_t i = 0; i < percentage; ++i) {
        if (beginsAmount(elements, i)) return false;
        named = named || words_.isDiscount(elements[i].text());
    }
    return named;
}

// True for an operator that is none after a percentage: "10% off" with nothing after it, "10 % de remise".
bool DiscountEvaluator::isIdle(const ElementList& elements, std::size_t op) const {
    if (op >= elements.size() || !elements[op].value.has(Attribute::operation)) return false;
    const std::size_t next = neighbourOf(elements, op, 1);
    const bool last = next >= elements.size() || runTypeOf(elements[next]) == RunType::comment ||
                      elements[next].value.has(Attribute::operation);
    return (last && isOperator(elements[op], u"percent_off")) ||
           (isDiscount(elements, next) && hasLetter(elements[op].text()) &&
            !beginsAmount(elements, neighbourOf(elements, next, 1)));
}

// "2割引き": a number of tenths, whose word is part of that for the discount.
std::optional<ElementList> DiscountEvaluator::withTenths(const ElementList& elements) const {
    if (tenthsOff_.empty()) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i + 1 < elements.size(); ++i) {
        if (!isNumberWithoutUnit(elements[i]) || !isPlainWords(elements[i + 1])) continue;
        const std::u16string& text = elements[i + 1].text();
        const bool off = std::any_of(tenthsOff_.begin(), tenthsOff_.end(),
                                     [&](const std::u16string& word) { return text.starts_with(word); });
        if (!off) continue;
        const DecimalNumber percent = elements[i].value.decimal()->multiplyingByPowerOf10(1);
        replacer.replace({i, 1}).append(
            makeElement(Value(percent).with(u"percent", Attribute::unit), elements[i].attributedText));
    }
    return replacer.finished();
}

std::optional<ElementList> DiscountEvaluator::evaluate(const ElementList& given, Context&,
                                                       const EvaluationContext&) const {
    const std::optional<ElementList> tenths = withTenths(given);
    const ElementList& elements = tenths ? *tenths : given;
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!elements[i].value.is(Attribute::unit, u"percent")) continue;
        const std::size_t start = isUnitAlone(elements[i]) ? neighbourOf(elements, i, -1) : i;
        if (start > i || !elements[start].value.has(Attribute::decimal)) continue;
        const std::size_t after = neighbourOf(elements, i, 1);
        // What stands before the percentage, over words and signs without a meaning.
        std::size_t before = neighbourOf(elements, start, -1);
        bool named = false, ofPart = false;
        while (before < start && elements[before].value.isEmpty() && runTypeOf(elements[before]) == RunType::none) {
            named = named || isDiscount(elements, before);
            ofPart = ofPart || endsWithPart(elements[before].text());
            before = neighbourOf(elements, before, -1);
        }
        // "tip 15% on $84" is the tip.
        if (ofPart && after < elements.size() && isOperator(elements[after], u"percent_on")) {
            replacer.replace({after, 1})
                .append(makeElement(Value(Attribute::operation, u"percent_of"), elements[after].attributedText));
            continue;
        }
        const bool idle = isIdle(elements, after);
        // "3000円の20%引き": the word between multiplies elsewhere.
        const bool joined = before < start && isOperator(elements[before], u"*") &&
                            hasLetter(elements[before].text()) && isDiscount(elements, after) &&
                            endsAmount(elements, neighbourOf(elements, before, -1));
        if (joined) {
            replacer.replace({before, 1})
                .append(makeElement(Value(Attribute::operation, u"-"), elements[before].attributedText));
        } else if (endsAmount(elements, before)) {
            if (!named && !idle && !isDiscount(elements, after)) {
                // "tax on $45 at 7%"
                const std::size_t of = startOfWords(elements);
                if (of < before && isOperator(elements[of], u"percent_of") && hasLetter(elements[of].text()) &&
                    neighbourOf(elements, start, -1) != before && after >= elements.size()) {
                    replacer.replace({of, 1}).append(plainText(elements[of].text()));
                    replacer.replace({before + 1, start - before - 1})
                        .append(unwrittenOperator(u"*", elements.slice(before + 1, start).text()));
                }
                continue;
            }
            const std::size_t from = before + 1;
            replacer.replace({from, start - from}).append(unwrittenOperator(u"-", elements.slice(from, start).text()));
            if (idle) replacer.replace({after, 1}).append(plainText(elements[after].text()));
        } else if (isDiscount(elements, after) || isLedByDiscount(elements, start)) {
            // "10% discount $80", "discount of 10% on $80"
            const bool linked = after < elements.size() && beginsAmount(elements, neighbourOf(elements, after, 1)) &&
                                (isPlainWords(elements[after]) || isOperator(elements[after], u"percent_on") ||
                                 isOperator(elements[after], u"in"));
            if (linked)
                replacer.replace({after, 1})
                    .append(makeElement(Value(Attribute::operation, u"percent_off"), elements[after].attributedText));
        }
    }
    auto result = replacer.finished();
    return result ? result : tenths;
}

}  // namespace vemo
