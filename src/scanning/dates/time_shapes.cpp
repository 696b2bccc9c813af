// SPDX-License-Identifier: MIT
#include "scanning/dates/date_shapes.h"
#include "scanning/dates/time_zone_abbreviations.h"

namespace vemo {

bool TimeShapes::exists(const TimeReading& time) {
    return time.hour < 24 && time.minute < 60 && time.second < 60;
}

bool TimeShapes::startsTime(std::size_t i) const {
    const DateLexeme* hour = number(i);
    return hour && hour->digits <= 2 && (!hour->openLeft || (i > 0 && isIsoT(i - 1)));
}

const DateLexeme* TimeShapes::twoDigits(std::size_t i) const {
    const DateLexeme* lexeme = number(i);
    return lexeme && lexeme->digits == 2 ? lexeme : nullptr;
}

// 10:30, 9:05:20, 5:30 pm, 10:30 Uhr
Attempt<TimeReading> TimeShapes::colons(std::size_t i) const {
    if (!startsTime(i) || !isSign(i + 1, u':') || !touches(i + 1) || !twoDigits(i + 2) || !touches(i + 2))
        return std::nullopt;
    if (i > 0 && touches(i) && isSign(i - 1, u'/')) return std::nullopt;
    TimeReading time{number(i)->value, number(i + 2)->value, 0, {}};
    std::size_t next = i + 3;
    if (isSign(next, u':') && touches(next) && twoDigits(next + 1) && touches(next + 1)) {
        time.second = number(next + 1)->value;
        next += 2;
    }
    // A colon after it is a label's, or there are too many fields; ".5" and "/2" are arithmetic.
    if (number(next - 1)->openRight || (isSign(next, u':') && touches(next))) return std::nullopt;
    if (const DateLexeme* unknown = at(next); unknown && unknown->kind == DateLexeme::Kind::word && !unknown->spaced &&
                                              !unknown->entry && !unknown->cjk && !isIsoZ(next))
        return std::nullopt;
    if (is(next, DateWord::half) && halved(time, value(next, DateWord::half)))
        ++next;
    else if (is(next, DateWord::oclock))
        ++next;
    return Parsed<TimeReading>{time, next};
}

// 5pm, 5 p.m.
Attempt<TimeReading> TimeShapes::halfBehind(std::size_t i) const {
    const DateLexeme* hour = count(i, 2);
    if (!hour || !is(i + 1, DateWord::half)) return std::nullopt;
    TimeReading time{hour->value, 0, 0, {}};
    if (!halved(time, value(i + 1, DateWord::half))) return std::nullopt;
    return Parsed<TimeReading>{time, i + 2};
}

bool TimeShapes::halved(TimeReading& time, int half) {
    if (time.hour < 1 || time.hour > 12) return false;
    time.hour = time.hour % 12 + 12 * half;
    return true;
}

// 午後5時, 午後5:30
Attempt<TimeReading> TimeShapes::halfBefore(std::size_t i) const {
    if (!is(i, DateWord::half)) return std::nullopt;
    Attempt<TimeReading> time = colons(i + 1);
    if (!time) time = hours(i + 1);
    if (!time || time->reading.hour > 12) return std::nullopt;
    time->reading.hour = time->reading.hour % 12 + 12 * value(i, DateWord::half);
    return time;
}

// 10 Uhr, 10 Uhr 30, 10時30分, 10時半; 17h30, 17 h 30
Attempt<TimeReading> TimeShapes::hours(std::size_t i) const {
    if (!startsTime(i) || number(i)->openRight) return std::nullopt;
    if (number(i)->afterOperator ||
        (i > 0 && number(i)->spaced && number(i - 1) && !number(i - 1)->openLeft && number(i - 1)->digits > 4))
        return std::nullopt;
    TimeReading time{number(i)->value, 0, 0, {}};
    const bool oclock = is(i + 1, DateWord::oclock);
    if (!oclock && !is(i + 1, DateWord::hourLetter)) return std::nullopt;
    std::size_t next = i + 2;
    if (oclock && is(next, DateWord::halfPast)) {
        time.minute = 30;
        return Parsed<TimeReading>{time, next + 1};
    }
    const DateLexeme* minute = number(next);
    const bool marked = minute && minute->digits <= 2 && is(next + 1, DateWord::minuteMark);
    const bool fits = minute && !minute->openRight && (marked || minute->digits == 2);
    // With a unit after it, it is a duration, or a number of its own.
    if (!fits || (!marked && is(next + 1, DateWord::unit)) || (!oclock && minute->spaced != lexemes_[i + 1].spaced)) {
        if (!oclock) return std::nullopt;
        return Parsed<TimeReading>{time, next};
    }
    time.minute = minute->value;
    next += marked ? 2 : 1;
    if (const DateLexeme* second = number(next);
        marked && second && second->digits <= 2 && is(next + 1, DateWord::secondMark)) {
        time.second = second->value;
        next += 2;
    }
    return Parsed<TimeReading>{time, next};
}

Attempt<TimeReading> TimeShapes::named(std::size_t i) const {
    if (!is(i, DateWord::timeOfDay)) return std::nullopt;
    return Parsed<TimeReading>{TimeReading{value(i, DateWord::timeOfDay), 0, 0, {}}, i + 1};
}

Attempt<TimeReading> TimeShapes::clockAt(std::size_t i) const {
    Attempt<TimeReading> best = colons(i);
    keepLonger(best, halfBehind(i));
    keepLonger(best, halfBefore(i));
    keepLonger(best, hours(i));
    keepLonger(best, named(i));
    return best && exists(best->reading) ? best : std::nullopt;
}

std::u16string_view TimeShapes::zoneAt(std::size_t i) const {
    const DateLexeme* zone = at(i);
    if (!zone || zone->kind != DateLexeme::Kind::word) return {};
    return zoneForAbbreviation(zone->range.in(text_), language_);
}

Attempt<TimeReading> TimeShapes::timeAt(std::size_t i) const {
    Attempt<TimeReading> best = clockAt(i);
    if (!best) {
        const std::u16string_view zone = zoneAt(i);
        if (zone.empty()) return std::nullopt;
        best = clockAt(i + 1);
        // With a zone after it too, the time is there, and told here.
        if (!best || !zoneAt(best->end).empty()) return std::nullopt;
        best->reading.zone = zone;
        return best;
    }
    best->reading.zone = zoneAt(best->end);
    if (i > 0 && isIsoT(i - 1) && isIsoZ(best->end)) best->reading.zone = u"UTC";
    if (!best->reading.zone.empty()) ++best->end;
    return best;
}

}  // namespace vemo
