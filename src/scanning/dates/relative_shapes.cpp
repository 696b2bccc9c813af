// SPDX-License-Identifier: MIT
#include "scanning/dates/date_shapes.h"

namespace vemo {

namespace {

constexpr int lastDayOfWeek = 6;  // Saturday

}  // namespace

// next week, la semaine prochaine, 来週
std::optional<DayShapes::Week> DayShapes::weekAt(std::size_t i) const {
    const auto isWeek = [&](std::size_t at) {
        return is(at, DateWord::unit) && value(at, DateWord::unit) == static_cast<int>(DateUnit::week);
    };
    if (is(i, DateWord::next) && isWeek(i + 1)) return Week{value(i, DateWord::next), i + 2};
    if (isWeek(i) && is(i + 1, DateWord::nextAfter)) return Week{value(i + 1, DateWord::nextAfter), i + 2};
    if (is(i, DateWord::shiftedUnit)) {
        const ShiftedDay shift = shiftOf(value(i, DateWord::shiftedUnit));
        if (shift.unit == DateUnit::week) return Week{shift.count, i + 1};
    }
    return std::nullopt;
}

// Friday, next Friday, lundi prochain, Tuesday of next week, next week Tuesday; with a date after it, only that one
// counts
Attempt<DayReading> DayShapes::weekdayNamed(std::size_t i) const {
    NamedWeekday named;
    std::size_t next = i;
    if (const auto week = weekAt(i)) {
        named.weeks = week->weeks;
        next = skipping(afterComma(week->end), DateWord::joint, DateWord::on);
    } else if (is(next, DateWord::next)) {
        named.direction = value(next, DateWord::next);
        ++next;
    }
    const bool led = next > i;
    if (!is(next, DateWord::weekday)) return std::nullopt;
    const auto* meaning = lexemes_[next].entry->find(DateWord::weekday);
    named.weekday = static_cast<unsigned>(meaning->value);
    const bool alone = led || !meaning->abbreviated;
    next = meaning->abbreviated ? afterStop(next + 1) : next + 1;
    // "monday.com", "Friday's child"
    const bool stop = isSign(next, u'.') && at(next + 1) && touches(next + 1);
    if (touches(next) && (stop || isSign(next, u'\'') || isSign(next, u'\u2019'))) return std::nullopt;
    if (led) return Parsed<DayReading>{named, next};
    if (is(next, DateWord::nextAfter)) {
        named.direction = value(next, DateWord::nextAfter);
        return Parsed<DayReading>{named, next + 1};
    }
    const std::size_t weekStart = skipping(afterComma(next), DateWord::of, DateWord::article, DateWord::joint);
    if (const auto week = weekAt(weekStart)) {
        named.weeks = week->weeks;
        return Parsed<DayReading>{named, week->end};
    }
    Attempt<DayReading> date =
        calendarDate(skipping(afterComma(next), DateWord::article, DateWord::on, DateWord::joint));
    if (date) return date;
    return Parsed<DayReading>{named, next, alone};
}

// this weekend, le week-end prochain, 来週末: its Saturday
Attempt<DayReading> DayShapes::weekendAt(std::size_t i) const {
    const auto weekend = [](int weeks, std::size_t end) {
        return Parsed<DayReading>{NamedWeekday{lastDayOfWeek, 0, weeks}, end};
    };
    if (is(i, DateWord::weekendOf)) return weekend(value(i, DateWord::weekendOf), i + 1);
    if (is(i, DateWord::next) && is(i + 1, DateWord::weekend)) return weekend(value(i, DateWord::next), i + 2);
    if (is(i, DateWord::weekend) && is(i + 1, DateWord::nextAfter))
        return weekend(value(i + 1, DateWord::nextAfter), i + 2);
    return std::nullopt;
}

ShiftedDay DayShapes::shiftOf(int shiftedUnit) {
    const auto unit = static_cast<DateUnit>(shiftedUnit & (nextUnit - 1));
    if (shiftedUnit & thisUnit) return {unit, 0};
    return {unit, shiftedUnit & nextUnit ? 1 : -1};
}

// today, day after tomorrow; in 3 days, 2 weeks ago; next month, la semaine prochaine, next 2 weeks
Attempt<DayReading> DayShapes::relative(std::size_t i) const {
    if (is(i, DateWord::day)) {
        const int days = value(i, DateWord::day);
        // One word for a day next to today is a function of its own.
        return Parsed<DayReading>{ShiftedDay{DateUnit::day, days}, i + 1, days < -1 || days > 1};
    }
    if (is(i, DateWord::shiftedUnit)) {
        const ShiftedDay shift = shiftOf(value(i, DateWord::shiftedUnit));
        if (shift.count != 0 || shift.unit == DateUnit::week) return Parsed<DayReading>{shift, i + 1};
        return std::nullopt;
    }
    if (is(i, DateWord::next)) {
        const int direction = value(i, DateWord::next);
        if (direction != 0 && is(i + 1, DateWord::weekdayName))
            return Parsed<DayReading>{BusinessDay{direction}, i + 2};
        if (direction == 1)
            if (auto shift = countedAhead(i + 1)) return shift;
        return neighbour(i + 1, direction, i + 2);
    }
    if (is(i, DateWord::unit) && is(i + 1, DateWord::nextAfter))
        return neighbour(i, value(i + 1, DateWord::nextAfter), i + 2);
    if (is(i, DateWord::weekdayName) && is(i + 1, DateWord::nextAfter))
        return Parsed<DayReading>{BusinessDay{value(i + 1, DateWord::nextAfter)}, i + 2};
    if (is(i, DateWord::within)) {
        if (auto shift = countedAhead(i + 1)) return shift;
    }
    if (is(i, DateWord::ahead) && !followsNumber(i)) {
        if (auto shift = countedAhead(i + 1)) return shift;
    }
    if (is(i, DateWord::ago)) {
        auto shift = countedAhead(i + 1);
        if (shift) std::get<ShiftedDay>(shift->reading).count *= -1;
        return shift;
    }
    return countedAfter(i);
}

Attempt<DayReading> DayShapes::neighbour(std::size_t unitAt, int direction, std::size_t end) const {
    if (!is(unitAt, DateWord::unit)) return std::nullopt;
    const auto unit = static_cast<DateUnit>(value(unitAt, DateWord::unit));
    if (unit < DateUnit::week || (direction == 0 && unit != DateUnit::week)) return std::nullopt;
    return Parsed<DayReading>{ShiftedDay{unit, direction}, end};
}

// 3 days, a week; 2 prochaines semaines
Attempt<DayReading> DayShapes::counted(std::size_t i, int sign) const {
    const DateLexeme* digits = count(i, 4);
    if (!digits && !is(i, DateWord::count)) return std::nullopt;
    const int many = digits ? digits->value : value(i, DateWord::count);
    // A sign for the day of the month counts days too.
    const bool marksDays = is(i + 1, DateWord::dayMark) && !is(i + 1, DateWord::unit);
    if (!marksDays && !is(i + 1, DateWord::unit)) return std::nullopt;
    const auto unit = marksDays ? DateUnit::day : static_cast<DateUnit>(value(i + 1, DateWord::unit));
    if (unit == DateUnit::hour) return std::nullopt;  // a duration, never a date
    return Parsed<DayReading>{ShiftedDay{unit, sign * many}, i + 2};
}

// A count with nothing more of a duration after it: "in 2 weeks 3 days" is one duration.
Attempt<DayReading> DayShapes::countedAhead(std::size_t i) const {
    auto shift = counted(i, 1);
    if (!shift) return std::nullopt;
    const std::size_t next = skipping(shift->end, DateWord::rangeAnd);
    const bool goesOn = (number(next) || is(next, DateWord::count)) && isPartOfDuration(next + 1);
    return goesOn || is(shift->end, DateWord::minutesAfter) ? std::nullopt : std::move(shift);
}

// 2 weeks ago, 3 days from now; les 2 prochaines semaines
Attempt<DayReading> DayShapes::countedAfter(std::size_t i) const {
    if (const DateLexeme* many = count(i, 4);
        many && is(i + 1, DateWord::next) && value(i + 1, DateWord::next) == 1 && is(i + 2, DateWord::unit)) {
        const auto unit = static_cast<DateUnit>(value(i + 2, DateWord::unit));
        if (unit >= DateUnit::day) return Parsed<DayReading>{ShiftedDay{unit, many->value}, i + 3};
    }
    auto shift = counted(i, 1);
    // "2 weeks and 3 days ago" is one duration.
    const std::size_t before = i > 1 && is(i - 1, DateWord::rangeAnd) ? i - 1 : i;
    if (!shift || (i > 0 && lexemes_[i].spaced && number(i - 1)) || (before > 0 && isPartOfDuration(before - 1)))
        return std::nullopt;
    // "3月3日から10日後" counts from that day.
    if (i > 1 && is(i - 1, DateWord::rangeTo) && touches(i) && touches(i - 1)) return std::nullopt;
    if (is(shift->end, DateWord::agoAfter)) {
        auto& many = std::get<ShiftedDay>(shift->reading).count;
        many = -many;
    } else if (!is(shift->end, DateWord::aheadAfter)) {
        return std::nullopt;
    }
    ++shift->end;
    return shift;
}

// end of month, beginning of next year, fin mars, Monatsende, 来月末
Attempt<DayReading> DayShapes::edgeAt(std::size_t i) const {
    const auto edge = [](DateUnit unit, int count, bool end, std::size_t next) -> Attempt<DayReading> {
        if (unit < DateUnit::week) return std::nullopt;
        return Parsed<DayReading>{EdgeDay{unit, count, end}, next};
    };
    if (is(i, DateWord::edgeOfUnit)) {
        const int word = value(i, DateWord::edgeOfUnit);
        return edge(static_cast<DateUnit>(word & (nextUnit - 1)), 0, (word & nextUnit) != 0, i + 1);
    }
    if (is(i, DateWord::shiftedUnit) && is(i + 1, DateWord::edge)) {
        const ShiftedDay shift = shiftOf(value(i, DateWord::shiftedUnit));
        return edge(shift.unit, shift.count, value(i + 1, DateWord::edge) == 1, i + 2);
    }
    if (!is(i, DateWord::edge)) return std::nullopt;
    const bool end = value(i, DateWord::edge) == 1;
    const std::size_t next = skipping(i + 1, DateWord::of, DateWord::article);
    if (is(next, DateWord::shiftedUnit)) {
        const ShiftedDay shift = shiftOf(value(next, DateWord::shiftedUnit));
        return edge(shift.unit, shift.count, end, next + 1);
    }
    const bool led = is(next, DateWord::next);
    const std::size_t unitAt = led ? next + 1 : next;
    if (is(unitAt, DateWord::unit)) {
        const auto unit = static_cast<DateUnit>(value(unitAt, DateWord::unit));
        if (!led && is(unitAt + 1, DateWord::nextAfter))
            return edge(unit, value(unitAt + 1, DateWord::nextAfter), end, unitAt + 2);
        return edge(unit, led ? value(next, DateWord::next) : 0, end, unitAt + 1);
    }
    if (!is(next, DateWord::month)) return std::nullopt;
    NamedDay date{std::nullopt, static_cast<unsigned>(value(next, DateWord::month)), end ? 0u : 1u};
    const std::size_t yearAt = afterComma(skipping(next + 1, DateWord::of));
    if (const DateLexeme* named = year(yearAt); named && !named->openLeft) {
        date.year = named->value;
        return Parsed<DayReading>{date, yearAt + 1};
    }
    return number(next + 1) ? std::nullopt : Attempt<DayReading>(Parsed<DayReading>{date, next + 1});
}

Attempt<DayReading> DayShapes::dayAt(std::size_t i) const {
    Attempt<DayReading> best = calendarDate(i);
    keepLonger(best, weekdayNamed(i));
    keepLonger(best, weekendAt(i));
    keepLonger(best, relative(i));
    keepLonger(best, edgeAt(i));
    return best;
}

}  // namespace vemo
