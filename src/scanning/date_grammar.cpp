// SPDX-License-Identifier: MIT
#include "scanning/date_grammar.h"

#include <algorithm>

#include "scanning/date_lexer.h"
#include "scanning/time_zone_abbreviations.h"

namespace vemo {

namespace {

template <class Reading>
struct Parsed {
    Reading reading;
    std::size_t end;      // index of the lexeme behind
    bool alone = true;    // it is a date without a time as well
};
template <class Reading>
using Attempt = std::optional<Parsed<Reading>>;

template <class Reading>
void keepLonger(Attempt<Reading>& best, Attempt<Reading> other) {
    if (other && (!best || other->end > best->end)) best = std::move(other);
}

// Two digits of a year: 1969 to 2068.
int fullYear(const DateLexeme& year) {
    if (year.digits != 2) return year.value;
    return year.value + (year.value < 69 ? 2000 : 1900);
}

// Tries the shapes of dates and times at a place of the text. None of them looks further than a few words.
class DateGrammar {
public:
    DateGrammar(std::u16string_view text, const std::vector<DateLexeme>& lexemes, DateOrder order)
        : text_(text), lexemes_(lexemes), order_(order) {}

    std::vector<DateReading> readings() const {
        std::vector<DateReading> result;
        std::size_t used = 0;
        for (std::size_t i = 0; i < lexemes_.size();) {
            auto moment = momentAt(i);
            if (!moment) {
                ++i;
                continue;
            }
            const std::size_t start = withLeadingWords(i, used);
            moment->reading.range = rangeOf(start, moment->end);
            result.push_back(std::move(moment->reading));
            i = used = moment->end;
        }
        return result;
    }

private:
    const DateLexeme* at(std::size_t i) const { return i < lexemes_.size() ? &lexemes_[i] : nullptr; }
    bool is(std::size_t i, DateWord word) const { return i < lexemes_.size() && lexemes_[i].isWord(word); }
    int value(std::size_t i, DateWord word) const { return lexemes_[i].entry->find(word)->value; }
    bool isSign(std::size_t i, char16_t sign) const { return i < lexemes_.size() && lexemes_[i].isSign(sign); }
    bool touches(std::size_t i) const { return i < lexemes_.size() && !lexemes_[i].spaced; }
    bool isDash(std::size_t i) const { return isSign(i, u'*') || isSign(i, u'-'); }

    TextRange rangeOf(std::size_t from, std::size_t to) const {
        const std::size_t start = lexemes_[from].range.location;
        return {start, lexemes_[to - 1].range.end() - start};
    }

    // "on Friday", "at 5pm", "on the 4th of March": the words belong to the date, as "on" would be an operator otherwise.
    std::size_t withLeadingWords(std::size_t i, std::size_t used) const {
        const auto leads = [&](std::size_t behind) {
            return behind > used && (is(behind - 1, DateWord::on) || is(behind - 1, DateWord::at)) && !inPercentage(behind - 1);
        };
        if (leads(i)) return i - 1;
        return i > used && is(i - 1, DateWord::article) && leads(i - 1) ? i - 2 : i;
    }

    const DateLexeme* number(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && lexeme->kind == DateLexeme::Kind::number ? lexeme : nullptr;
    }
    // A whole number of at most so many digits that is no part of arithmetic or of another number.
    const DateLexeme* count(std::size_t i, std::size_t mostDigits) const {
        const DateLexeme* lexeme = number(i);
        if (!lexeme || lexeme->openLeft || lexeme->openRight || lexeme->afterOperator || lexeme->digits > mostDigits) return nullptr;
        return lexeme;
    }
    const DateLexeme* dayNumber(std::size_t i) const {
        const DateLexeme* lexeme = count(i, 2);
        return lexeme && lexeme->value >= 1 && lexeme->value <= 31 ? lexeme : nullptr;
    }
    const DateLexeme* year(std::size_t i) const {
        const DateLexeme* lexeme = number(i);
        return lexeme && lexeme->digits == 4 && !lexeme->openRight && lexeme->value >= 1000 ? lexeme : nullptr;
    }
    bool inPercentage(std::size_t i) const { return i > 0 && (isSign(i - 1, u'%') || number(i - 1)); }

    // Index behind what may follow the number of a day: "th", the full stop of German.
    std::size_t behindOrdinal(std::size_t i) const {
        if (touches(i) && (is(i, DateWord::ordinal) || isSign(i, u'.'))) return i + 1;
        return i;
    }
    // Index behind the full stop of an abbreviated name.
    std::size_t behindStop(std::size_t i) const { return touches(i) && isSign(i, u'.') ? i + 1 : i; }
    template <class... Words>
    std::size_t skipping(std::size_t i, Words... words) const {
        while ((is(i, words) || ...)) ++i;
        return i;
    }

    // --- days ---

    // March 4, March 4th, 2027, March the 4th; March 2027
    Attempt<DayReading> monthFirst(std::size_t i) const {
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
    const DateLexeme* monthDay(std::size_t i) const {
        if (const DateLexeme* day = dayNumber(i)) return day;
        const DateLexeme* day = number(i);
        const bool commaYear = isSign(i + 1, u',') && touches(i + 1) && year(i + 2);
        return day && commaYear && !day->openLeft && day->digits <= 2 && day->value >= 1 && day->value <= 31 ? day : nullptr;
    }

    // 4 March 2027, the 4th of March, 4. März 2027, 4 de marzo de 2027
    Attempt<DayReading> dayFirst(std::size_t i) const {
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
    Attempt<DayReading> marked(std::size_t i) const {
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
    Attempt<DayReading> numeric(std::size_t i) const {
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
            case DateOrder::monthDayYear: return numericDate(*fields[2], *fields[0], *fields[1], i);
            case DateOrder::dayMonthYear: return numericDate(*fields[2], *fields[1], *fields[0], i);
            case DateOrder::yearMonthDay: break;
        }
        return digits[2] == 2 ? numericDate(*fields[0], *fields[1], *fields[2], i)
                              : numericDate(*fields[2], *fields[0], *fields[1], i);
    }
    // Nothing may touch the last field that would make it another number or go on with the arithmetic.
    bool endsNumeric(std::size_t last) const {
        if (!number(last)->openRight) {
            const DateLexeme* next = at(last + 1);
            return !next || next->spaced || next->kind != DateLexeme::Kind::word || isIsoT(last + 1) || next->entry;
        }
        return false;
    }
    static Attempt<DayReading> numericDate(const DateLexeme& year, const DateLexeme& month, const DateLexeme& day, std::size_t i) {
        if (year.digits == 4 && year.value < 1000) return std::nullopt;
        return Parsed<DayReading>{NamedDay{fullYear(year), static_cast<unsigned>(month.value), static_cast<unsigned>(day.value)}, i + 5};
    }
    bool isIsoT(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->kind == DateLexeme::Kind::word && (lexeme->range.in(text_) == u"T") &&
               number(i + 1) && touches(i + 1);
    }

    // Friday, next Friday, lundi prochain, Friday next week; with a date behind, only that one counts
    Attempt<DayReading> weekdayNamed(std::size_t i) const {
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
        if (is(next, DateWord::next) && is(next + 1, DateWord::unit) && value(next + 1, DateWord::unit) == static_cast<int>(DateUnit::week)) {
            named.weeks = value(next, DateWord::next);
            return Parsed<DayReading>{named, next + 2};
        }
        Attempt<DayReading> date = calendarDate(skipping(behindComma(next), DateWord::article, DateWord::on, DateWord::joint));
        if (date) return date;
        return Parsed<DayReading>{named, next, alone};
    }
    static std::optional<int> weeksOf(int shiftedUnit) {
        if ((shiftedUnit & ~nextUnit) != static_cast<int>(DateUnit::week)) return std::nullopt;
        return shiftedUnit & nextUnit ? 1 : -1;
    }

    // today, day after tomorrow; in 3 days, 2 weeks ago; next month, la semaine prochaine
    Attempt<DayReading> relative(std::size_t i) const {
        if (is(i, DateWord::day)) {
            const int days = value(i, DateWord::day);
            // One word for a day next to today is a function of its own.
            return Parsed<DayReading>{ShiftedDay{DateUnit::day, days}, i + 1, days < -1 || days > 1};
        }
        if (is(i, DateWord::shiftedUnit)) {
            const int shifted = value(i, DateWord::shiftedUnit);
            return Parsed<DayReading>{ShiftedDay{static_cast<DateUnit>(shifted & ~nextUnit), shifted & nextUnit ? 1 : -1}, i + 1};
        }
        if (is(i, DateWord::next)) return neighbour(i + 1, value(i, DateWord::next), i + 2);
        if (is(i, DateWord::unit) && is(i + 1, DateWord::nextBehind)) return neighbour(i, value(i + 1, DateWord::nextBehind), i + 2);
        if (is(i, DateWord::ahead) && !inPercentage(i)) {
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
    Attempt<DayReading> neighbour(std::size_t unitAt, int direction, std::size_t end) const {
        if (!is(unitAt, DateWord::unit) || direction == 0) return std::nullopt;
        const auto unit = static_cast<DateUnit>(value(unitAt, DateWord::unit));
        if (unit < DateUnit::week) return std::nullopt;
        return Parsed<DayReading>{ShiftedDay{unit, direction}, end};
    }
    // 3 days, a week
    Attempt<DayReading> counted(std::size_t i, int sign) const {
        const DateLexeme* digits = count(i, 4);
        if (!digits && !is(i, DateWord::count)) return std::nullopt;
        const int many = digits ? digits->value : value(i, DateWord::count);
        // A sign for the day of the month counts days too.
        const bool marksDays = is(i + 1, DateWord::dayMark) && !is(i + 1, DateWord::unit);
        if (!marksDays && !is(i + 1, DateWord::unit)) return std::nullopt;
        const auto unit = marksDays ? DateUnit::day : static_cast<DateUnit>(value(i + 1, DateWord::unit));
        return Parsed<DayReading>{ShiftedDay{unit, sign * many}, i + 2};
    }

    Attempt<DayReading> calendarDate(std::size_t i) const {
        Attempt<DayReading> best = numeric(i);
        keepLonger(best, marked(i));
        keepLonger(best, monthFirst(i));
        keepLonger(best, dayFirst(i));
        return best;
    }
    Attempt<DayReading> dayAt(std::size_t i) const {
        Attempt<DayReading> best = calendarDate(i);
        keepLonger(best, weekdayNamed(i));
        keepLonger(best, relative(i));
        return best;
    }

    // --- times ---

    static bool exists(const TimeReading& time) { return time.hour < 24 && time.minute < 60 && time.second < 60; }

    bool startsTime(std::size_t i) const {
        const DateLexeme* hour = number(i);
        return hour && hour->digits <= 2 && (!hour->openLeft || (i > 0 && isIsoT(i - 1)));
    }
    const DateLexeme* twoDigits(std::size_t i) const {
        const DateLexeme* lexeme = number(i);
        return lexeme && lexeme->digits == 2 ? lexeme : nullptr;
    }

    // 10:30, 9:05:20, 5:30 pm, 10:30 Uhr
    Attempt<TimeReading> colons(std::size_t i) const {
        if (!startsTime(i) || !isSign(i + 1, u':') || !touches(i + 1) || !twoDigits(i + 2) || !touches(i + 2)) return std::nullopt;
        if (i > 0 && touches(i) && isSign(i - 1, u'/')) return std::nullopt;
        TimeReading time{number(i)->value, number(i + 2)->value, 0, {}};
        std::size_t next = i + 3;
        if (isSign(next, u':') && touches(next) && twoDigits(next + 1) && touches(next + 1)) {
            time.second = number(next + 1)->value;
            next += 2;
        }
        // A colon behind is a label's, or there are too many fields; ".5" and "/2" are arithmetic.
        if (number(next - 1)->openRight || (isSign(next, u':') && touches(next))) return std::nullopt;
        if (const DateLexeme* unknown = at(next); unknown && unknown->kind == DateLexeme::Kind::word && !unknown->spaced && !unknown->entry &&
            !isIsoZ(next))
            return std::nullopt;
        if (is(next, DateWord::half) && halved(time, value(next, DateWord::half))) ++next;
        else if (is(next, DateWord::oclock)) ++next;
        return Parsed<TimeReading>{time, next};
    }

    // 5pm, 5 p.m.
    Attempt<TimeReading> halfBehind(std::size_t i) const {
        const DateLexeme* hour = count(i, 2);
        if (!hour || !is(i + 1, DateWord::half)) return std::nullopt;
        TimeReading time{hour->value, 0, 0, {}};
        if (!halved(time, value(i + 1, DateWord::half))) return std::nullopt;
        return Parsed<TimeReading>{time, i + 2};
    }
    static bool halved(TimeReading& time, int half) {
        if (time.hour < 1 || time.hour > 12) return false;
        time.hour = time.hour % 12 + 12 * half;
        return true;
    }

    // 午後5時, 午後5:30
    Attempt<TimeReading> halfBefore(std::size_t i) const {
        if (!is(i, DateWord::half)) return std::nullopt;
        Attempt<TimeReading> time = colons(i + 1);
        if (!time) time = hours(i + 1);
        if (!time || time->reading.hour > 12) return std::nullopt;
        time->reading.hour = time->reading.hour % 12 + 12 * value(i, DateWord::half);
        return time;
    }

    // 10 Uhr, 10 Uhr 30, 10時30分, 10時半; 17h30, 17 h 30
    Attempt<TimeReading> hours(std::size_t i) const {
        if (!startsTime(i) || number(i)->openRight) return std::nullopt;
        if (number(i)->afterOperator || (i > 0 && number(i)->spaced && number(i - 1) && !number(i - 1)->openLeft && number(i - 1)->digits > 4))
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
        // With a unit behind it is a duration, or a number of its own.
        if (!fits || (!marked && is(next + 1, DateWord::unit)) || (!oclock && minute->spaced != lexemes_[i + 1].spaced)) {
            if (!oclock) return std::nullopt;
            return Parsed<TimeReading>{time, next};
        }
        time.minute = minute->value;
        next += marked ? 2 : 1;
        if (const DateLexeme* second = number(next); marked && second && second->digits <= 2 && is(next + 1, DateWord::secondMark)) {
            time.second = second->value;
            next += 2;
        }
        return Parsed<TimeReading>{time, next};
    }

    Attempt<TimeReading> named(std::size_t i) const {
        if (!is(i, DateWord::timeOfDay)) return std::nullopt;
        return Parsed<TimeReading>{TimeReading{value(i, DateWord::timeOfDay), 0, 0, {}}, i + 1};
    }

    bool isIsoZ(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->range.in(text_) == u"Z";
    }

    Attempt<TimeReading> timeAt(std::size_t i) const {
        Attempt<TimeReading> best = colons(i);
        keepLonger(best, halfBehind(i));
        keepLonger(best, halfBefore(i));
        keepLonger(best, hours(i));
        keepLonger(best, named(i));
        if (!best || !exists(best->reading)) return std::nullopt;
        if (const DateLexeme* zone = at(best->end); zone && zone->kind == DateLexeme::Kind::word) {
            best->reading.zone = zoneForAbbreviation(zone->range.in(text_));
            if (i > 0 && isIsoT(i - 1) && isIsoZ(best->end)) best->reading.zone = u"UTC";
            if (!best->reading.zone.empty()) ++best->end;
        }
        return best;
    }

    // --- both ---

    static Attempt<DateReading> moment(std::optional<DayReading> day, std::optional<TimeReading> time, std::size_t end) {
        return Parsed<DateReading>{{{}, std::move(day), time}, end};
    }

    Attempt<DateReading> momentAt(std::size_t i) const {
        Attempt<DateReading> best;
        if (const auto day = dayAt(i)) {
            if (day->alone) best = moment(day->reading, {}, day->end);
            const std::size_t joined = skipping(behindComma(day->end), DateWord::at, DateWord::joint, DateWord::on);
            const std::size_t next = isIsoT(day->end) ? day->end + 1 : joined;
            if (const auto time = timeAt(next)) keepLonger(best, moment(day->reading, time->reading, time->end));
            if (is(next, DateWord::dayPart)) keepLonger(best, moment(day->reading, hourOf(next, DateWord::dayPart), next + 1));
        }
        // this morning, last night
        if (is(i, DateWord::next) && value(i, DateWord::next) <= 0 && is(i + 1, DateWord::dayPart))
            keepLonger(best, moment(ShiftedDay{DateUnit::day, value(i, DateWord::next)}, hourOf(i + 1, DateWord::dayPart), i + 2));
        if (is(i, DateWord::tonight)) keepLonger(best, tonightAt(i));
        if (const auto time = timeAt(i)) {
            keepLonger(best, moment({}, time->reading, time->end));
            const std::size_t next = skipping(behindComma(time->end), DateWord::on, DateWord::article, DateWord::joint);
            if (is(next, DateWord::tonight)) keepLonger(best, moment(ShiftedDay{}, time->reading, next + 1));
            if (const auto day = dayAt(next)) keepLonger(best, moment(day->reading, time->reading, day->end));
        }
        return best;
    }
    std::size_t behindComma(std::size_t i) const { return isSign(i, u',') ? i + 1 : i; }
    TimeReading hourOf(std::size_t i, DateWord word) const { return {value(i, word), 0, 0, {}}; }

    // tonight, tonight at 9pm
    Attempt<DateReading> tonightAt(std::size_t i) const {
        if (const auto time = timeAt(skipping(i + 1, DateWord::at))) return moment(ShiftedDay{}, time->reading, time->end);
        return moment(ShiftedDay{}, hourOf(i, DateWord::tonight), i + 1);
    }

    std::u16string_view text_;
    const std::vector<DateLexeme>& lexemes_;
    DateOrder order_;
};

}  // namespace

std::vector<DateReading> readDates(std::u16string_view text, const DateVocabulary& vocabulary, DateOrder order) {
    std::u16string lower(text);
    for (char16_t& c : lower) c = lowercasedUnit(c);
    const std::vector<DateLexeme> lexemes = dateLexemes(lower, vocabulary);
    return DateGrammar(text, lexemes, order).readings();
}

}  // namespace vemo
