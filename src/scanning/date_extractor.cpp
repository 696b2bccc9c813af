// SPDX-License-Identifier: MIT
#include "scanning/date_extractor.h"

#include <algorithm>

#include "evaluation/date_relation_operations.h"
#include "functions/date_values.h"
#include "platform/locale_info.h"
#include "records/context_map.h"
#include "records/remarks.h"
#include "scanning/extraction_priorities.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

using Kind = DateRelation::Kind;

// The value of a word between dates: an operator, or what the word counts.
Value valueOf(const DateRelation& relation) {
    switch (relation.kind) {
        case Kind::number:
            return Value(DecimalNumber::fromInt64(relation.value));
        case Kind::days:
            return Value(Attribute::unit, u"day");
        case Kind::workdays:
            return Value(Attribute::unit, u"workday");
        default:
            return Value(Attribute::operation, dateOperatorId(relation.kind));
    }
}

RunType runTypeOf(const DateRelation& relation) {
    switch (relation.kind) {
        case Kind::number:
            return RunType::number;
        case Kind::days:
        case Kind::workdays:
            return RunType::unit;
        default:
            return RunType::operatorWord;
    }
}

}  // namespace

DateExtractor::DateExtractor(const Localizer& localizer, std::string_view language, std::string_view locale,
                             std::shared_ptr<const TimeZoneRules> zone)
    : detector_(localizer, language, locale),
      hourPhrases_(localizer.variants(u"hour.variants", u"Time", true, true)),
      countAsked_(localizer.variants(u"how_many.variants", u"Phrases")),
      countLinks_(localizer.variants(u"how_many_link.variants", u"Phrases")),
      zone_(std::move(zone)) {}

// True for "how many days in 6 weeks": a length of time, whatever day is in six weeks.
bool DateExtractor::isCounted(std::u16string_view text, const DetectedDate& date) const {
    if (date.basis == DateBasis::fixed) return false;
    const auto begins = [](std::u16string_view words, const std::vector<std::u16string>& phrases) {
        return std::any_of(phrases.begin(), phrases.end(), [&](const std::u16string& phrase) {
            return words.starts_with(phrase) && words.size() > phrase.size() && isWhitespace(words[phrase.size()]);
        });
    };
    return begins(spoken(text), countAsked_) && begins(lowercased(date.range.in(text)), countLinks_);
}

void DateExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    if (!zone_ || !detector_.mayDetect(text)) return;
    const Date* now = context.get<Date>(context_keys::currentTime);
    if (!now) return;
    // 5-3 and 2+2 are arithmetic, never dates.
    std::u16string masked = text;
    std::replace(masked.begin(), masked.end(), u'-', u'*');
    std::replace(masked.begin(), masked.end(), u'+', u'*');
    const DetectedDates detected = detector_.read(masked, text, *now, *zone_, [&](const std::u16string& name) {
        const Value* value = context.getVariable(name);
        return value && value->has(Attribute::date);
    });
    for (const TextRange& range : detected.nonexistent) remarksOf(context).note(NoteKind::noSuchDate, range);
    const std::size_t before = result.size();
    // "they march 5 miles": a word in small letters, and a number that has a unit.
    const auto isOfUnit = [&](const DetectedDate& date) {
        const std::u16string_view found = date.range.in(text);
        if (!date.isDay || digitValue(found.back()) < 0 || !isLetter(found.front()) ||
            lowercasedUnit(found.front()) != found.front())
            return false;
        std::size_t next = date.range.end();
        while (next < text.size() && isWhitespace(text[next])) ++next;
        return std::any_of(
            result.begin(), result.begin() + static_cast<std::ptrdiff_t>(before), [&](const Extraction& e) {
                return e.range.location == next && e.range.length > 0 && e.element->value.has(Attribute::unit);
            });
    };
    // "percent change from 20.15 to 25.30": beside a percentage these are no times.
    const bool percentage = std::any_of(result.begin(), result.end(), [](const Extraction& e) {
        return e.element->value.is(Attribute::unit, u"percent");
    });
    const auto isDecimal = [](std::u16string_view found) {
        return std::all_of(found.begin(), found.end(), [](char16_t c) { return c == u'.' || digitValue(c) >= 0; });
    };
    for (const DetectedDate& date : detected.dates) {
        const std::u16string_view found = date.range.in(text);
        if (percentage && !date.isDay && isDecimal(found)) continue;
        // A product or sum that looks like a date once it is masked.
        if (found.find(u'*') != found.npos || (!date.offset && found.find(u'+') != found.npos)) continue;
        // "in 5 hours" is a duration.
        if (std::any_of(hourPhrases_.begin(), hourPhrases_.end(),
                        [&](const std::u16string& phrase) { return found.find(phrase) != found.npos; }))
            continue;
        if (isOfUnit(date) || isCounted(text, date)) continue;
        if (date.basis == DateBasis::today) context.addDependencyOn(context_keys::currentDay, std::nullopt, Value());
        if (date.basis == DateBasis::now) context.addDependencyOn(context_keys::currentTime);
        const bool certain = found.find(u':') != found.npos || date.certain;
        result.push_back(
            {date.range, certain ? priority::certainDate : priority::usual, 0,
             makeElement(date.isDay ? dayValue(date.instant)
                                    : timeValue(date.instant, context.get<TimeZone>(context_keys::currentTimeZone)),
                         AttributedText(found, RunType::number))});
    }
    // Where one of the dates was left out, a word between them belongs to no date.
    if (result.size() - before < detected.dates.size()) return;
    for (const DateRelation& relation : detected.relations) {
        result.push_back(
            {relation.range, priority::certainDate, 0,
             makeElement(valueOf(relation), AttributedText(relation.range.in(text), runTypeOf(relation)))});
    }
}

}  // namespace vemo
