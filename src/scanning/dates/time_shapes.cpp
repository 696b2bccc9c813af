// SPDX-License-Identifier: MIT
#include <cmath>

#include "platform/time_zones.h"
#include "scanning/dates/date_shapes.h"
#include "scanning/dates/time_zone_abbreviations.h"

namespace vemo {

namespace {

constexpr int noon = 12;

}  // namespace

bool TimeShapes::exists(const TimeReading& time) {
    return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 && time.second < 60;
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
    TimeReading time{number(i)->value, number(i + 2)->value};
    std::size_t next = i + 3;
    bool fraction = false;
    if (isSign(next, u':') && touches(next) && twoDigits(next + 1) && touches(next + 1)) {
        time.second = number(next + 1)->value;
        next += 2;
        const DateLexeme* digits = number(next + 1);
        fraction = i > 0 && isIsoT(i - 1) && isSign(next, u'.') && touches(next) && digits && touches(next + 1);
        if (fraction && digits->digits <= 4)
            time.second += digits->value * std::pow(10, -static_cast<int>(digits->digits));
        if (fraction) next += 2;
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

// 5.30pm, 10.30 Uhr; at 12.30
Attempt<TimeReading> TimeShapes::stopped(std::size_t i, Beside beside) const {
    const DateLexeme* hour = number(i);
    const DateLexeme* minute = twoDigits(i + 2);
    if (!hour || hour->digits > 2 || hour->openLeft || hour->afterOperator || !isSign(i + 1, u'.') || !minute ||
        !touches(i + 1) || !touches(i + 2) || minute->openRight)
        return std::nullopt;
    TimeReading time{hour->value, minute->value};
    if (is(i + 3, DateWord::half) && halved(time, value(i + 3, DateWord::half)))
        return Parsed<TimeReading>{time, i + 4};
    if (is(i + 3, DateWord::oclock)) return Parsed<TimeReading>{time, i + 4};
    // "3 apples at 12.30" tells a price.
    if (beside == Beside::nothing || (beside == Beside::preposition && followsAnyNumber(i)) || !endsBareHour(i + 3))
        return std::nullopt;
    return Parsed<TimeReading>{time, i + 3, true, true};  // over the number
}

// 5pm, 5 p.m., 6 in the morning
Attempt<TimeReading> TimeShapes::halfAfter(std::size_t i) const {
    const DateLexeme* hour = count(i, 2);
    if (!hour || !is(i + 1, DateWord::half)) return std::nullopt;
    TimeReading time{hour->value, 0};
    if (!halved(time, value(i + 1, DateWord::half))) return std::nullopt;
    return Parsed<TimeReading>{time, i + 2};
}

bool TimeShapes::halved(TimeReading& time, int half) {
    constexpr int ofNight = 2, earliestOfEvening = 5;
    if (time.hour < 1 || time.hour > noon) return false;
    time.hour %= noon;
    if (half == 1 || (half == ofNight && time.hour >= earliestOfEvening)) time.hour += noon;
    time.inHalf = true;
    return true;
}

TimeReading TimeShapes::inPart(TimeReading time, int hourOfPart) {
    if (!time.inHalf && hourOfPart >= noon && time.hour > 0 && time.hour < noon) time.hour += noon;
    time.inHalf = true;
    return time;
}

// 午後5時, 午後5:30
Attempt<TimeReading> TimeShapes::halfBefore(std::size_t i) const {
    if (!is(i, DateWord::half)) return std::nullopt;
    Attempt<TimeReading> time = colons(i + 1);
    if (!time) time = hours(i + 1);
    if (!time || time->reading.hour > noon) return std::nullopt;
    time->reading.hour = time->reading.hour % noon + noon * value(i, DateWord::half);
    time->reading.inHalf = true;
    return time;
}

// 10 Uhr, 10 Uhr 30, 10時30分, 10時半; 17h30, 17 h 30
Attempt<TimeReading> TimeShapes::hours(std::size_t i) const {
    if (!startsTime(i) || number(i)->openRight) return std::nullopt;
    if (number(i)->afterOperator ||
        (i > 0 && number(i)->spaced && number(i - 1) && !number(i - 1)->openLeft && number(i - 1)->digits > 4))
        return std::nullopt;
    TimeReading time{number(i)->value, 0};
    const bool oclock = is(i + 1, DateWord::oclock);
    if (!oclock && !is(i + 1, DateWord::hourLetter)) return std::nullopt;
    std::size_t next = i + 2;
    if (is(i + 1, DateWord::half) && halved(time, value(i + 1, DateWord::half))) return Parsed<TimeReading>{time, next};
    if (oclock && is(next, DateWord::halfPast)) {
        time.minute = 30;
        return Parsed<TimeReading>{time, next + 1};
    }
    const DateLexeme* minute = number(next);
    const bool marked = minute && minute->digits <= 2 && is(next + 1, DateWord::minuteMark);
    const bool fits = minute && !minute->openRight && (marked || minute->digits == 2);
    // With a unit after it, it is a duration, or a number of its own; "dans 2 h 30" is one, too.
    const bool duration = !oclock && i > 0 && isAny(i - 1, DateWord::ahead, DateWord::ago, DateWord::within);
    if (!fits || duration || (!marked && isAny(next + 1, DateWord::unit, DateWord::unitSymbol)) ||
        (!oclock && minute->spaced != lexemes_[i + 1].spaced)) {
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

// 17h, which is a duration by itself
Attempt<TimeReading> TimeShapes::letteredHour(std::size_t i) const {
    const DateLexeme* hour = count(i, 2);
    if (!hour || hour->value > 23 || !is(i + 1, DateWord::hourLetter) || number(i + 2)) return std::nullopt;
    return Parsed<TimeReading>{TimeReading{hour->value, 0}, i + 2};
}

Attempt<TimeReading> TimeShapes::named(std::size_t i) const {
    if (!is(i, DateWord::timeOfDay)) return std::nullopt;
    const DateLexeme* joined = at(i + 2);
    if (isDash(i + 1) && touches(i + 1) && joined && touches(i + 2) && joined->kind == DateLexeme::Kind::word)
        return std::nullopt;  // a word of its own
    return Parsed<TimeReading>{TimeReading{value(i, DateWord::timeOfDay), 0, 0, true}, i + 1};
}

Attempt<TimeReading> TimeShapes::bareHour(std::size_t i) const {
    const DateLexeme* hour = count(i, 2);
    if (!hour || hour->value > 23) return std::nullopt;
    Parsed<TimeReading> time{TimeReading{hour->value, 0}, i + 1};
    takeMinutesAfter(time);
    if (!endsBareHour(time.end)) return std::nullopt;
    time.certain = true;  // over the number
    return time;
}

// True where nothing follows that a number would count or measure.
bool TimeShapes::endsBareHour(std::size_t i) const {
    const DateLexeme* next = at(i);
    if (!next) return true;
    if (next->kind == DateLexeme::Kind::number) return false;
    if (next->kind == DateLexeme::Kind::sign)
        return std::u16string_view(u"),;*-+!?:").find(next->sign) != std::u16string_view::npos &&
               !(next->sign == u':' && at(i + 1) && touches(i + 1));
    return next->entry && !isPartOfDuration(i) &&
           !isAny(i, DateWord::agoAfter, DateWord::aheadAfter, DateWord::ahead, DateWord::of);
}

// half past five, quarter to 6, halb acht
Attempt<TimeReading> TimeShapes::minutesBeforeHour(std::size_t i) const {
    if (!is(i, DateWord::minutesBefore)) return std::nullopt;
    const DateLexeme* hour = count(i + 1, 2);
    if (!hour && !is(i + 1, DateWord::count)) return std::nullopt;
    if (isPartOfDuration(i + 2)) return std::nullopt;
    TimeReading time{hour ? hour->value : value(i + 1, DateWord::count), value(i, DateWord::minutesBefore)};
    std::size_t next = i + 2;
    if (is(next, DateWord::half) && halved(time, value(next, DateWord::half)))
        ++next;
    else if (is(next, DateWord::oclock))
        ++next;
    if (time.minute < 0) {
        time.minute += 60;
        time.hour = (time.hour + 23) % 24;
    }
    return Parsed<TimeReading>{time, next};
}

// las 7 y media, midi et demi
void TimeShapes::takeMinutesAfter(Parsed<TimeReading>& time) const {
    if (!is(time.end, DateWord::minutesAfter) || time.reading.minute != 0) return;
    const int minutes = value(time.end, DateWord::minutesAfter);
    time.reading.minute = (minutes + 60) % 60;
    if (minutes < 0) time.reading.hour = (time.reading.hour + 23) % 24;
    ++time.end;
}

Attempt<TimeReading> TimeShapes::clockAt(std::size_t i, Beside beside) const {
    Attempt<TimeReading> best = colons(i);
    keepLonger(best, stopped(i, beside));
    keepLonger(best, halfAfter(i));
    keepLonger(best, halfBefore(i));
    keepLonger(best, hours(i));
    keepLonger(best, named(i));
    keepLonger(best, minutesBeforeHour(i));
    if (auto lettered = letteredHour(i)) {
        // 8h du soir
        const std::size_t next = lettered->end;
        if (is(next, DateWord::half) && halved(lettered->reading, value(next, DateWord::half))) {
            ++lettered->end;
            keepLonger(best, lettered);
        } else if (beside != Beside::nothing || zoneAt(next, true)) {
            keepLonger(best, lettered);
        }
    }
    if (!best) return std::nullopt;
    takeMinutesAfter(*best);
    // 5 de la tarde, after minutes told in words
    if (is(best->end, DateWord::half) && !best->reading.inHalf &&
        halved(best->reading, value(best->end, DateWord::half)))
        ++best->end;
    return exists(best->reading) ? best : std::nullopt;
}

// EST, UTC+2, ET
std::optional<TimeShapes::Zone> TimeShapes::zoneAt(std::size_t i, bool afterTime) const {
    const DateLexeme* word = at(i);
    if (!word || word->kind != DateLexeme::Kind::word) return std::nullopt;
    const std::u16string_view written = word->range.in(text_.text);
    std::u16string_view zone = zoneForAbbreviation(written, text_.language);
    if (zone.empty() && afterTime) zone = zoneAfterTime(written);
    if (zone.empty()) return std::nullopt;
    if (zone == u"UTC" || zone == u"GMT")
        if (auto offset = offsetAt(i + 1)) return offset;
    return Zone{std::u16string(zone), i + 1};
}

// The "+2" of "UTC+2", the "-05:30" of "08:15-05:30"
std::optional<TimeShapes::Zone> TimeShapes::offsetAt(std::size_t i) const {
    const DateLexeme* sign = at(i);
    const DateLexeme* hours = number(i + 1);
    if (!sign || sign->kind != DateLexeme::Kind::sign || !hours || !touches(i + 1)) return std::nullopt;
    const char16_t written = signAt(i);
    if (written != u'+' && written != u'-') return std::nullopt;
    int minutes = 0, hour = hours->value;
    std::size_t end = i + 2;
    if (hours->digits == 4) {
        minutes = hour % 100;
        hour /= 100;
    } else if (hours->digits > 2) {
        return std::nullopt;
    } else if (isSign(end, u':') && touches(end) && twoDigits(end + 1) && touches(end + 1)) {
        minutes = number(end + 1)->value;
        end += 2;
    }
    constexpr int furthest = 14;
    if (hour > furthest || minutes > 59) return std::nullopt;
    const int seconds = (hour * 60 + minutes) * 60;
    const auto zone = fixedTimeZone(written == u'-' ? -seconds : seconds);
    return zone ? std::optional(Zone{zone->identifier, end}) : std::nullopt;
}

Attempt<TimeReading> TimeShapes::timeAt(std::size_t i, Beside beside) const {
    Attempt<TimeReading> best = clockAt(i, beside);
    if (!best) {
        const auto zone = zoneAt(i, false);
        if (!zone) return std::nullopt;
        best = clockAt(zone->end, Beside::nothing);
        // With a zone after it too, the time is there, and told here.
        if (!best || zoneAt(best->end, true)) return std::nullopt;
        best->reading.zone = zone->name;
        return best;
    }
    // "2027-03-04 10:30-11:30" tells a span.
    const DateLexeme* sign = at(best->end);
    const bool iso = beside == Beside::isoDay && isSign(i + 1, u':') && sign && sign->kind == DateLexeme::Kind::sign &&
                     (isIsoT(i - 1) || sign->spaced || signAt(best->end) == u'+');
    std::optional<Zone> zone = zoneAt(best->end, true);
    if (!zone && iso) zone = offsetAt(best->end);
    if (!zone && i > 0 && isIsoT(i - 1) && isIsoZ(best->end)) zone = Zone{u"UTC", best->end + 1};
    if (zone) {
        best->certain = zone->end > best->end + 1;
        best->reading.zone = zone->name;
        best->end = zone->end;
    }
    return best;
}

}  // namespace vemo
