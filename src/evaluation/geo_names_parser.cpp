// SPDX-License-Identifier: MIT
#include "evaluation/geo_names_parser.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "platform/locale_info.h"
#include "records/context_map.h"
#include "records/remarks.h"
#include "scanning/dates/time_zone_abbreviations.h"

namespace vemo {

namespace {

// A place with the white space around it, as elements of their own.
void appendPlace(const std::u16string& text, std::u16string_view name, std::u16string zone, ElementList& elements) {
    const std::size_t start = text.find(name);
    const auto plain = [&](std::u16string_view space) {
        if (!space.empty()) elements.append(makeElement({}, AttributedText(space)));
    };
    plain(std::u16string_view(text).substr(0, start));
    elements.append(makeElement(Value(TimeZone{std::move(zone)}), AttributedText(name, RunType::unit)));
    plain(std::u16string_view(text).substr(start + name.size()));
}

constexpr std::size_t mostElements =
    9;  // of a place: the words of "Port of Spain" and "Port-au-Prince" are other things too

bool isConversion(const Element& element) {
    return element.value.is(Attribute::operation, u"in");
}
bool isTimeFunction(const Element& element) {
    return element.value.is(Attribute::function, u"time");
}

// True for what a place may stand after: a time, a zone or a function, such as "time". "Coffee in Berlin $5" is a note.
bool isOfTime(const Element& element) {
    return element.value.has(Attribute::date) || element.value.has(Attribute::timeZone) ||
           element.value.has(Attribute::function);
}

// True for what may stand beside a place. Words beside anything else are sent to no server.
bool isMoment(const Element& element) {
    if (element.value.has(Attribute::date) || element.value.has(Attribute::timeZone)) return true;
    const auto function = element.value.string(Attribute::function);
    constexpr std::u16string_view ofTime[] = {u"time", u"local_tz", u"today", u"yesterday", u"tomorrow"};
    return function && std::find(std::begin(ofTime), std::end(ofTime), *function) != std::end(ofTime);
}

bool touches(char16_t end, char16_t begin) {
    return isLetter(end) && isLetter(begin);
}

// True for words and nothing else, such as an unknown place: "Shangri-La".
bool isText(const ElementList& elements, std::size_t from, std::size_t to) {
    bool letters = false;
    for (std::size_t i = from; i < to; ++i) {
        const Element& element = elements[i];
        const bool hyphen = element.value.is(Attribute::operation, u"-") && i > from && i + 1 < to &&
                            touches(elements[i - 1].text().back(), elements[i + 1].text().front());
        if (hyphen) continue;
        for (const AttributedText::Run& run : element.attributedText.runs())
            if (run.type != RunType::none) return false;
        letters = letters ||
                  std::any_of(element.text().begin(), element.text().end(), [](char16_t c) { return isLetter(c); });
    }
    return letters;
}

bool beginsWithCapital(const ElementList& elements, std::size_t from, std::size_t to) {
    const std::u16string text = elements.attributedText(from, to).compoundString();
    const std::u16string_view first = trimmed(text).substr(0, 1);
    // A letter that has no small one counts.
    return lowercased(first) != first || (!first.empty() && u_charType(first.front()) == U_OTHER_LETTER);
}

// True for the Japanese word between a place and a time, "東京の10時", which is an operator elsewhere.
bool isParticle(const Element& element) {
    return trimmed(element.text()) == u"\u306e";
}

// Where a number with the sign of hours right after it ends before a conversion, the place of the number: "15h à
// Tokyo".
std::optional<std::size_t> hoursBefore(const ElementList& elements, std::size_t conversion) {
    const std::size_t unit = neighbourOf(elements, conversion, -1);
    if (unit >= conversion || unit == 0 || !elements[unit].value.is(Attribute::unit, u"hour") ||
        !isUnitAlone(elements[unit]) || !isWholeNumber(elements[unit - 1]))
        return std::nullopt;
    return unit - 1;
}

ElementList unknownPlace(const ElementList& elements, std::size_t from, std::size_t to, Context& context) {
    const std::u16string words = elements.slice(from, to).text();
    remarksOf(context).reason(ReasonCode::unknownPlace, trimmed(words));
    return reducedTo(errorValue(), elements);
}

// "9am Narnia in London": a name between a time and a conversion is a place, which here nobody knows.
void wordsAfterTime(const ElementList& elements, std::size_t from, std::size_t conversion, Context& context) {
    if (from == 0 || from >= conversion || !isWrittenTime(elements[from - 1]) || !isText(elements, from, conversion) ||
        !beginsWithCapital(elements, from, conversion))
        return;
    const std::u16string words = elements.slice(from, conversion).text();
    remarksOf(context).note(NoteKind::unknownWord, elements.trimmedRangeOf(from, conversion), trimmed(words));
}

bool mayBeOfPlace(const Element& element) {
    const Value& value = element.value;
    return !value.has(Attribute::decimal) && !value.has(Attribute::parenthesis) && !isOfTime(element) &&
           !isConversion(element);
}

// True when words stand there up to a conversion. After a time they are a place in any case of letters: "7pm tokyo in
// london".
bool endsAtConversion(const ElementList& elements, std::size_t from) {
    std::size_t to = from;
    while (to < elements.size() && mayBeOfPlace(elements[to])) ++to;
    return to < elements.size() && isConversion(elements[to]) && isText(elements, from, to);
}

}  // namespace

std::optional<ElementList> GeoNamesParser::evaluate(const ElementList& elements, Context& context,
                                                    const EvaluationContext&) const {
    const auto& all = elements.pointers();
    if (std::none_of(all.begin(), all.end(),
                     [](const auto& e) { return isConversion(*e) || isTimeFunction(*e) || isWrittenTime(*e); }))
        return std::nullopt;
    return places_ ? withKnownPlaces(elements, context) : withLookedUpPlaces(elements, context);
}

std::optional<ElementList> GeoNamesParser::withKnownPlaces(const ElementList& elements, Context& context) const {
    ElementReplacer replacer(elements);
    const auto replace = [&](std::size_t from, std::size_t to) {
        // Inside a name an operator's sign is punctuation; at its ends it is no part of it.
        std::size_t first = from, last = to - 1;
        while (first < last && trimmed(elements[first].text()).empty()) ++first;
        while (last > first && trimmed(elements[last].text()).empty()) --last;
        if (elements[first].value.has(Attribute::operation) || elements[last].value.has(Attribute::operation))
            return false;
        const std::u16string text = elements.attributedText(from, to).compoundString();
        const std::u16string_view name = trimmed(text);
        auto zone = name.empty() ? std::nullopt : places_->zoneOf(name);
        if (const auto shortName = zoneAfterTime(name); !zone && !shortName.empty()) zone = std::u16string(shortName);
        if (!zone) return false;
        appendPlace(text, name, *std::move(zone), replacer.replace({from, to - from}));
        return true;
    };
    // Replaces the place with which the words at `from` begin, and gives its end; `from` when there is none.
    const auto placeAt = [&](std::size_t from) {
        std::size_t to = from;
        while (to < elements.size() && to - from < mostElements && mayBeOfPlace(elements[to])) ++to;
        while (to > from && !replace(from, to)) --to;
        return to;
    };
    const auto isKnownPlace = [&](std::size_t from) {
        for (std::size_t to = from + 1; to <= elements.size() && to - from <= mostElements; ++to) {
            const std::u16string text = elements.slice(from, to).text();
            if (places_->zoneOf(trimmed(text))) return true;
        }
        return false;
    };
    bool timeBefore = false;
    std::size_t start = 0;  // of what may be a place before "time"
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (const auto hours = isConversion(elements[i]) && !timeBefore ? hoursBefore(elements, i) : std::nullopt;
            hours && isKnownPlace(i + 1)) {
            replacer.replace({*hours, 0}).append(makeElement(Value(Attribute::operation, u"clock"), {}));
            timeBefore = true;
        }
        if (isWrittenTime(elements[i])) {
            // "London 9am", "9am London", "17h30 à l'heure de Pékin"
            const std::size_t next = neighbourOf(elements, i, 1);
            const bool placing = next < elements.size() && isOperator(elements[next], u"placed");
            const std::size_t from = placing ? next + 1 : i + 1;
            const std::size_t placeEnd = i > start && isParticle(elements[i - 1]) ? i - 1 : i;
            const bool before = start < placeEnd && isText(elements, start, placeEnd) &&
                                (beginsWithCapital(elements, start, placeEnd) || isCjk(elements[start].text().front()));
            if (before && replace(start, placeEnd)) {
                start = i + 1;
            } else if (from < elements.size() &&
                       (placing || beginsWithCapital(elements, from, from + 1) || endsAtConversion(elements, from))) {
                const std::size_t to = placeAt(from);
                timeBefore = true;
                if (to > from) {
                    start = to;
                    i = to - 1;
                    continue;
                }
            }
        } else if (isTimeFunction(elements[i])) {
            for (std::size_t from = std::max(start, i - std::min(i, mostElements)); from < i && !replace(from, i);
                 ++from) {
            }
            // "勉強の時間 2時間" tells of no place.
            if (!replacer.changed() && isText(elements, 0, i) && elements[i].text().starts_with(u'\u306e')) {
                replacer.replace({i, 1}).append(makeElement({}, AttributedText(elements[i].text())));
                continue;
            }
            // A place that is not known has no time: the local one would be wrong.
            if (start == 0 && !replacer.changed() && isText(elements, 0, i) && beginsWithCapital(elements, 0, i))
                return unknownPlace(elements, 0, i, context);
            // "heure à Tokyo"
            if (i + 1 < elements.size() && beginsWithCapital(elements, i + 1, i + 2)) {
                const std::size_t to = placeAt(i + 1);
                if (to > i + 1) {
                    timeBefore = true;
                    start = to;
                    i = to - 1;
                    continue;
                }
                std::size_t wordsEnd = i + 1;
                while (wordsEnd < elements.size() && mayBeOfPlace(elements[wordsEnd])) ++wordsEnd;
                const bool withPreposition = trimmed(elements[i].text()).find(u' ') != std::u16string_view::npos;
                if ((withPreposition || i == 0) && isText(elements, i + 1, wordsEnd) &&
                    !elements.anyHas(Attribute::decimal))
                    return unknownPlace(elements, i + 1, wordsEnd, context);
            }
        } else if (isConversion(elements[i]) && timeBefore) {
            std::size_t to = i + 1;
            while (to < elements.size() && to - i <= mostElements && mayBeOfPlace(elements[to])) ++to;
            const bool text = isText(elements, i + 1, to);
            const std::size_t wordsEnd = to;
            while (to > i + 1 && !replace(i + 1, to)) --to;
            if (to == i + 1 && text && !elements.anyHas(Attribute::decimal))
                return unknownPlace(elements, i + 1, wordsEnd, context);
            if (to > i + 1) {
                wordsAfterTime(elements, start, i, context);
                start = to;
                i = to - 1;
            }
        }
        timeBefore = timeBefore || isOfTime(elements[i]);
        if (!mayBeOfPlace(elements[i])) start = i + 1;
    }
    return replacer.finished();
}

std::optional<ElementList> GeoNamesParser::withLookedUpPlaces(const ElementList& elements, Context& context) const {
    ElementReplacer replacer(elements);
    std::size_t seen = 0;
    bool momentBefore = false;
    for (const Match& match : matcher_.occurrences(elements)) {
        const std::size_t place = match.group(u"text")->location;
        for (; seen < place; ++seen) momentBefore = momentBefore || isMoment(elements[seen]);
        const bool beforeTime = match.range.location == place;
        if (!beforeTime && !momentBefore) continue;
        const std::u16string& text = elements[place].text();
        const std::u16string_view name = trimmed(text);
        const std::u16string key = geoNameKey(name);
        context.addDependencyOn(key, std::nullopt, Value());
        const auto* zone = context.get<std::u16string>(key);
        if (!zone) {
            remarksOf(context).reason(ReasonCode::placeAwaited, name);
            return reducedTo(errorValue(), elements);
        }
        appendPlace(text, name, *zone, replacer.replace({place, 1}));
    }
    return replacer.finished();
}

}  // namespace vemo
