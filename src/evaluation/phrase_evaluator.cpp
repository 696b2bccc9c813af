// SPDX-License-Identifier: MIT
#include "evaluation/phrase_evaluator.h"

#include <algorithm>
#include <utility>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// The ways of putting it, as a key of the phrase tables, and what is calculated. Of two that match, the first is taken.
constexpr struct {
    std::u16string_view key, reading;
} readings[] = {
    {u"age.phrases", u"age {date}"},
    {u"weekday.phrases", u"weekday {date}"},
    {u"net.phrases", u"( {value} ) is_percent_on {percent}"},
    {u"tax_part.phrases", u"( {value} ) - ( ( {value} ) is_percent_on {percent} )"},
    {u"gross.phrases", u"( {value} ) + {percent}"},
    // An annuity: the amount times r / (1 - (1 + r)^-n), for n payments and the interest r between two.
    {u"payment_in_years.phrases",
     u"( {value} ) * ( {percent} / 12 ) / ( 1 - ( 1 + {percent} / 12 ) ^ ( 0 - {number} * 12 ) )"},
    {u"payment_in_months.phrases",
     u"( {value} ) * ( {percent} / 12 ) / ( 1 - ( 1 + {percent} / 12 ) ^ ( 0 - {number} ) )"},
    {u"compound_interest.phrases", u"( {value} ) * ( 1 + {percent} ) ^ {number}"},
    {u"simple_interest.phrases", u"( {value} ) * {percent} * {number}"},
    {u"price_of_one.phrases", u"{quantity} / {number}"},
    {u"price_of_more.phrases", u"{quantity} / {number} * {number2}"},
    {u"scaled.phrases", u"{quantity} * {number2} / {number}"},
    {u"original_price.phrases", u"{quantity} is_percent_off {percent}"},
    {u"amount_needed.phrases", u"{quantity} / ( {value} ) in {unit}"},
    {u"in_percent.phrases", u"{value} in [percent]"},
    {u"distance.phrases", u"( {value} ) * {quantity}"},
    {u"travel_time.phrases", u"{quantity} / ( {value} )"},
    {u"remainder.phrases", u"{number} mod {number2}"},
    {u"less_than.phrases", u"- {quantity} + {value}"},
    {u"less_than_number.phrases", u"- {number} + {value}"},
    {u"percent_change_asked.phrases", u"{value} percent_change {value2}"},
    {u"whole_of.phrases", u"{value} is_percent_of {percent}"},
    {u"whole_on.phrases", u"{value} is_percent_on {percent}"},
    {u"whole_off.phrases", u"{value} is_percent_off {percent}"},
    {u"more_than.phrases", u"{percent} percent_on {value}"},
    {u"percent_less_than.phrases", u"{percent} percent_off {value}"},
    {u"how_many.phrases", u"{value} in {unit}"},
    {u"how_many_measures.phrases", u"{value} in {unit} / {number} {unit}"},
    {u"what_percent_is.phrases", u"{value} percent_is {value2}"},
    {u"what_percent_of.phrases", u"{value} as_a_percent_of {value2}"},
    {u"percent_change.phrases", u"{value} percent_change {value2}"},
    {u"increase.phrases", u"{value} + {value2}"},
    {u"decrease.phrases", u"{value} - {value2}"},
    {u"split.phrases", u"( {value} ) / {number} {tail}"},
    {u"split_all.phrases", u"( {value} + {percent} ) / {number}"},
    {u"share_among.phrases", u"{value} / {number}"},
    {u"share.phrases", u"{value} / {value2}"},
    {u"celsius.phrases", u"{number} [celsius] {tail}"},
    {u"fahrenheit.phrases", u"{number} [fahrenheit] {tail}"},
    {u"half_read.phrases", u""},
};

// Of a part of a reading that is no slot.
Value meaningOf(std::u16string_view part) {
    if (digitValue(part.front()) >= 0) return Value(DecimalNumber::parse(part));
    if (part.front() == u'[') return Value(Attribute::unit, part.substr(1, part.size() - 2));
    const bool bracket = part == u"(" || part == u")";
    return Value(bracket ? Attribute::parenthesis : Attribute::operation, part);
}

// The pattern with the words of each list in angle brackets as a choice.
std::u16string withLists(std::u16string pattern, const Localizer& localizer) {
    for (std::size_t begin = pattern.find(u'<'); begin != pattern.npos; begin = pattern.find(u'<', begin)) {
        const std::size_t end = std::min(pattern.find(u'>', begin), pattern.size() - 1);
        const std::u16string key = pattern.substr(begin + 1, end - begin - 1) + u".variants";
        std::u16string choice;
        for (const std::u16string& word : localizer.variants(key, u"Phrases"))
            choice += (choice.empty() ? u"" : u"|") + word;
        pattern.replace(begin, end + 1 - begin, u"(" + choice + u")");
    }
    return pattern;
}

// What has been read keeps its text only: words are coloured as operators are.
void appendRead(const Element& element, ElementList& list) {
    const std::u16string_view text = element.text(), words = trimmed(text);
    const auto append = [&](std::u16string_view part, RunType type) {
        if (!part.empty()) list.append(makeElement({}, AttributedText(part, type)));
    };
    if (!isPlainWords(element)) return append(text, runTypeOf(element));
    const auto begin = static_cast<std::size_t>(words.data() - text.data());
    append(text.substr(0, begin), RunType::none);
    append(words, RunType::operatorWord);
    append(text.substr(begin + words.size()), RunType::none);
}

}  // namespace

PhraseEvaluator::PhraseEvaluator(const Localizer& localizer, const std::function<void(std::string_view)>& log)
    : localizer_(localizer), log_(log) {}

void PhraseEvaluator::readTables() const {
    for (const auto& row : readings)
        for (const std::u16string& pattern : localizer_.variants(row.key, u"Phrases"))
            if (auto made = phrase(withLists(pattern, localizer_), row.reading)) {
                filters_.push_back(made->pattern.filter());
                phrases_.push_back(*std::move(made));
            } else if (log_) {
                log_("a phrase can't be read: " + toUtf8(row.key) + ": " + toUtf8(pattern));
            }
}

std::optional<PhraseEvaluator::Phrase> PhraseEvaluator::phrase(std::u16string_view text, std::u16string_view reading) {
    auto pattern = PhrasePattern::parsed(text);
    if (!pattern) return std::nullopt;
    Phrase result{*std::move(pattern), {}};
    while (!reading.empty()) {
        const std::size_t end = std::min(reading.find(u' '), reading.size());
        const std::u16string_view part = reading.substr(0, end);
        reading.remove_prefix(std::min(end + 1, reading.size()));
        if (!part.starts_with(u'{')) {
            result.reading.push_back({{}, meaningOf(part)});
            continue;
        }
        const auto slot = result.pattern.slot(part.substr(1, part.size() - 2));
        if (!slot) return std::nullopt;
        result.reading.push_back({slot, {}});
    }
    return result;
}

std::optional<ElementList> PhraseEvaluator::evaluate(const ElementList& elements, Context& context,
                                                     const EvaluationContext&) const {
    if (!hasWords(elements, 0)) return std::nullopt;
    if (!elements.anyHas(Attribute::parenthesis)) return calculation(elements, context);
    // Brackets may hold one: "(how many cm in 5 inches) / 2".
    ElementReplacer replacer(elements);
    std::size_t opened = elements.size();
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (elements[i].value.is(Attribute::parenthesis, u"(")) opened = i;
        if (opened >= i || !elements[i].value.is(Attribute::parenthesis, u")")) continue;
        if (const auto inside = calculation(elements.slice(opened + 1, i), context)) {
            ElementList& result = replacer.replace({opened + 1, i - opened - 1});
            for (const ElementPointer& element : inside->pointers()) result.append(element);
        }
        opened = elements.size();
    }
    std::optional<ElementList> inside = replacer.finished();
    auto whole = calculation(inside ? *inside : elements, context);
    return whole ? whole : inside;
}

std::optional<ElementList> PhraseEvaluator::calculation(const ElementList& elements, Context& context) const {
    const std::size_t start = startOfWords(elements);
    if (!hasWords(elements, start)) return std::nullopt;
    if (phrases_.empty()) readTables();
    const PhrasePattern::Line line(elements, start);
    for (std::size_t i = 0; i < phrases_.size(); ++i) {
        if (!filters_[i].admits(line)) continue;
        const Phrase& phrase = phrases_[i];
        const auto ranges = phrase.pattern.match(line);
        if (!ranges) continue;
        if (!phrase.reading.empty()) return rewritten(line, phrase, *ranges);
        const ElementRange& asked = ranges->back();
        remarksOf(context).note(NoteKind::unknownWord, elements.trimmedRangeOf(asked.location, asked.end()),
                                trimmed(elements.slice(asked.location, asked.end()).text()));
        return std::nullopt;
    }
    return std::nullopt;
}

// The elements keep their places and their text, so that they still join to the line: what is calculated elsewhere
// than it is written stands there without text, and where it was written as text alone.
ElementList PhraseEvaluator::rewritten(const PhrasePattern::Line& line, const Phrase& phrase,
                                       const std::vector<ElementRange>& ranges) {
    const ElementList& elements = line.elements;
    ElementList result = elements.slice(0, line.start);
    std::size_t taken = line.start;
    const Value* pending = nullptr;  // may have the words before the next slot as its text
    const auto appendPending = [&](AttributedText text) {
        if (pending) result.append(makeElement(*std::exchange(pending, nullptr), std::move(text)));
    };
    for (const Part& part : phrase.reading) {
        if (!part.slot) {
            appendPending({});
            pending = &part.value;
            continue;
        }
        const ElementRange& range = ranges[*part.slot];
        const bool inPlace = range.location >= taken;
        if (inPlace && pending && range.location > taken) {
            appendPending(elements.attributedText(taken, range.location));
            taken = range.location;
        }
        appendPending({});
        if (inPlace)
            for (; taken < range.location; ++taken) appendRead(elements[taken], result);
        for (std::size_t i = range.location; i < range.end(); ++i)
            result.append(inPlace ? elements.pointers()[i] : makeElement(elements[i].value, {}));
        if (inPlace) taken = range.end();
    }
    appendPending({});
    for (; taken < line.end; ++taken) appendRead(elements[taken], result);
    for (; taken < elements.size(); ++taken) result.append(elements.pointers()[taken]);
    return result;
}

}  // namespace vemo
