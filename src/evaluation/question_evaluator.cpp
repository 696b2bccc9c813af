// SPDX-License-Identifier: MIT
#include "evaluation/question_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr struct {
    std::u16string_view beginnings, links, operation;
} rows[] = {
    {u"how_many.variants", u"how_many_link.variants", u"in"},
    {u"what_percent_of.variants", u"what_percent_is.variants", u"percent_is"},
    {u"what_percent.variants", u"what_percent_link.variants", u"as_a_percent_of"},
    {u"percent_change.variants", u"percent_change_to.variants", u"percent_change"},
    {u"increase.variants", u"change_by.variants", u"+"},
    {u"decrease.variants", u"change_by.variants", u"-"},
    {u"share.variants", u"share_between.variants", u"/"},
};

bool contains(const std::vector<std::u16string>& words, std::u16string_view word) {
    return std::find(words.begin(), words.end(), spoken(word)) != words.end();
}

// Without the question mark and blanks at the ends.
std::u16string_view questionWords(std::u16string_view text) {
    text = trimmed(text);
    while (!text.empty() && (text.back() == u'?' || isWhitespace(text.back()))) text.remove_suffix(1);
    return text;
}

constexpr std::size_t fewestOfQuestion = 5;  // elements, of one that ends with what is asked

ElementPointer asText(const Element& element) {
    return makeElement({}, AttributedText(element.text(), runTypeOf(element)));
}

}  // namespace

QuestionEvaluator::QuestionEvaluator(const Localizer& localizer, const PercentageWords& percentageWords)
    : percentageWords_(percentageWords) {
    for (const auto& row : rows) {
        Question question{localizer.variants(row.beginnings, u"Operations"),
                          localizer.variants(row.links, u"Operations"), row.operation};
        if (question.beginnings.empty()) continue;
        // The longest first.
        std::stable_sort(question.beginnings.begin(), question.beginnings.end(),
                         [](const auto& a, const auto& b) { return a.size() > b.size(); });
        for (const std::u16string& beginning : question.beginnings) question.firstUnits += beginning.front();
        firstUnits_ += question.firstUnits;
        questions_.push_back(std::move(question));
    }
    wholeIs_ = localizer.variants(u"whole_is.variants", u"Operations");
    unanswered_ = localizer.variants(u"unanswered.variants", u"Operations");
    for (const std::u16string& words : unanswered_) unansweredUnits_ += words.front();
    changeTo_ = localizer.variants(u"percent_change_to.variants", u"Operations");
    changeAsked_ = localizer.variants(u"percent_change_asked.variants", u"Operations");
    wholeAsked_ = localizer.variants(u"whole_asked.variants", u"Operations");
}

std::optional<ElementList> QuestionEvaluator::evaluate(const ElementList& elements, Context& context,
                                                       const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::parenthesis)) return answered(elements, context);
    // Brackets may hold a question: "(how many cm in 5 inches) / 2".
    ElementReplacer replacer(elements);
    std::size_t opened = elements.size();
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (elements[i].value.is(Attribute::parenthesis, u"(")) opened = i;
        if (opened >= i || !elements[i].value.is(Attribute::parenthesis, u")")) continue;
        if (const auto inside = answered(elements.slice(opened + 1, i), context)) {
            ElementList& result = replacer.replace({opened + 1, i - opened - 1});
            for (const ElementPointer& element : inside->pointers()) result.append(element);
        }
        opened = elements.size();
    }
    std::optional<ElementList> inside = replacer.finished();
    auto whole = answered(inside ? *inside : elements, context);
    return whole ? whole : inside;
}

std::optional<ElementList> QuestionEvaluator::answered(const ElementList& elements, Context& context) const {
    const std::size_t start = startOfWords(elements);
    if (elements.size() < start + 3) return std::nullopt;
    if (auto difference = lessThan(elements, start)) return difference;
    if (auto change = askedChange(elements)) return change;
    if (!hasPlainWords(elements)) return std::nullopt;
    if (elements.anyHas(Attribute::decimal) || elements.anyHas(Attribute::date)) noteUnanswered(elements, context);
    if (auto whole = askedWhole(elements)) return whole;
    const std::u16string_view text = trimmed(elements[start].text());
    if (text.empty() || firstUnits_.find(lowercasedUnit(text.front())) == std::u16string::npos) return std::nullopt;
    for (const Question& question : questions_) {
        if (question.firstUnits.find(lowercasedUnit(text.front())) == std::u16string::npos) continue;
        const std::size_t end = endOfBeginning(elements, start, question);
        if (end == start) continue;
        auto result = question.operation == u"in" ? asConversion(elements, start, end, question)
                                                  : asOperation(elements, start, end, question, context);
        if (result) return result;
    }
    return std::nullopt;
}

// "$64 is 20% off what": the amount is told, and what it is a part of is asked for. Nothing for other lines.
std::optional<ElementList> QuestionEvaluator::askedWhole(const ElementList& elements) const {
    if (elements.size() < fewestOfQuestion) return std::nullopt;
    const std::size_t last = lastWritten(elements);
    if (last >= elements.size() || !isPlainWords(elements[last])) return std::nullopt;
    // "is 20% off", or the words up to the percentage: "more than", or "less", which is an operator, and "than".
    std::size_t relation = neighbourOf(elements, last, -1);
    auto id = relation < elements.size() ? elements[relation].value.string(Attribute::operation) : std::nullopt;
    if (!contains(wholeAsked_, questionWords(elements[last].text()))) {
        relation = last;
        while (relation > 0 && !elements[relation - 1].value.is(Attribute::unit, u"percent")) --relation;
        if (relation == 0) return std::nullopt;
        id = askedComparison(elements.slice(relation, last + 1).text());
    }
    if (!id || (*id != u"percent_of" && *id != u"percent_on" && *id != u"percent_off")) return std::nullopt;
    const std::size_t percent = neighbourOf(elements, relation, -1);
    if (percent >= elements.size() || !elements[percent].value.is(Attribute::unit, u"percent")) return std::nullopt;
    const std::size_t number = isUnitAlone(elements[percent]) ? neighbourOf(elements, percent, -1) : percent;
    const std::size_t link = number < elements.size() ? neighbourOf(elements, number, -1) : elements.size();
    if (link >= elements.size() || link == 0 || !elements[number].value.has(Attribute::decimal) ||
        !contains(wholeIs_, elements[link].text()))
        return std::nullopt;
    ElementList result = elements.slice(0, link);
    result.append(
        makeElement(Value(Attribute::operation, u"is_" + std::u16string(*id)), elements[link].attributedText));
    for (std::size_t i = link + 1; i < elements.size(); ++i)
        result.append(i < relation ? elements.pointers()[i] : asText(elements[i]));
    return result;
}

// "born May 12 1984, how old": words that ask for more than they stand beside.
void QuestionEvaluator::noteUnanswered(const ElementList& elements, Context& context) const {
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!isPlainWords(elements[i])) continue;
        const std::u16string_view text = elements[i].text();
        for (std::size_t place = 0; place < text.size(); ++place) {
            const bool begins = place == 0 || !isLetter(text[place - 1]) || isCjk(text[place]);
            if (!begins || unansweredUnits_.find(lowercasedUnit(text[place])) == std::u16string::npos) continue;
            for (const std::u16string& words : unanswered_) {
                const std::size_t end = place + words.size();
                if (end > text.size() || (end < text.size() && isLetter(text[end]) && !isCjk(words.back())) ||
                    lowercased(text.substr(place, words.size())) != words)
                    continue;
                remarksOf(context).note(NoteKind::unknownWord,
                                        {elements.rangeOf(i, i + 1).location + place, words.size()},
                                        text.substr(place, words.size()));
            }
        }
    }
}

// Of "more than what?" the operator that the words before what is asked stand for; empty for none.
std::u16string_view QuestionEvaluator::askedComparison(std::u16string_view words) const {
    const std::u16string lower = spoken(questionWords(words));
    for (const std::u16string& asked : wholeAsked_) {
        if (!lower.ends_with(asked)) continue;
        const auto operation =
            percentageWords_.comparison(std::u16string_view(lower).substr(0, lower.size() - asked.size()));
        if (!operation.empty()) return operation;
    }
    return {};
}

// "80 to 100 is what % increase", "from 10 to 15 % change": two amounts, and words that ask for the change.
std::optional<ElementList> QuestionEvaluator::askedChange(const ElementList& elements) const {
    if (elements.size() < fewestOfQuestion || !elements.anyHas(Attribute::unit)) return std::nullopt;
    const std::size_t ending = lastWritten(elements);
    if (ending >= elements.size() ||
        !(isPlainWords(elements[ending]) || elements[ending].value.is(Attribute::unit, u"percent")))
        return std::nullopt;
    std::size_t second = elements.size();
    while (second > 0 && !isNumberWithoutUnit(elements[second - 1])) --second;
    if (second-- < 2) return std::nullopt;
    std::size_t end = second + 1;
    const std::size_t unit = neighbourOf(elements, second, 1);
    if (unit < elements.size() && isUnitAlone(elements[unit]) && !elements[unit].value.is(Attribute::unit, u"percent"))
        end = unit + 1;
    std::size_t last = end;
    while (last < elements.size() && runTypeOf(elements[last]) != RunType::comment) ++last;
    if (!contains(changeAsked_, questionWords(elements.slice(end, last).text()))) return std::nullopt;
    std::size_t link = neighbourOf(elements, second, -1);
    if (link < second && isUnitAlone(elements[link])) link = neighbourOf(elements, link, -1);
    if (link == 0 || link > second || !contains(changeTo_, elements[link].text())) return std::nullopt;
    const std::size_t first = neighbourOf(elements, link, -1);
    const bool amount = first < link && (elements[first].value.has(Attribute::decimal) || isUnitAlone(elements[first]));
    if (!amount) return std::nullopt;
    ElementList result = elements.slice(0, link);
    result.append(makeElement(Value(Attribute::operation, u"percent_change"), elements[link].attributedText));
    for (std::size_t i = link + 1; i < elements.size(); ++i)
        result.append(i < end || i >= last ? elements.pointers()[i] : asText(elements[i]));
    return result;
}

// "7 less than 20", "$15 off $60": what is left of the second amount.
std::optional<ElementList> QuestionEvaluator::lessThan(const ElementList& elements, std::size_t start) const {
    const auto isUnit = [&](std::size_t i) {
        return i < elements.size() && isUnitAlone(elements[i]) && !elements[i].value.is(Attribute::unit, u"percent");
    };
    const std::size_t number = isUnit(start) ? neighbourOf(elements, start, 1) : start;
    if (number >= elements.size() || !isNumberWithoutUnit(elements[number])) return std::nullopt;
    std::size_t less = neighbourOf(elements, number, 1);
    if (isUnit(less)) less = neighbourOf(elements, less, 1);
    if (less >= elements.size()) return std::nullopt;
    std::size_t end = less + 1;
    const bool quantity = number > start || less > neighbourOf(elements, number, 1);
    if (isOperator(elements[less], u"-")) {
        end = neighbourOf(elements, less, 1) + 1;
        if (end > elements.size() || !isPlainWords(elements[end - 1]) ||
            !percentageWords_.isLessThan(elements.slice(less, end).text()))
            return std::nullopt;
    } else if (!isOperator(elements[less], u"percent_off") || !quantity) {
        return std::nullopt;
    }
    if (!beginsValue(elements, neighbourOf(elements, end - 1, 1))) return std::nullopt;
    ElementList result = elements.slice(0, start);
    result.append(makeElement(Value(Attribute::operation, u"-"), {}));
    for (std::size_t i = start; i < less; ++i) result.append(elements.pointers()[i]);
    result.append(unwrittenOperator(u"+", elements.slice(less, end).text()));
    for (std::size_t i = end; i < elements.size(); ++i) result.append(elements.pointers()[i]);
    return result;
}

// The element after the words that the question begins with; `start` where it does not.
std::size_t QuestionEvaluator::endOfBeginning(const ElementList& elements, std::size_t start,
                                              const Question& question) const {
    const std::size_t longest = question.beginnings.front().size();
    std::u16string text;
    std::size_t best = start;
    for (std::size_t end = start; end < elements.size() && text.size() <= longest; ++end) {
        text = spoken(text + elements[end].text()) + (endsWithBlank(elements[end]) ? u" " : u"");
        if (contains(question.beginnings, text)) best = end + 1;
    }
    return best;
}

std::optional<ElementList> QuestionEvaluator::asConversion(const ElementList& elements, std::size_t start,
                                                           std::size_t end, const Question& question) const {
    // "how many 400 m in 5 km": a quotient.
    const std::size_t first = end < elements.size() ? neighbourOf(elements, end - 1, 1) : elements.size();
    const bool counted = first < elements.size() && isNumberWithoutUnit(elements[first]);
    const std::size_t unit = counted ? neighbourOf(elements, first, 1) : first;
    if (unit >= elements.size() || !isUnitAlone(elements[unit])) return std::nullopt;
    std::size_t value = unit + 1;
    while (value < elements.size() && !beginsValue(elements, value)) ++value;
    if (value >= elements.size() || !contains(question.links, elements.slice(unit + 1, value).text()))
        return std::nullopt;
    ElementList result = elements.slice(0, start);
    for (std::size_t i = start; i < value; ++i) result.append(asText(elements[i]));
    for (std::size_t i = value; i < elements.size(); ++i) result.append(elements.pointers()[i]);
    result.append(makeElement(Value(Attribute::operation, u"in"), {}));
    result.append(makeElement(elements[unit].value, {}));
    if (counted) {
        result.append(makeElement(Value(Attribute::operation, u"/"), {}));
        result.append(makeElement(elements[first].value, {}));
        result.append(makeElement(elements[unit].value, {}));
    }
    return result;
}

std::optional<ElementList> QuestionEvaluator::asOperation(const ElementList& elements, std::size_t start,
                                                          std::size_t end, const Question& question,
                                                          Context& context) const {
    bool value = false;
    for (std::size_t i = end; i < elements.size(); ++i) {
        const std::u16string_view words = trimmed(elements[i].text());
        if (value && isPlainWords(elements[i]) && contains(question.links, words.substr(0, words.find(u' '))) &&
            words.find(u' ') != words.npos) {
            // "decrease 90 by a third"
            remarksOf(context).note(NoteKind::unknownWord, elements.trimmedRangeOf(i, i + 1), words);
            return std::nullopt;
        }
        if (!value || i + 1 == elements.size() || !contains(question.links, words)) {
            value = value || elements[i].value.has(Attribute::decimal);
            continue;
        }
        ElementList result = elements.slice(0, start);
        for (std::size_t k = start; k < end; ++k) result.append(asText(elements[k]));
        // "split $75.30 between 3 of us": what follows the number tells who.
        const std::size_t count = neighbourOf(elements, i, 1);
        const bool shared =
            question.operation == u"/" && count < elements.size() && isNumberWithoutUnit(elements[count]);
        for (std::size_t k = end; k < elements.size(); ++k) {
            if (k == i)
                result.append(makeElement(Value(Attribute::operation, question.operation), elements[i].attributedText));
            else
                result.append(shared && k > count ? asText(elements[k]) : elements.pointers()[k]);
        }
        return result;
    }
    return std::nullopt;
}

}  // namespace vemo
