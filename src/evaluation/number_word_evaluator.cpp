// SPDX-License-Identifier: MIT
#include "evaluation/number_word_evaluator.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <limits>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/number_words.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr std::int64_t hundred = 100;
constexpr std::int64_t mostOfGroup = 1'000'000'000'000'000;

DecimalNumber powerOfTen(int exponent) {
    return DecimalNumber::fromInt64(1).multiplyingByPowerOf10(static_cast<std::int16_t>(exponent));
}

bool isWord(const ElementList& elements, std::size_t i, std::u16string_view type) {
    return i < elements.size() && elements[i].value.is(Attribute::type, type);
}

bool isUnitAt(const ElementList& elements, std::size_t i) {
    return i < elements.size() && isUnitAlone(elements[i]);
}

bool hasConversion(const ElementList& elements) {
    const auto& all = elements.pointers();
    return std::any_of(all.begin(), all.end(), [](const ElementPointer& e) { return isOperator(*e, u"in"); });
}

bool isNumerator(const Element& element) {
    return element.value.is(Attribute::type, number_word::count) ||
           (isNumberWithoutUnit(element) && runTypeOf(element) == RunType::number);
}

bool isFraction(const ElementList& elements, std::size_t i) {
    if (!isWord(elements, i, number_word::fraction)) return false;
    // In Japanese the whole comes first, and the word between is a multiplication.
    const std::size_t before = neighbourOf(elements, i, -1);
    if (before < elements.size() && isOperator(elements[before], u"*")) return true;
    const std::size_t of = neighbourOf(elements, i, 1);
    return of < elements.size() &&
           (isOperator(elements[of], u"percent_of") || isOperator(elements[of], u"percent_off")) &&
           beginsWhole(elements, of);
}

bool isDecided(const Value& value) {
    return !value.has(Attribute::type) || value.is(Attribute::type, number_word::separator);
}

// True beside an arithmetic operator whose other operand is a number: "twelve * 12", "two hundred plus fifty".
bool isCalculated(const ElementList& elements, std::size_t start, std::size_t end) {
    constexpr std::u16string_view operators[] = {u"+", u"-",          u"*",          u"/",
                                                 u"^", u"percent_of", u"percent_on", u"percent_off"};
    const auto isNumberBeyond = [&](std::size_t op, int step) {
        if (op >= elements.size()) return false;
        const auto id = elements[op].value.string(Attribute::operation);
        if (!id || std::find(std::begin(operators), std::end(operators), *id) == std::end(operators)) return false;
        const std::size_t other = neighbourOf(elements, op, step);
        return other < elements.size() &&
               (elements[other].value.has(Attribute::decimal) || elements[other].value.has(Attribute::scale) ||
                elements[other].value.is(Attribute::unit, u"percent"));
    };
    return isNumberBeyond(neighbourOf(elements, end - 1, 1), 1) || isNumberBeyond(neighbourOf(elements, start, -1), -1);
}

bool isAddend(const ElementList& elements, std::size_t i) {
    return i < elements.size() && elements[i].value.is(Attribute::type, number_word::addend);
}

}  // namespace

NumberWordEvaluator::NumberWordEvaluator(const Localizer& localizer, const ScaleManager& scales)
    : Evaluator({Attribute::scale, Attribute::unit, Attribute::type}),
      scales_(scales),
      links_(localizer.variants(u"counts_link.variants", u"Numbers")),
      articles_(localizer.variants(u"article.variants", u"Numbers")),
      ones_(localizer.variants(u"one.variants", u"Numbers")) {}

const Scale* NumberWordEvaluator::scaleAt(const ElementList& elements, std::size_t i) const {
    const auto id = i < elements.size() ? elements[i].value.string(Attribute::scale) : std::nullopt;
    const Scale* scale = id ? scales_.scale(*id) : nullptr;
    return scale && scale->unit.empty() ? scale : nullptr;
}

// True for a hyphen or "and", which join the words of a number.
bool NumberWordEvaluator::isLink(const Element& element) const {
    if (isOperator(element, u"-")) return element.text() == u"-";
    if (!isPlainWords(element)) return false;
    return std::find(links_.begin(), links_.end(), spoken(element.text())) != links_.end();
}

// The last word of "forty-one", "two hundred and one" and "vingt et un", which alone is an article or a pronoun.
bool NumberWordEvaluator::isOne(const Element& element, bool linked) const {
    if (!isPlainWords(element)) return false;
    const std::u16string words = spoken(element.text());
    const auto isAmong = [&](std::u16string_view word) {
        return std::find(ones_.begin(), ones_.end(), word) != ones_.end();
    };
    const std::size_t blank = linked ? words.npos : words.find(u' ');
    if (blank == words.npos) return isAmong(words);
    return std::find(links_.begin(), links_.end(), words.substr(0, blank)) != links_.end() &&
           isAmong(std::u16string_view(words).substr(blank + 1));
}

// The number whose first word stands there, of several words: "two hundred and fifty thousand", "vingt-cinq".
NumberWordEvaluator::Count NumberWordEvaluator::countAt(const ElementList& elements, std::size_t start) const {
    const DecimalNumber first = *elements[start].value.decimal();
    std::int64_t group = first.toInt64();
    const bool joins = group <= mostOfGroup;  // else the word is a number of its own
    DecimalNumber scaled;
    std::size_t end = start + 1;
    bool anyScale = false;
    for (std::size_t next = neighbourOf(elements, start, 1); joins && next < elements.size();) {
        const bool linked = isLink(elements[next]);
        std::size_t word = next;
        while (word < elements.size() && isLink(elements[word])) word = neighbourOf(elements, word, 1);
        if (isWord(elements, word, number_word::count)) {
            const std::int64_t value = elements[word].value.decimal()->toInt64();
            const bool fits = group % hundred == 0 ? value < hundred : group % 10 == 0 && value < (linked ? 20 : 10);
            if (!fits || (group == 0 && linked && !anyScale)) break;
            group += value;
        } else if (word < elements.size() && isOne(elements[word], linked) && group % 10 == 0 &&
                   group % hundred != 10 && (group > 0 || anyScale)) {
            ++group;
        } else if (const Scale* scale = linked ? nullptr : scaleAt(elements, word)) {
            const DecimalNumber product = scale->times(DecimalNumber::fromInt64(group));
            const bool grows = scale->ratio <= 2 && !scale->isCount();
            if (grows && product.toInt64() > mostOfGroup) break;
            anyScale = true;
            if (!grows) scaled = scaled.adding(product);
            group = grows ? product.toInt64() : 0;
        } else {
            break;
        }
        end = word + 1;
        next = neighbourOf(elements, word, 1);
    }
    const std::size_t after = neighbourOf(elements, end - 1, 1);
    if (!anyScale && !isUnitAt(elements, after) && !isCalculated(elements, start, end)) return {};
    return {joins ? scaled.adding(DecimalNumber::fromInt64(group)) : first, end};
}

// Where the article begins with which a text before a unit or multiplier ends; npos without one.
std::size_t NumberWordEvaluator::articleAt(const ElementList& elements, std::size_t i) const {
    const std::u16string& text = elements[i].text();
    if (!isPlainWords(elements[i]) || !isWhitespace(text.back())) return text.npos;
    const auto end = std::find_if_not(text.rbegin(), text.rend(), isWhitespace).base();
    const std::u16string_view words(text.begin(), end);
    const std::size_t blank = words.find_last_of(u" \t\u00a0");
    const std::size_t start = blank == words.npos ? 0 : blank + 1;
    const std::u16string word = lowercased(words.substr(start));
    return std::find(articles_.begin(), articles_.end(), word) == articles_.end() ? text.npos : start;
}

// "forty-one million": the last word of a number that others begin.
bool NumberWordEvaluator::endsCount(const ElementList& elements, std::size_t i) const {
    std::size_t before = neighbourOf(elements, i, -1);
    const bool linked = before < elements.size() && isLink(elements[before]);
    while (before < elements.size() && isLink(elements[before])) before = neighbourOf(elements, before, -1);
    return (isWord(elements, before, number_word::count) || scaleAt(elements, before)) && isOne(elements[i], linked);
}

// True for an article that counts: before a multiplier, or a unit that is converted, and after nothing with a value,
// as in "$5 a day".
bool NumberWordEvaluator::isMeasured(const ElementList& elements, std::size_t i) const {
    const std::size_t before = neighbourOf(elements, i, -1);
    if (before < elements.size() &&
        (elements[before].value.has(Attribute::decimal) || elements[before].value.has(Attribute::unit) ||
         elements[before].value.has(Attribute::date)))
        return elements[before].value.is(Attribute::type, number_word::fraction);
    const std::size_t after = neighbourOf(elements, i, 1);
    return scaleAt(elements, after) || (isUnitAt(elements, after) && hasConversion(elements));
}

std::optional<ElementList> NumberWordEvaluator::withArticles(const ElementList& elements) const {
    if (!elements.anyHas(Attribute::scale) && !elements.anyHas(Attribute::unit)) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i + 1 < elements.size(); ++i) {
        const Value& after = elements[i + 1].value;
        if (after.has(Attribute::decimal) || (!after.has(Attribute::unit) && !after.has(Attribute::scale))) continue;
        const std::size_t start = articleAt(elements, i);
        if (start == std::u16string::npos || !isMeasured(elements, i) || endsCount(elements, i)) continue;
        const std::u16string_view text = elements[i].text();
        const std::size_t before = neighbourOf(elements, i, -1);
        const bool half = before < elements.size() && isWord(elements, before, number_word::fraction);
        if (half && start > 1) continue;
        if (half) {
            ElementList& result = replacer.replace({before, i + 1 - before});
            result.append(makeElement(Value(*elements[before].value.decimal()),
                                      AttributedText(elements[before].text(), RunType::number)));
            result.append(makeElement({}, AttributedText(elements.slice(before + 1, i + 1).text())));
            continue;
        }
        ElementList& result = replacer.replace({i, 1});
        if (start > 0) result.append(makeElement({}, AttributedText(text.substr(0, start))));
        const std::size_t length = trimmed(text.substr(start)).size();
        result.append(makeElement(Value(DecimalNumber::fromInt64(1)),
                                  AttributedText(text.substr(start, length), RunType::number)));
        result.append(makeElement({}, AttributedText(text.substr(start + length))));
    }
    return replacer.finished();
}

std::optional<ElementList> NumberWordEvaluator::withWords(const ElementList& elements, Context& context) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Value& value = elements[i].value;
        const auto become = [&](std::size_t end, const DecimalNumber& number) {
            const std::u16string text = elements.slice(i, end).text();
            std::size_t length = text.size();
            while (length > 0 && isWhitespace(text[length - 1])) --length;
            ElementList& result = replacer.replace({i, end - i});
            result.append(makeElement(Value(number), AttributedText(text.substr(0, length), RunType::number)));
            if (length < text.size()) result.append(plainText(text.substr(length)));
        };
        const std::size_t next = neighbourOf(elements, i, 1);
        const std::size_t third = neighbourOf(elements, next, 1);
        const auto isCounted = [&](std::size_t k) { return isUnitAt(elements, k) || scaleAt(elements, k); };
        if (isNumerator(elements[i]) && isCounted(next) && isAddend(elements, third)) {
            become(i + 1, value.decimal()->adding(*elements[third].value.decimal()));
            const std::u16string text = elements.slice(next, third + 1).text();
            replacer.replace({next, third + 1 - next})
                .append(makeElement(elements[next].value, AttributedText(text, RunType::unit)));
            i = third;
        } else if (isNumerator(elements[i]) && isAddend(elements, next) && isCounted(third)) {
            become(next + 1, value.decimal()->adding(*elements[next].value.decimal()));
            i = next;
        } else if (value.is(Attribute::type, number_word::mixed) && isCounted(next)) {
            become(i + 1, *value.decimal());
        } else if (isNumerator(elements[i]) && isFraction(elements, next)) {
            become(next + 1, value.decimal()->multiplying(*elements[next].value.decimal()));
            i = next;
        } else if (isFraction(elements, i)) {
            become(i + 1, *value.decimal());
        } else if (isWord(elements, i, number_word::multiple) && next < elements.size() &&
                   beginsValue(elements, next)) {
            become(i + 1, *value.decimal());
            replacer.replace({i + 1, next - i - 1}).append(unwrittenOperator(u"*", elements.slice(i + 1, next).text()));
        } else if (isWord(elements, i, number_word::count)) {
            const Count count = countAt(elements, i);
            if (count.end > 0) {
                become(count.end, count.number);
                i = count.end - 1;
            } else {
                replacer.replace({i, 1}).append(makeElement({}, AttributedText(elements[i].text())));
            }
        } else if (!isDecided(value)) {
            const std::u16string_view type = *value.string(Attribute::type);
            // Another amount of money on the line is told by its sign or code: "2 Kronen 800 €".
            if (type.starts_with(number_word::currency) && !elements.anyHas(Attribute::unit))
                remarksOf(context).note(NoteKind::unknownCurrency, elements.rangeOf(i, i + 1),
                                        trimmed(type.substr(number_word::currency.size())));
            replacer.replace({i, 1}).append(makeElement({}, AttributedText(elements[i].text())));
        }
    }
    return replacer.finished();
}

// "$2.5m" counts millions: nobody measures money in metres.
std::optional<ElementList> NumberWordEvaluator::withMillions(const ElementList& elements) const {
    if (!elements.anyHas(Attribute::unit)) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 2; i < elements.size(); ++i) {
        if (elements[i].text() != u"m" || !isUnitAlone(elements[i]) || !isNumberWithoutUnit(elements[i - 1])) continue;
        const std::u16string& sign = elements[i - 2].text();
        if (isUnitAlone(elements[i - 2]) && !sign.empty() && u_charType(sign.back()) == U_CURRENCY_SYMBOL)
            replacer.replace({i, 1}).append(
                makeElement(Value(Attribute::scale, u"million"), elements[i].attributedText));
    }
    return replacer.finished();
}

// "1万5000円", "2億3千万": one number of several parts, each less than the scale before it.
std::optional<ElementList> NumberWordEvaluator::withParts(const ElementList& elements) const {
    if (!elements.anyHas(Attribute::scale)) return std::nullopt;
    const auto isPart = [&](std::size_t i) {
        return i < elements.size() && isNumberWithoutUnit(elements[i]) && runTypeOf(elements[i]) == RunType::number;
    };
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        DecimalNumber number;
        int last = std::numeric_limits<int>::max();
        std::size_t end = i, parts = 0;
        for (; isPart(end); ++parts) {
            const Scale* scale = scaleAt(elements, end + 1);
            const DecimalNumber part = *elements[end].value.decimal();
            if (scale && !scale->isCount() && isCjk(elements[end + 1].text().front()) && scale->ratio < last) {
                number = number.adding(scale->times(part));
                last = scale->ratio;
                end += 2;
            } else if (parts > 0 && DecimalNumber::compare(part, powerOfTen(last)) == -1) {
                number = number.adding(part);
                ++end;
                last = 0;
            } else {
                break;
            }
        }
        if (parts < 2) continue;
        replacer.replace({i, end - i})
            .append(makeElement(Value(number), AttributedText(elements.slice(i, end).text(), RunType::number)));
        i = end - 1;
    }
    return replacer.finished();
}

std::optional<ElementList> NumberWordEvaluator::evaluate(const ElementList& elements, Context& context,
                                                         const EvaluationContext&) const {
    std::optional<ElementList> changed;
    const auto list = [&]() -> const ElementList& { return changed ? *changed : elements; };
    if (auto parts = withParts(list())) changed = std::move(parts);
    if (auto millions = withMillions(list())) changed = std::move(millions);
    if (auto articles = withArticles(list())) changed = std::move(articles);
    if (!list().anyHas(Attribute::type)) return changed;
    auto words = withWords(list(), context);
    return words ? words : changed;
}

}  // namespace vemo
