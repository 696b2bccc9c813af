// SPDX-License-Identifier: MIT
#include "scanning/dates/date_shapes.h"

namespace vemo {

namespace {

// Two digits of a year: 1969 to 2068.
int fullYear(const DateLexeme& year) {
    if (year.digits != 2) return year.value;
    return year.value + (year.value < 69 ? 2000 : 1900);
}

}  // namespace

// March 4, March 4th, 2027, March the 4th; March 2027
Attempt<DayReading> DayShapes::monthFirst(std::size_t i) const {
    if (!is(i, DateWord::month)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(i, DateWord::month)), 1};
    std::size_t next = behindStop(i + 1);
    if (const DateLexeme* only = year(next); only && !only->openLeft) {
        date.year = only->value;
        return Parsed<DayReading>{date, next + 1};
    }
    next = skipping(next, DateWord::article);
    const DateLexeme* day = monthDay(next);
    if (!day) return std::nullopt;
    date.day = static_cast<unsigned>(day->value);
    next = touches(next + 1) && is(next + 1, DateWord::ordinal) ? next + 2 : next + 1;
    const std::size_t yearAt = behindComma(next);
    if (const DateLexeme* named = year(yearAt)) {
        date.year = named->value;
        next = yearAt + 1;
    }
    return Parsed<DayReading>{date, next};
}

// As `dayNumber`; a comma and the year may touch it.
const DateLexeme* DayShapes::monthDay(std::size_t i) const {
    if (const DateLexeme* day = dayNumber(i)) return day;
    const DateLexeme* day = number(i);
    const bool commaYear = isSign(i + 1, u',') && touches(i + 1) && year(i + 2);
    return day && commaYear && !day->openLeft && day->digits <= 2 && day->value >= 1 && day->value <= 31 ? day
                                                                                                         : nullptr;
}

// 4 March 2027, the 4th of March, 4. März 2027, 4 de marzo de 2027
Attempt<DayReading> DayShapes::dayFirst(std::size_t i) const {
    const DateLexeme* day = dayNumber(i);
    if (!day || (i > 0 && day->spaced && number(i - 1))) return std::nullopt;
    std::size_t next = skipping(behindOrdinal(i + 1), DateWord::of);
    if (!is(next, DateWord::month)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(next, DateWord::month)), static_cast<unsigned>(day->value)};
    next = behindStop(next + 1);
    const std::size_t yearAt = behindComma(skipping(next, DateWord::of));
    if (const DateLexeme* named = year(yearAt); named && !named->openLeft) {
        date.year = named->value;
        next = yearAt + 1;
    }
    return Parsed<DayReading>{date, next};
}

// 2027年3月4日, 3月4日
Attempt<DayReading> DayShapes::marked(std::size_t i) const {
    NamedDay date;
    std::size_t next = i;
    if (const DateLexeme* named = number(next); named && named->digits == 4 && is(next + 1, DateWord::yearMark)) {
        date.year = named->value;
        next += 2;
    }
    const DateLexeme* month = number(next);
    const DateLexeme* day = number(next + 2);
    if (!month || !is(next + 1, DateWord::monthMark) || !day || !is(next + 3, DateWord::dayMark)) return std::nullopt;
    if (number(i)->openLeft || number(i)->afterOperator || month->digits > 2 || day->digits > 2) return std::nullopt;
    date.month = static_cast<unsigned>(month->value);
    date.day = static_cast<unsigned>(day->value);
    return Parsed<DayReading>{date, next + 4};
}

// 3/4/2027, 4.3.2027, 2027-03-04: three fields of one separator without blanks
Attempt<DayReading> DayShapes::numeric(std::size_t i) const {
    const DateLexeme* fields[] = {number(i), number(i + 2), number(i + 4)};
    if (!fields[0] || !fields[1] || !fields[2] || fields[0]->openLeft) return std::nullopt;
    for (std::size_t k = 1; k <= 4; ++k)
        if (!touches(i + k)) return std::nullopt;
    const bool slashes = isSign(i + 1, u'/') && isSign(i + 3, u'/');
    const bool stops = isSign(i + 1, u'.') && isSign(i + 3, u'.');
    const bool dashes = isDash(i + 1) && isDash(i + 3);
    if (!(slashes || stops || dashes) || !endsNumeric(i + 4)) return std::nullopt;
    if (i > 0 && touches(i) && (isSign(i - 1, u'/') || isSign(i - 1, u'.'))) return std::nullopt;

    const std::size_t digits[] = {fields[0]->digits, fields[1]->digits, fields[2]->digits};
    // Year first: with leading zeros anywhere, without them where the locale writes so.
    const bool padded = digits[1] == 2 && digits[2] == 2;
    if (digits[0] == 4 && digits[1] <= 2 && digits[2] <= 2 && !(dashes && fields[0]->afterOperator) &&
        (padded || (order_ == DateOrder::yearMonthDay && !dashes)))
        return numericDate(*fields[0], *fields[1], *fields[2], i);
    if (dashes || digits[0] > 2 || digits[1] > 2 || (digits[2] != 4 && digits[2] != 2)) return std::nullopt;
    if (digits[2] == 2 && (fields[0]->afterOperator || (isDash(i + 5) && touches(i + 5)))) return std::nullopt;
    if (stops) {
        // Two digits of the year only where dates are written so: elsewhere it is a version.
        if (digits[2] == 2 && order_ != DateOrder::dayMonthYear) return std::nullopt;
        return numericDate(*fields[2], *fields[1], *fields[0], i);
    }
    switch (order_) {
        case DateOrder::monthDayYear:
            return numericDate(*fields[2], *fields[0], *fields[1], i);
        case DateOrder::dayMonthYear:
            return numericDate(*fields[2], *fields[1], *fields[0], i);
        case DateOrder::yearMonthDay:
            break;
    }
    return digits[2] == 2 ? numericDate(*fields[0], *fields[1], *fields[2], i)
                          : numericDate(*fields[2], *fields[0], *fields[1], i);
}

// Nothing may touch the last field that would make it another number or go on with the arithmetic.
bool DayShapes::endsNumeric(std::size_t last) const {
    if (!number(last)->openRight) {
        const DateLexeme* next = at(last + 1);
        return !next || next->spaced || next->kind != DateLexeme::Kind::word || isIsoT(last + 1) || next->entry;
    }
    return false;
}

Attempt<DayReading> DayShapes::numericDate(const DateLexeme& year, const DateLexeme& month, const DateLexeme& day,
                                           std::size_t i) {
    if (year.digits == 4 && year.value < 1000) return std::nullopt;
    return Parsed<DayReading>{
        NamedDay{fullYear(year), static_cast<unsigned>(month.value), static_cast<unsigned>(day.value)}, i + 5};
}

// Friday, next Friday, lundi prochain, Friday next week; with a date after it, only that one counts
Attempt<DayReading> DayShapes::weekdayNamed(std::size_t i) const {
    NamedWeekday named;
    bool alone = true;
    std::size_t next = i;
    if (is(next, DateWord::next)) {
        named.direction = value(next, DateWord::next);
        ++next;
    } else if (is(next, DateWord::shiftedUnit)) {
        named.weeks = weeksOf(value(next, DateWord::shiftedUnit));
        next = skipping(next + 1, DateWord::joint);
        if (!named.weeks) return std::nullopt;
    }
    const bool led = next > i;
    if (!is(next, DateWord::weekday)) return std::nullopt;
    const auto* meaning = lexemes_[next].entry->find(DateWord::weekday);
    named.weekday = static_cast<unsigned>(meaning->value);
    alone = led || !meaning->abbreviated;
    next = meaning->abbreviated ? behindStop(next + 1) : next + 1;
    if (led) return Parsed<DayReading>{named, next};
    if (is(next, DateWord::nextBehind)) {
        named.direction = value(next, DateWord::nextBehind);
        return Parsed<DayReading>{named, next + 1};
    }
    if (is(next, DateWord::next) && is(next + 1, DateWord::unit) &&
        value(next + 1, DateWord::unit) == static_cast<int>(DateUnit::week)) {
        named.weeks = value(next, DateWord::next);
        return Parsed<DayReading>{named, next + 2};
    }
    Attempt<DayReading> date =
        calendarDate(skipping(behindComma(next), DateWord::article, DateWord::on, DateWord::joint));
    if (date) return date;
    return Parsed<DayReading>{named, next, alone};
}

std::optional<int> DayShapes::weeksOf(int shiftedUnit) {
    if ((shiftedUnit & ~nextUnit) != static_cast<int>(DateUnit::week)) return std::nullopt;
    return shiftedUnit & nextUnit ? 1 : -1;
}

// today, day after tomorrow; in 3 days, 2 weeks ago; next month, la semaine prochaine
Attempt<DayReading> DayShapes::relative(std::size_t i) const {
    if (is(i, DateWord::day)) {
        const int days = value(i, DateWord::day);
        // One word for a day next to today is a function of its own.
        return Parsed<DayReading>{ShiftedDay{DateUnit::day, days}, i + 1, days < -1 || days > 1};
    }
    if (is(i, DateWord::shiftedUnit)) {
        const int shifted = value(i, DateWord::shiftedUnit);
        return Parsed<DayReading>{ShiftedDay{static_cast<DateUnit>(shifted & ~nextUnit), shifted & nextUnit ? 1 : -1},
                                  i + 1};
    }
    if (is(i, DateWord::next)) return neighbour(i + 1, value(i, DateWord::next), i + 2);
    if (is(i, DateWord::unit) && is(i + 1, DateWord::nextBehind))
        return neighbour(i, value(i + 1, DateWord::nextBehind), i + 2);
    if (is(i, DateWord::ahead) && !followsNumber(i)) {
        if (auto shift = counted(i + 1, 1)) return shift;
    }
    if (is(i, DateWord::ago)) return counted(i + 1, -1);
    auto shift = counted(i, 1);
    if (!shift || (i > 0 && lexemes_[i].spaced && number(i - 1))) return std::nullopt;
    if (is(shift->end, DateWord::agoBehind)) {
        auto& count = std::get<ShiftedDay>(shift->reading).count;
        count = -count;
    } else if (!is(shift->end, DateWord::aheadBehind)) {
        return std::nullopt;
    }
    ++shift->end;
    return shift;
}

Attempt<DayReading> DayShapes::neighbour(std::size_t unitAt, int direction, std::size_t end) const {
    if (!is(unitAt, DateWord::unit) || direction == 0) return std::nullopt;
    const auto unit = static_cast<DateUnit>(value(unitAt, DateWord::unit));
    if (unit < DateUnit::week) return std::nullopt;
    return Parsed<DayReading>{ShiftedDay{unit, direction}, end};
}

// 3 days, a week
Attempt<DayReading> DayShapes::counted(std::size_t i, int sign) const {
    const DateLexeme* digits = count(i, 4);
    if (!digits && !is(i, DateWord::count)) return std::nullopt;
    const int many = digits ? digits->value : value(i, DateWord::count);
    // A sign for the day of the month counts days too.
    const bool marksDays = is(i + 1, DateWord::dayMark) && !is(i + 1, DateWord::unit);
    if (!marksDays && !is(i + 1, DateWord::unit)) return std::nullopt;
    const auto unit = marksDays ? DateUnit::day : static_cast<DateUnit>(value(i + 1, DateWord::unit));
    return Parsed<DayReading>{ShiftedDay{unit, sign * many}, i + 2};
}

Attempt<DayReading> DayShapes::calendarDate(std::size_t i) const {
    Attempt<DayReading> best = numeric(i);
    keepLonger(best, marked(i));
    keepLonger(best, monthFirst(i));
    keepLonger(best, dayFirst(i));
    return best;
}

Attempt<DayReading> DayShapes::dayAt(std::size_t i) const {
    Attempt<DayReading> best = calendarDate(i);
    keepLonger(best, weekdayNamed(i));
    keepLonger(best, relative(i));
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

// Index after what may follow the number of a day: "th", the full stop of German.
std::size_t DayShapes::behindOrdinal(std::size_t i) const {
    if (touches(i) && (is(i, DateWord::ordinal) || isSign(i, u'.'))) return i + 1;
    return i;
}

// Index after the full stop of an abbreviated name.
std::size_t DayShapes::behindStop(std::size_t i) const {
    return touches(i) && isSign(i, u'.') ? i + 1 : i;
}

}  // namespace vemo
