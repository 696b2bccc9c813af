// SPDX-License-Identifier: MIT
#include "evaluation/line_marks_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "evaluation/price_evaluators.h"
#include "platform/locale_info.h"

namespace vemo {

namespace {

constexpr std::size_t mostDigits = 3;    // of a list's number
constexpr std::size_t mostElements = 8;  // of a list's mark and the word after it
constexpr std::u16string_view bullets = u"-*\u2022";
constexpr std::u16string_view arrows[] = {u"->", u"\u2192"};

struct Mark {
    std::size_t end = 0;  // 0 for none
    bool numbered = false;
};

std::size_t blanksEnd(std::u16string_view text, std::size_t i) {
    while (i < text.size() && isWhitespace(text[i])) ++i;
    return i;
}

// The end of "[ ]" or "[x]" and the blanks after it; the place itself where there is none.
std::size_t boxEnd(std::u16string_view text, std::size_t i) {
    constexpr std::size_t length = 3;
    if (i + length > text.size() || text[i] != u'[' || text[i + 2] != u']') return i;
    const char16_t inside = text[i + 1];
    if (inside != u' ' && inside != u'x' && inside != u'X') return i;
    const std::size_t end = blanksEnd(text, i + length);
    return end == i + length ? i : end;
}

Mark markOf(std::u16string_view text) {
    const std::size_t start = blanksEnd(text, 0);
    std::size_t i = start;
    while (i < text.size() && i - start <= mostDigits && digitValue(text[i]) >= 0) ++i;
    const bool numbered =
        i > start && i - start <= mostDigits && i < text.size() && (text[i] == u'.' || text[i] == u')');
    const bool bullet = i == start && i < text.size() && bullets.find(text[i]) != bullets.npos;
    if (numbered || bullet) {
        const std::size_t end = blanksEnd(text, i + 1);
        return end == i + 1 ? Mark{} : Mark{boxEnd(text, end), numbered};
    }
    const std::size_t end = boxEnd(text, start);
    return end == start ? Mark{} : Mark{end, false};
}

bool mayBeginMark(const ElementList& elements) {
    const std::u16string_view first = trimmed(elements[0].text());
    if (first.empty()) return elements.size() > 1;
    if (digitValue(first.front()) < 0) return bullets.find(first.front()) != bullets.npos || first.front() == u'[';
    const std::u16string& next = elements.size() > 1 ? elements[1].text() : elements[0].text();
    return !next.empty() && (next.front() == u'.' || next.front() == u')');
}

bool isSign(const Element& element, std::u16string_view text) {
    return element.value.has(Attribute::operation) && element.text() == text;
}

// True for the first of two dashes after a word: "lunch -- 5".
bool isDash(const ElementList& elements, std::size_t i) {
    if (i == 0 || i + 1 >= elements.size() || !isSign(elements[i], u"-") || !isSign(elements[i + 1], u"-"))
        return false;
    const std::size_t before = neighbourOf(elements, i, -1);
    return before < elements.size() && isPlainWords(elements[before]) &&
           isLetter(trimmed(elements[before].text()).back());
}

// True for the stroke of the short form of "with": "80 w/ 20% off", "3 coffees w/ milk".
bool isWith(const ElementList& elements, std::size_t i) {
    if (i == 0 || !isSign(elements[i], u"/") || !isPlainWords(elements[i - 1])) return false;
    const std::u16string& text = elements[i - 1].text();
    const bool alone = text.size() == 1 || isWhitespace(text[text.size() - 2]);
    return alone && lowercasedUnit(text.back()) == u'w' &&
           (i + 1 == elements.size() || !isNumberWithoutUnit(elements[i + 1]));
}

// True for the dash of a word that begins with a number: "6-pack $9 / 6", "3-day trip".
bool isHyphen(const ElementList& elements, std::size_t i) {
    return i > 0 && i + 1 < elements.size() && isSign(elements[i], u"-") && isWholeNumber(elements[i - 1]) &&
           isPlainWords(elements[i + 1]) && isLetter(elements[i + 1].text().front());
}

}  // namespace

// "Total:" with nothing but comments beside it.
std::optional<ElementList> LineMarksEvaluator::aggregateOf(const ElementList& elements) const {
    if (runTypeOf(elements[0]) != RunType::label) return std::nullopt;
    for (std::size_t i = 1; i < elements.size(); ++i)
        if (runTypeOf(elements[i]) != RunType::comment && !trimmed(elements[i].text()).empty()) return std::nullopt;
    std::u16string_view words = trimmed(elements[0].text());
    words = trimmed(words.substr(0, words.size() - 1));
    const std::u16string* id = functions_.phraseDetector().find(lowercased(words));
    const Function* function = id ? functions_.function(*id) : nullptr;
    if (!function || !function->takesSeveral() || function->takesSigns()) return std::nullopt;
    ElementList result({makeElement(Value(Attribute::function, *id), elements[0].attributedText)});
    for (std::size_t i = 1; i < elements.size(); ++i) result.append(elements.pointers()[i]);
    return result;
}

// How many elements the mark of a list takes at the beginning of the line; 0 without one.
std::size_t LineMarksEvaluator::listMark(const ElementList& elements) const {
    if (!mayBeginMark(elements)) return 0;
    const std::size_t most = std::min(elements.size(), mostElements);
    const Mark mark = markOf(elements.slice(0, most).text());
    std::size_t start = 0;
    for (std::size_t i = 0; mark.end > 0 && i < most; start += elements[i++].text().size()) {
        const Element& element = elements[i];
        if (start + element.text().size() <= mark.end) continue;
        if (isPlainWords(element)) return isLetter(element.text()[mark.end - start]) ? i : 0;
        const auto unit = element.value.string(Attribute::unit);
        const bool money = unit && !element.value.has(Attribute::decimal) && unitConverter_.isCurrency(*unit);
        return mark.numbered && money && start == mark.end ? i : 0;
    }
    return 0;
}

// True for a number and its currency, in either order.
bool LineMarksEvaluator::isPriceAt(const ElementList& elements, std::size_t first) const {
    const std::size_t second = neighbourOf(elements, first, 1);
    if (second >= elements.size()) return false;
    return (isCurrencyAt(elements, first, unitConverter_) && isNumberWithoutUnit(elements[second])) ||
           (isNumberWithoutUnit(elements[first]) && isCurrencyAt(elements, second, unitConverter_));
}

// True for a dash between blanks, after words without money and before an amount: "gift (turning 9) – $25", "unit 228 -
// $95". And for one between a price and words that describe it: "$612 - new tires, 2014 Civic".
bool LineMarksEvaluator::isDashBesidePrice(const ElementList& elements, std::size_t i) const {
    if (std::u16string_view(u"-\u2013\u2014").find(elements[i].text()) == std::u16string_view::npos || i == 0 ||
        !elements[i].value.is(Attribute::operation, u"-") || i + 1 >= elements.size() ||
        !endsWithBlank(elements[i - 1]) || !beginsWithBlank(elements[i + 1]))
        return false;
    bool words = false, money = false;
    for (std::size_t k = 0; k < i; ++k) {
        if (elements[k].value.has(Attribute::assignment)) return false;
        money = money || isCurrencyAt(elements, k, unitConverter_);
        words = words || isPlainWords(elements[k]);
    }
    if (!money) return words && isPriceAt(elements, neighbourOf(elements, i, 1));
    const std::size_t last = neighbourOf(elements, i, -1);
    const bool price = isCurrencyAt(elements, last, unitConverter_) || (last > 0 && isPriceAt(elements, last - 1));
    return price && isPlainWords(elements[i + 1]) &&
           trimmed(elements[i + 1].text()).find(u' ') != std::u16string_view::npos;
}

// True for an arrow that converts nothing. One that converts stands after something, and before a unit, a numeral
// system, a time zone or a word.
bool LineMarksEvaluator::isIdleArrow(const ElementList& elements, std::size_t i) const {
    if (!isSign(elements[i], arrows[0]) && !isSign(elements[i], arrows[1])) return false;
    const std::size_t before = neighbourOf(elements, i, -1), after = neighbourOf(elements, i, 1);
    if (before >= elements.size() || after >= elements.size() || elements[before].value.isEmpty()) return true;
    const Value& target = elements[after].value;
    return target.has(Attribute::decimal) || target.has(Attribute::date) || target.has(Attribute::parenthesis) ||
           target.has(Attribute::operation) || isPriceAt(elements, after);
}

std::optional<ElementList> LineMarksEvaluator::evaluate(const ElementList& elements, Context&,
                                                        const EvaluationContext&) const {
    if (elements.empty()) return std::nullopt;
    if (auto aggregate = aggregateOf(elements)) return aggregate;
    ElementReplacer replacer(elements);
    const std::size_t marked = listMark(elements);
    for (std::size_t i = 0; i < marked; ++i)
        if (!elements[i].value.isEmpty()) replacer.replace({i, 1}).append(plainText(elements[i].text()));
    for (std::size_t i = marked; i < elements.size(); ++i) {
        if (!elements[i].value.has(Attribute::operation)) continue;
        const bool single =
            isIdleArrow(elements, i) || isDashBesidePrice(elements, i) || isHyphen(elements, i) || isWith(elements, i);
        const std::size_t length = isDash(elements, i) ? 2 : single ? 1 : 0;
        if (length == 0) continue;
        replacer.replace({i, length}).append(plainText(elements.slice(i, i + length).text()));
        i += length - 1;
    }
    return replacer.finished();
}

}  // namespace vemo
