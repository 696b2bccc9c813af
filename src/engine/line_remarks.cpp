// SPDX-License-Identifier: MIT
#include "engine/line_remarks.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "evaluation/written_numbers.h"
#include "records/context_parts.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr std::u16string_view table = u"Remarks";

// How many elements from there on have the form of a date or a clock time, but were read as neither; 0 for others.
std::size_t elementsOfNoDate(const ElementList& elements, std::size_t i, bool calculated) {
    const std::u16string& begin = elements[i].text();
    if (!isDigitAt(begin, 0)) return 0;
    const auto text = [&](std::size_t at) {
        return at < elements.size() ? std::u16string_view(elements[at].text()) : std::u16string_view();
    };
    // "25:70 + 1 h"
    constexpr std::size_t clock = 3;
    if (calculated && isDigits(text(i), 1, 2) && text(i + 1) == u":" && isDigits(text(i + 2), 2, 2)) return clock;
    const std::u16string_view sign = text(i + 1);
    if (sign != text(i + 3)) return 0;
    const bool numeric = sign == u"-" && isYear(text(i)) && isDigits(text(i + 2), 2, 2) && isDigits(text(i + 4), 2, 2);
    const bool withStrokes =
        sign == u"/" && isDigits(text(i), 1, 2) && isDigits(text(i + 2), 1, 2) && isYear(text(i + 4));
    return numeric || withStrokes ? 5 : 0;
}

std::u16string message(const Localizer& localizer, std::u16string_view prefix, std::u16string_view name,
                       std::u16string_view first, std::u16string_view second) {
    std::u16string text = localizer.translationOrBase(std::u16string(prefix).append(name), table);
    const auto put = [&](std::u16string_view mark, std::u16string_view argument) {
        if (const std::size_t at = text.find(mark); at != text.npos) text.replace(at, mark.size(), argument);
    };
    put(u"%1", first);
    put(u"%2", second);
    return text;
}

// True when a line with these elements is meant to have a result.
bool asksForResult(const ElementList& written) {
    bool amount = false, beside = false, words = false, function = false;
    for (const ElementPointer& element : written.pointers()) {
        const Value& value = element->value;
        const bool isUndecided = value.has(Attribute::type);  // a word that may stand for a number
        amount = amount || (value.has(Attribute::decimal) && !isUndecided) || value.has(Attribute::date);
        function = function || value.has(Attribute::function);
        beside = beside || value.has(Attribute::operation) || value.has(Attribute::unit) ||
                 value.has(Attribute::parenthesis) || value.has(Attribute::timeZone);
        words = words || isPlainWords(*element);
    }
    return (amount && (beside || function)) || (function && (!words || beside));
}

// True for kinds that tell how a part of the line was read, which is of no use where that part only describes a price.
bool isOfReading(NoteKind kind) {
    constexpr NoteKind kinds[] = {NoteKind::joinedDigits,   NoteKind::malformedNumber, NoteKind::caseDecides,
                                  NoteKind::metricTon,      NoteKind::noSuchDate,      NoteKind::implicitProduct,
                                  NoteKind::builtInConstant};
    return std::find(std::begin(kinds), std::end(kinds), kind) != std::end(kinds);
}

}  // namespace

void remarkOnText(const ElementList& elements, const UnitManager& units, const Context& constants, Context& context) {
    const auto& all = elements.pointers();
    const auto isOperator = [](const Element& element) { return element.value.has(Attribute::operation); };
    const bool calculated = elements.anyHas(Attribute::operation);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (const std::size_t count = elementsOfNoDate(elements, i, calculated)) {
            remarksOf(context).note(NoteKind::noSuchDate, elements.rangeOf(i, i + count));
            i += count - 1;
            continue;
        }
        if (element.value.has(Attribute::unit) && !element.value.has(Attribute::decimal) && i > 0) {
            const bool number =
                elements[i - 1].value.has(Attribute::decimal) ||
                (i > 1 && trimmed(elements[i - 1].text()).empty() && elements[i - 2].value.has(Attribute::decimal));
            const auto* note = number ? units.note(element.text()) : nullptr;
            if (note) remarksOf(context).note(note->kind, elements.rangeOf(i, i + 1), note->first);
        } else if (runTypeOf(element) == RunType::variable && (element.text() == u"e" || element.text() == u"r")) {
            const Value* constant = constants.getVariable(element.text());
            if (constant && *constant == element.value &&
                std::any_of(all.begin(), all.end(), [&](const ElementPointer& other) { return isOperator(*other); }))
                remarksOf(context).note(NoteKind::builtInConstant, elements.rangeOf(i, i + 1), element.text(),
                                        element.value);
        }
    }
}

void remarkOnUnused(const ElementList& written, const ElementList& reduced, const PercentageWords& percentageWords,
                    Context& context) {
    if (reduced.size() < 2 || reduced[0].value.isEmpty()) return;
    const auto takesNoPart = [&](std::size_t begin) {
        std::size_t i = 0;
        for (std::size_t place = written.location(); i < written.size() && place < begin; ++i)
            place += written[i].text().size();
        const auto isSign = [&](std::size_t k) {
            return k < i && written[k].value.isEmpty() && runTypeOf(written[k]) == RunType::none &&
                   !hasLetter(written[k].text()) && trimmed(written[k].text()) != u":";  // a ratio: "16:9"
        };
        std::size_t before = neighbourOf(written, i, -1);
        while (isSign(before)) before = neighbourOf(written, before, -1);
        if (before >= i || i >= written.size()) return false;
        const Value& value = written[before].value;
        return value.has(Attribute::decimal) || value.has(Attribute::unit) || value.has(Attribute::scale) ||
               value.has(Attribute::timeZone);
    };
    std::size_t begin = reduced.location();
    for (std::size_t i = 0; i < reduced.size(); begin += reduced[i++].text().size()) {
        const Value& value = reduced[i].value;
        const bool amount = value.has(Attribute::decimal) && reduced[0].value.has(Attribute::decimal);
        const bool zone = value.has(Attribute::timeZone) && reduced[0].value.has(Attribute::date);
        // "bill 64 tip 25%"
        const bool percentage = amount && i > 0 && value.is(Attribute::unit, u"percent");
        if (percentage && percentageWords.mayApply(written))
            remarksOf(context).note(NoteKind::unusedPercentage, reduced.trimmedRangeOf(i, i + 1));
        else if (i > 0 && (amount || zone) && takesNoPart(begin))
            remarksOf(context).note(NoteKind::unusedValue, reduced.trimmedRangeOf(i, i + 1));
    }
}

LineRemarks spokenRemarks(const Context& context, const ElementList& written, bool hasResult,
                          const RemarkWords& words) {
    LineRemarks spoken;
    const Remarks* remarks = remarksIfAny(context);
    if (remarks) {
        for (const Remarks::PendingNote& note : remarks->notes()) {
            if (isOfReading(note.kind) && remarks->isBesidePrice(note.range)) continue;
            std::u16string name(noteKindName(note.kind));
            if (note.first.empty() && !note.other.isEmpty()) name += u".other";
            const std::u16string other = note.other.isEmpty() ? u"" : words.valueText(note.other);
            spoken.notes.push_back({note.kind, static_cast<std::uint32_t>(note.range.location),
                                    static_cast<std::uint32_t>(note.range.length),
                                    message(words.localizer, u"note.", name, note.first, other)});
        }
    }
    for (const MistakeNote& note : words.mistakes.of(written, words.isNearlyUnit)) {
        if (remarks && isOfReading(note.kind) && remarks->isBesidePrice(note.range)) continue;
        const auto isThere = [&](const Note& other) {
            return other.kind == note.kind && other.start < note.range.end() &&
                   note.range.location < other.start + other.length;
        };
        if (std::any_of(spoken.notes.begin(), spoken.notes.end(), isThere)) continue;
        spoken.notes.push_back({note.kind, static_cast<std::uint32_t>(note.range.location),
                                static_cast<std::uint32_t>(note.range.length),
                                message(words.localizer, u"note.", noteKindName(note.kind), note.first, {})});
    }
    const bool tooLong = remarks && remarks->reason() && remarks->reason()->code == ReasonCode::tooLong;
    if (hasResult || (!tooLong && !asksForResult(written))) return spoken;
    Remarks::PendingReason reason{ReasonCode::notUnderstood, {}, {}};
    const auto isMissing = [](const Note& note) { return note.kind == NoteKind::missingOperand; };
    if (remarks && remarks->reason())
        reason = *remarks->reason();
    else if (std::any_of(spoken.notes.begin(), spoken.notes.end(), isMissing))
        reason.code = ReasonCode::missingOperand;
    else if (hasPlainWords(written))
        return spoken;  // prose
    if (reason.code == ReasonCode::droppedUnits) reason.first = words.unitName(reason.first);
    if (reason.code == ReasonCode::differentDimensions) {
        reason.first = words.unitName(reason.first);
        reason.second = words.unitName(reason.second);
    }
    std::u16string name(reasonCodeName(reason.code));
    if (reason.code == ReasonCode::scriptFailed && reason.first.empty()) name += u".other";
    spoken.reason = Reason{reason.code, message(words.localizer, u"reason.", name, reason.first, reason.second)};
    return spoken;
}

}  // namespace vemo
