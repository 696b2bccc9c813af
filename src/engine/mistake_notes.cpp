// SPDX-License-Identifier: MIT
#include "engine/mistake_notes.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "platform/locale_info.h"
#include "scanning/words/localizer.h"
#include "units/time_units.h"

namespace vemo {

namespace {

using Words = MistakeNotes::Words;

class MistakeFinder {
public:
    MistakeFinder(const ElementList& elements, const Words& words, MisspeltUnit misspelt)
        : elements_(elements), first_(firstWritten()), words_(words), misspelt_(misspelt) {}

    std::vector<MistakeNote> find() {
        nothingAssigned();
        if (first_ == elements_.size()) return std::move(notes_);
        static constexpr struct {
            Attribute needed;  // of some element
            void (MistakeFinder::*check)();
        } checks[] = {{Attribute::unit, &MistakeFinder::timeToNothing},
                      {Attribute::operation, &MistakeFinder::nothingBefore},
                      {Attribute::decimal, &MistakeFinder::malformedNumbers},
                      {Attribute::decimal, &MistakeFinder::numbersWithoutOperator},
                      {Attribute::decimal, &MistakeFinder::misspeltUnits},
                      {Attribute::operation, &MistakeFinder::unknownFactors},
                      {Attribute::operation, &MistakeFinder::conversionsOfWords},
                      {Attribute::operation, &MistakeFinder::dashedRanges}};
        for (const auto& row : checks)
            if (elements_.anyHas(row.needed)) (this->*row.check)();
        return std::move(notes_);
    }

private:
    void note(NoteKind kind, std::size_t from, std::size_t to) {
        const std::u16string words = elements_.slice(from, to).text();
        notes_.push_back({kind, elements_.trimmedRangeOf(from, to), std::u16string(trimmed(words))});
    }
    bool isComment(std::size_t i) const { return runTypeOf(elements_[i]) == RunType::comment; }
    // After a label and a name that is assigned to.
    std::size_t firstWritten() const {
        std::size_t first = startOfValue(elements_);
        while (first < elements_.size() && isBlank(elements_[first])) ++first;
        return first;
    }

    // "days until", "days until Smarch 5", "days between March 1 and": no day was found where one is asked for.
    void timeToNothing() {
        const std::size_t unit = first_;
        if (!isUnitAlone(elements_[unit])) return;
        const auto isThis = [&](const TimeUnit& time) { return elements_[unit].value.is(Attribute::unit, time.id); };
        if (unit + 1 >= elements_.size() || std::none_of(timeUnits.begin(), timeUnits.end(), isThis)) return;
        const Element& next = elements_[unit + 1];
        if (!isPlainWords(next)) return;
        const std::u16string words = lowercased(trimmed(next.text()));
        const std::size_t relation = relationOf(words);
        if (relation == 0) return;
        const std::size_t last = neighbourOf(elements_, elements_.size(), -1);
        const std::u16string_view after = trimmed(std::u16string_view(words).substr(relation));
        if (last == unit + 1 && after.empty()) return note(NoteKind::missingOperand, unit + 1, unit + 2);
        // Words alone may be prose.
        const bool endsOpen = last > unit + 1 && isAnd(elements_[last]);
        if (endsOpen) return note(NoteKind::missingOperand, last, last + 1);
        const bool numbers =
            std::any_of(elements_.pointers().begin() + static_cast<std::ptrdiff_t>(unit) + 2,
                        elements_.pointers().end(), [](const auto& e) { return e->value.has(Attribute::decimal); });
        const bool oneWord = last == unit + 1 && withoutArticle(after).find(u' ') == after.npos &&
                             isOneOf(words_.untilOrSince, words.substr(0, relation));
        if (after.empty() || !(numbers || oneWord)) return;
        const TextRange range = elements_.trimmedRangeOf(unit + 1, unit + 2);
        notes_.push_back({NoteKind::unknownWord, {range.end() - after.size(), after.size()}, std::u16string(after)});
    }
    static bool isOneOf(const std::vector<std::u16string>& words, std::u16string_view text) {
        return std::find(words.begin(), words.end(), text) != words.end();
    }
    std::u16string_view withoutArticle(std::u16string_view words) const {
        const std::size_t blank = words.find(u' ');
        const bool led = blank != words.npos && isOneOf(words_.articles, words.substr(0, blank));
        return led ? words.substr(blank + 1) : words;
    }
    bool isAnd(const Element& element) const {
        return element.value.isEmpty() && isOneOf(words_.rangeAnd, lowercased(trimmed(element.text())));
    }
    // The length of the word at the beginning that must be followed by a day or time; 0 without one.
    std::size_t relationOf(const std::u16string& words) const {
        std::size_t longest = 0;
        for (const std::u16string& phrase : words_.relations)
            if (words.starts_with(phrase) && (words.size() == phrase.size() || isWhitespace(words[phrase.size()])))
                longest = std::max(longest, phrase.size());
        return longest;
    }

    // "of 250", "in cm": an operator's word with nothing before it, and no other words.
    void nothingBefore() {
        const std::size_t op = first_;
        if (!elements_[op].value.has(Attribute::operation)) return;
        const Element& element = elements_[op];
        if (!hasLetter(element.text()) || hasPlainWords(elements_)) return;
        const std::size_t next = neighbourOf(elements_, op, 1);
        if (next == elements_.size()) return;
        const bool conversion = isOperator(element, u"in") && isUnitAlone(elements_[next]) &&
                                neighbourOf(elements_, next, 1) == elements_.size();
        // "de 8:00 a 15:30" tells of a span.
        const bool percentage = takesPercentage(element.value) && !elements_[next].value.has(Attribute::date);
        if (conversion || (percentage && beginsValue(elements_, next))) note(NoteKind::missingOperand, op, op + 1);
    }

    // "$12..50", "0xZZ": digits, and more that no number has.
    void malformedNumbers() {
        if (!elements_.anyHas(Attribute::operation) && !elements_.anyHas(Attribute::unit)) return;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (runTypeOf(elements_[i]) != RunType::number || !elements_[i].value.has(Attribute::decimal)) continue;
            const std::u16string& text = elements_[i].text();
            const bool doubled = text.find(u"..") != text.npos || text.find(u",,") != text.npos;
            if (doubled && isCalculated(i, i + 1)) {
                note(NoteKind::malformedNumber, i, i + 1);
            } else if (i + 1 < elements_.size() &&
                       (elements_[i].value.has(Attribute::nsystem) || isDigitAt(text, text.size() - 1)) &&
                       goesOn(elements_[i], elements_[i + 1]) && (i == 0 || !endsWithLetter(elements_[i - 1])) &&
                       isCalculated(i, i + 2)) {
                note(NoteKind::malformedNumber, i, i + 2);
            }
        }
    }
    static bool endsWithLetter(const Element& element) {
        return !element.text().empty() && isLetter(element.text().back());
    }
    // True when a word without a meaning stands right after the number; after a hexadecimal one and its like, when any
    // letter or digit does.
    static bool goesOn(const Element& number, const Element& next) {
        const std::u16string& text = next.text();
        if (text.empty() || isCjk(text.front())) return false;
        if (number.value.has(Attribute::nsystem) && !number.value.is(Attribute::nsystem, u"sci"))
            return isLetter(text.front()) || digitValue(text.front()) >= 0;
        return isPlainWords(next) && isLetter(text.front()) && trimmed(text).find(u' ') == std::u16string_view::npos;
    }
    // True when a sign of arithmetic or of money stands beside it.
    bool isCalculated(std::size_t from, std::size_t to) const {
        const std::size_t before = neighbourOf(elements_, from, -1), after = neighbourOf(elements_, to - 1, 1);
        const auto isSign = [&](std::size_t i) {
            return i < elements_.size() && elements_[i].value.has(Attribute::operation) &&
                   !hasLetter(elements_[i].text());
        };
        const bool money = from > 0 && before + 1 == from && isUnitAlone(elements_[before]) &&
                           (to == from + 1 || after == to);  // "$1O.50"
        return isSign(before) || isSign(after) || money;
    }

    // "8 divded by 2": two numbers, and between them words that are no operator.
    void numbersWithoutOperator() {
        const std::size_t words = neighbourOf(elements_, first_, 1), second = neighbourOf(elements_, words, 1);
        if (second >= elements_.size() || neighbourOf(elements_, second, 1) < elements_.size() ||
            !isBareNumber(first_) || !isPlainWords(elements_[words]) || !isBareNumber(second) ||
            elements_[words].text().find(u'@') != std::u16string::npos)  // "3 beers @ 6.50" is a product
            return;
        note(NoteKind::unusedValue, second, second + 1);
    }
    bool isBareNumber(std::size_t i) const {
        return isNumberWithoutUnit(elements_[i]) && runTypeOf(elements_[i]) == RunType::number;
    }

    // "rent =": a name, and no value for it.
    void nothingAssigned() {
        const std::size_t last = neighbourOf(elements_, elements_.size(), -1);
        if (last == 0 || last >= elements_.size() || !elements_[last].value.has(Attribute::assignment)) return;
        if (elements_.anyHas(Attribute::decimal) || elements_.anyHas(Attribute::operation)) return;
        note(NoteKind::missingOperand, last, last + 1);
    }

    // "price * quantity", "total = price + tax": words that are calculated with, and none has a value.
    void unknownFactors() {
        if (elements_.anyHas(Attribute::decimal) || elements_.anyHas(Attribute::date) ||
            elements_.anyHas(Attribute::unit))
            return;
        const bool assigned = elements_.anyHas(Attribute::assignment);
        bool expectsWord = true, calculated = false;
        std::vector<std::size_t> words;
        for (std::size_t i = first_; i < elements_.size() && !isComment(i); ++i) {
            const Element& element = elements_[i];
            if (isBlank(element)) continue;
            if (expectsWord) {
                if (!isPlainWords(element) || trimmed(element.text()).find(u' ') != std::u16string::npos) return;
                words.push_back(i);
            } else {
                constexpr std::u16string_view always = u"*\u00d7\u00f7^", whereAssigned = u"+-/";
                const std::u16string_view sign = element.text();
                if (!element.value.has(Attribute::operation) || sign.size() != 1) return;
                if (always.find(sign) == always.npos && !(assigned && whereAssigned.find(sign) != always.npos)) return;
                calculated = true;
            }
            expectsWord = !expectsWord;
        }
        if (expectsWord || !calculated) return;
        for (const std::size_t word : words) note(NoteKind::unknownWord, word, word + 1);
    }

    // "5 kilometrs + 3 km": the word after a number is nearly a unit.
    void misspeltUnits() {
        for (std::size_t i = 1; i < elements_.size(); ++i) {
            if (!isPlainWords(elements_[i]) || !isBareNumber(i - 1)) continue;
            const std::u16string& text = elements_[i].text();
            const std::size_t begin = isWhitespace(text.front()) ? 1 : 0;
            std::size_t end = begin;
            while (end < text.size() && isLetter(text[end])) ++end;
            const std::u16string_view word = std::u16string_view(text).substr(begin, end - begin);
            // "10 prints x $25": a thing that is counted.
            const std::size_t next = neighbourOf(elements_, i, 1);
            if (next < elements_.size() && isOperator(elements_[next], u"*")) continue;
            if (misspelt_(lowercased(word)))
                notes_.push_back({NoteKind::unknownWord,
                                  {elements_.rangeOf(i, i + 1).location + begin, word.size()},
                                  std::u16string(word)});
        }
    }

    // "2-3 cups", "$20-30": the smaller number first, and one unit for both.
    void dashedRanges() {
        for (std::size_t i = 1; i + 1 < elements_.size(); ++i) {
            if (!isOperator(elements_[i], u"-") || !isBareNumber(i - 1) || !isBareNumber(i + 1)) continue;
            const std::size_t before = neighbourOf(elements_, i - 1, -1), after = neighbourOf(elements_, i + 1, 1);
            const auto isUnit = [&](std::size_t k) { return k < elements_.size() && isUnitAlone(elements_[k]); };
            const bool money = before + 2 == i && isUnit(before);
            const bool led = before < i && !money && !isPlainWords(elements_[before]);
            // "10-12 people", "call 555-1234"
            const bool words = isWholeNumber(elements_[i - 1]) && isWholeNumber(elements_[i + 1]) &&
                               ((after < elements_.size() && isPlainWords(elements_[after])) ||
                                (before < i && isPlainWords(elements_[before])));
            const bool digits = words && elements_[i + 1].text().front() == u'0' && elements_[i + 1].text().size() > 1;
            if (led || (!money && !words && !isUnit(after))) continue;
            const DecimalNumber from = *elements_[i - 1].value.decimal(), to = *elements_[i + 1].value.decimal();
            if (digits || DecimalNumber::compare(from, to) == -1) note(NoteKind::dashedRange, i - 1, i + 2);
        }
    }

    // True when a number is written beside the operator, with or without a unit, and nothing else on that side.
    bool isNumberAlone(std::size_t op, int step) const {
        const auto isNumber = [&](std::size_t i) {
            return i < elements_.size() && runTypeOf(elements_[i]) == RunType::number &&
                   isNumberWithoutUnit(elements_[i]) && !elements_[i].value.has(Attribute::nsystem);
        };
        std::size_t number = neighbourOf(elements_, op, step);
        if (step < 0 && number < elements_.size() && isUnitAlone(elements_[number]))
            number = neighbourOf(elements_, number, step);
        if (!isNumber(number)) return false;
        std::size_t next = neighbourOf(elements_, number, step);
        if (step > 0 && next < elements_.size() && isUnitAlone(elements_[next]))
            next = neighbourOf(elements_, next, step);
        // "sum of 1 to 100", "5 to 10 km in miles"
        return next == elements_.size() ||
               elements_[next].value.has(step < 0 ? Attribute::function : Attribute::operation);
    }

    // True for the number of a rate: "90 km a 60 km/h", "5 km a 6 min/km" divide, and convert nothing.
    bool isOfRate(std::size_t number) const {
        const std::size_t unit = neighbourOf(elements_, number, 1);
        const auto id = unit < elements_.size() ? elements_[unit].value.string(Attribute::unit) : std::nullopt;
        const bool divided = unit + 1 < elements_.size() && isOperator(elements_[unit + 1], u"/");
        return id && (divided || id->find(u'/') != id->npos);
    }

    // "7 flurbs * 3 in kg": what is converted has no unit but a word after a number.
    void conversionsOfWords() {
        bool units = false, calculated = false;
        std::size_t word = elements_.size();
        for (std::size_t i = first_; i < elements_.size(); ++i) {
            const Value& value = elements_[i].value;
            if (isOperator(elements_[i], u"in")) {
                const std::size_t target = neighbourOf(elements_, i, 1);
                const bool unit = target < elements_.size() && isUnitAlone(elements_[target]) &&
                                  !elements_[target].value.is(Attribute::unit, u"percent");
                if (unit && !units && calculated && word < elements_.size())
                    note(NoteKind::notConverted, word, word + 1);
                // "9 to 5", "5 km to 10 km"
                if (target < elements_.size() && isNumberAlone(i, -1) && isNumberAlone(i, 1) && !isOfRate(target))
                    note(NoteKind::notConverted, target, target + 1);
                return;
            }
            units = units || value.has(Attribute::unit) || value.has(Attribute::date) ||
                    value.has(Attribute::function) || runTypeOf(elements_[i]) == RunType::variable;
            calculated = calculated || value.has(Attribute::operation);
            const bool afterNumber = i > 0 && isNumberWithoutUnit(elements_[i - 1]);
            if (afterNumber && !calculated && isPlainWords(elements_[i])) word = i;
        }
    }

    const ElementList& elements_;
    const std::size_t first_;  // where the written value begins
    const Words& words_;
    MisspeltUnit misspelt_;
    std::vector<MistakeNote> notes_;
};

}  // namespace

MistakeNotes::MistakeNotes(const Localizer& localizer)
    : words_([&] {
          constexpr std::u16string_view table = u"Dates";
          Words words{localizer.variants(u"article.variants", table),
                      localizer.variants(u"range_and.variants", table),
                      {},
                      localizer.variants(u"range_from.variants", table)};
          for (const std::u16string_view key : {u"until.variants", u"since.variants"})
              for (std::u16string& word : localizer.variants(key, table)) {
                  words.relations.push_back(word);
                  words.untilOrSince.push_back(std::move(word));
              }
          return words;
      }()) {}

std::vector<MistakeNote> MistakeNotes::of(const ElementList& written, MisspeltUnit misspelt) const {
    return MistakeFinder(written, words_, misspelt).find();
}

}  // namespace vemo
