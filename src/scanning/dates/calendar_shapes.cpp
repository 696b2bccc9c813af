// SPDX-License-Identifier: MIT
#include "scanning/dates/date_shapes.h"

namespace vemo {

// March 4, March 4th, 2027, March the 4th; March 2027
Attempt<DayReading> DayShapes::monthFirst(std::size_t i) const {
    if (!is(i, DateWord::month)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(i, DateWord::month)), 1};
    std::size_t next = afterStop(i + 1);
    const std::size_t yearAt = touches(next) ? afterComma(next) : skipping(next, DateWord::of);
    if (const DateLexeme* only = year(yearAt); only && (!only->openLeft || yearAt > next)) {
        date.year = only->value;
        return Parsed<DayReading>{date, yearAt + 1};
    }
    next = skipping(next, DateWord::article);
    const DateLexeme* day = monthDay(next);
    if (!day) return std::nullopt;
    date.day = static_cast<unsigned>(day->value);
    next = touches(next + 1) && is(next + 1, DateWord::ordinal) ? next + 2 : next + 1;
    // "may 5x"
    const DateLexeme* letters = at(next);
    if (letters && touches(next) && letters->kind == DateLexeme::Kind::word && !letters->entry && !letters->cjk)
        return std::nullopt;
    const std::size_t end = takeYear(next, date, false);
    return Parsed<DayReading>{date, afterWeekday(end), true, is(end - 1, DateWord::eraAfter)};
}

// The same as `dayNumber`, but a comma and the year may touch it.
const DateLexeme* DayShapes::monthDay(std::size_t i) const {
    if (const DateLexeme* day = dayNumber(i)) return day;
    const DateLexeme* day = number(i);
    const bool commaYear = isSign(i + 1, u',') && touches(i + 1) && year(i + 2);
    return day && commaYear && !day->openLeft && day->digits <= 2 && day->value >= 1 && day->value <= 31 ? day
                                                                                                         : nullptr;
}

// 4 March 2027, the 4th of March, 4. März 2027, 4 de marzo de 2027; 3 Aug 96
Attempt<DayReading> DayShapes::dayFirst(std::size_t i) const {
    const DateLexeme* day = dayNumber(i);
    if (!day || (i > 0 && day->spaced && number(i - 1))) return std::nullopt;
    const std::size_t next = skipping(afterOrdinal(i + 1), DateWord::of);
    if (!is(next, DateWord::month)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(next, DateWord::month)), static_cast<unsigned>(day->value)};
    const std::size_t end = takeYear(afterStop(next + 1), date, true);
    return Parsed<DayReading>{date, afterWeekday(end), true, is(end - 1, DateWord::eraAfter)};
}

// Index after the year, which may follow a comma or be one of an era: ", 2027", "de 2027", "'96", "44 BC", "AD 79".
std::size_t DayShapes::takeYear(std::size_t i, NamedDay& date, bool twoDigits) const {
    std::size_t next = afterComma(skipping(i, DateWord::of));
    const bool eraBefore = is(next, DateWord::eraBefore) && number(next + 1);
    const bool apostrophe = isSign(next, u'\'') || isSign(next, u'\u2019');
    const std::size_t numberAt = eraBefore || apostrophe ? next + 1 : next;
    const DateLexeme* named = number(numberAt);
    if (!named || named->openRight || named->digits > 4) return i;
    const bool eraAfter = is(numberAt + 1, DateWord::eraAfter);
    if ((eraBefore || eraAfter) && named->value > 0) {
        const bool ours =
            eraBefore ? value(next, DateWord::eraBefore) == 1 : value(numberAt + 1, DateWord::eraAfter) == 1;
        date.year = ours ? named->value : 1 - named->value;  // the year before 1 is counted as 0
        return numberAt + (eraAfter ? 2 : 1);
    }
    if (apostrophe) {
        if (named->digits != 2 || !touches(numberAt)) return i;
        date.year = fullYear(*named);
        return numberAt + 1;
    }
    if (year(next) && (!named->openLeft || isSign(next - 1, u','))) {
        date.year = named->value;
        return next + 1;
    }
    if (twoDigits && named->digits == 2 && named->spaced && !named->openLeft && !isSign(next - 1, u',') &&
        endsPhrase(next + 1)) {
        date.year = fullYear(*named);
        return next + 1;
    }
    return i;
}

// Index after the weekday that may follow a date: "(Thursday)", "木曜日".
std::size_t DayShapes::afterWeekday(std::size_t i) const {
    const bool bracket = isSign(i, u'(');
    const DateLexeme* name = bracket ? at(i + 1) : nullptr;
    if (name && isSign(i + 2, u')') && (is(i + 1, DateWord::weekday) || (name->cjk && name->range.length == 1)))
        return i + 3;
    if (!bracket && is(i, DateWord::weekday) && is(i - 1, DateWord::dayMark)) return i + 1;
    return i;
}

// 2024 Aug, 2024 Aug 5
Attempt<DayReading> DayShapes::yearFirst(std::size_t i) const {
    constexpr int earliest = 1900, latest = 2199;
    const DateLexeme* named = year(i);
    if (!named || named->openLeft || named->afterOperator || named->value < earliest || named->value > latest ||
        !is(i + 1, DateWord::month) || touches(i + 1) || (i > 0 && number(i - 1)))
        return std::nullopt;
    NamedDay date{named->value, static_cast<unsigned>(value(i + 1, DateWord::month)), 1};
    const std::size_t next = afterStop(i + 2);
    if (const DateLexeme* day = dayNumber(next)) {
        date.day = static_cast<unsigned>(day->value);
        return Parsed<DayReading>{date, touches(next + 1) && is(next + 1, DateWord::ordinal) ? next + 2 : next + 1};
    }
    // "2024 may be": a name in small letters needs more beside it.
    const std::u16string_view name = lexemes_[i + 1].range.in(text_.text);
    if (lowercasedUnit(name.front()) == name.front() && !endsPhrase(next)) return std::nullopt;
    return Parsed<DayReading>{date, next};
}

// in January, im Januar; next January
Attempt<DayReading> DayShapes::monthOnly(std::size_t i) const {
    const auto fullMonth = [&](std::size_t at) {
        return is(at, DateWord::month) && !lexemes_[at].entry->find(DateWord::month)->abbreviated;
    };
    if (!fullMonth(i + 1)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(i + 1, DateWord::month)), 1};
    if (is(i, DateWord::next) && value(i, DateWord::next) != 0) {
        date.direction = value(i, DateWord::next);
        return Parsed<DayReading>{date, i + 2};
    }
    if (!is(i, DateWord::inMonth) || followsAnyNumber(i) || (number(i + 2) && !year(i + 2))) return std::nullopt;
    const std::size_t end = takeYear(i + 2, date, false);
    return Parsed<DayReading>{date, end};
}

// 2027年3月4日, 3月4日, 2027年3月, 令和9年3月4日
Attempt<DayReading> DayShapes::marked(std::size_t i) const {
    NamedDay date;
    std::size_t next = i;
    const bool named = is(i, DateWord::era), ofOurs = is(i, DateWord::eraBefore);
    if (named || ofOurs) ++next;
    if (!number(next) && !is(next, DateWord::firstYear)) return std::nullopt;
    if (is(next + 1, DateWord::yearMark) && (named || ofOurs || (number(next) && number(next)->digits == 4))) {
        const int count = number(next) ? number(next)->value : 1;
        if (named)
            date.year = value(i, DateWord::era) + count;
        else
            date.year = ofOurs && value(i, DateWord::eraBefore) == 0 ? 1 - count : count;
        next += 2;
    } else if (named || ofOurs) {
        return std::nullopt;
    }
    const DateLexeme* month = number(next);
    const DateLexeme* day = number(next + 2);
    if (!month || !is(next + 1, DateWord::monthMark) || month->digits > 2) return std::nullopt;
    if (number(i) && (number(i)->openLeft || number(i)->afterOperator)) return std::nullopt;
    date.month = static_cast<unsigned>(month->value);
    if (day && is(next + 3, DateWord::dayMark) && day->digits <= 2) {
        date.day = static_cast<unsigned>(day->value);
        return Parsed<DayReading>{date, afterWeekday(next + 4)};
    }
    if (!date.year || day) return std::nullopt;
    date.day = 1;
    return Parsed<DayReading>{date, next + 2};
}

// Christmas, beside a word that asks for a day: elsewhere it is the name of something else.
Attempt<DayReading> DayShapes::festival(std::size_t i) const {
    if (!is(i, DateWord::namedDay)) return std::nullopt;
    constexpr int perDay = 100;
    const int day = value(i, DateWord::namedDay);
    NamedDay date{std::nullopt, static_cast<unsigned>(day % perDay), static_cast<unsigned>(day / perDay), 1};
    const std::size_t end = takeYear(i + 1, date, false);
    std::size_t before = i;
    while (before > 0 && isAny(before - 1, DateWord::article, DateWord::on)) --before;
    // クリスマスまで何日
    const bool followed = touches(end) && isAny(end, DateWord::until, DateWord::howLong);
    const bool asked = followed || (before > 0 && isAny(before - 1, DateWord::before, DateWord::after, DateWord::until,
                                                        DateWord::since, DateWord::rangeTo, DateWord::weekdayOf,
                                                        DateWord::weekNumberOf, DateWord::howLong));
    return asked || date.year ? Attempt<DayReading>(Parsed<DayReading>{date, end}) : std::nullopt;
}

Attempt<DayReading> DayShapes::calendarDate(std::size_t i) const {
    Attempt<DayReading> best = numeric(i);
    keepLonger(best, joinedByDashes(i));
    keepLonger(best, dottedWithoutYear(i));
    keepLonger(best, strokedWithoutYear(i));
    keepLonger(best, marked(i));
    keepLonger(best, monthFirst(i));
    keepLonger(best, dayFirst(i));
    keepLonger(best, yearFirst(i));
    keepLonger(best, monthOnly(i));
    keepLonger(best, festival(i));
    return best;
}

const DateLexeme* DayShapes::dayNumber(std::size_t i) const {
    const DateLexeme* lexeme = count(i, 2);
    return lexeme && lexeme->value >= 1 && lexeme->value <= 31 ? lexeme : nullptr;
}

const DateLexeme* DayShapes::year(std::size_t i) const {
    const DateLexeme* lexeme = number(i);
    return lexeme && lexeme->digits == 4 && !lexeme->openRight && lexeme->value >= 1000 ? lexeme : nullptr;
}

// Two digits of a year: 1969 to 2068.
int DayShapes::fullYear(const DateLexeme& year) {
    constexpr int firstOfLastCentury = 69;
    if (year.digits != 2) return year.value;
    return year.value + (year.value < firstOfLastCentury ? 2000 : 1900);
}

// Index after what may follow the number of a day: "th", the full stop of German.
std::size_t DayShapes::afterOrdinal(std::size_t i) const {
    if (touches(i) && (is(i, DateWord::ordinal) || isSign(i, u'.'))) return i + 1;
    return i;
}

// Index after the full stop of an abbreviated name.
std::size_t DayShapes::afterStop(std::size_t i) const {
    return touches(i) && isSign(i, u'.') ? i + 1 : i;
}

// True where nothing follows that a number or name could count or belong to.
bool DayShapes::endsPhrase(std::size_t i) const {
    const DateLexeme* next = at(i);
    if (!next) return true;
    if (next->kind == DateLexeme::Kind::sign)
        return std::u16string_view(u"),;*-+!?").find(next->sign) != std::u16string_view::npos;
    return isAny(i, DateWord::at, DateWord::atHour, DateWord::joint, DateWord::rangeTo, DateWord::rangeAnd,
                 DateWord::until, DateWord::ahead);
}

}  // namespace vemo
