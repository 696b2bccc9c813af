// SPDX-License-Identifier: MIT
#include "scanning/dates/date_grammar.h"

#include "scanning/dates/date_relations.h"
#include "scanning/dates/date_shapes.h"
#include "scanning/dates/range_dashes.h"

namespace vemo {

namespace {

// Joins days and times.
class DateGrammar : DateShapes {
public:
    explicit DateGrammar(const DateText& text) : DateShapes(text), days_(text), times_(text) {}

    std::vector<PlacedReading> readings() const {
        std::vector<PlacedReading> result;
        std::size_t used = 0;
        for (std::size_t i = 0; i < lexemes_.size();) {
            const bool ends = i > 0 && isTimeToWord(i - 1, result);
            auto moment = momentAt(i, ends);
            if (!moment) moment = dayOfSpan(i, result);
            if (!moment) {
                ++i;
                continue;
            }
            const std::size_t start = withLeadingWords(i, used);
            moment->reading.range = rangeOf(start, moment->end);
            moment->reading.certain = moment->reading.certain || moment->certain;
            result.push_back({std::move(moment->reading), start, moment->end});
            i = used = result.back().end;
            // The word between the ends of a span belongs to neither.
            if (isAny(i, DateWord::rangeTo, DateWord::rangeAnd, DateWord::until) && begins(i + 1)) i = ++used;
        }
        return result;
    }

private:
    TextRange rangeOf(std::size_t from, std::size_t to) const {
        const std::size_t start = lexemes_[from].range.location;
        return {start, lexemes_[to - 1].range.end() - start};
    }

    // True for the word between a time and the end of the span that it begins.
    bool isTimeToWord(std::size_t i, const std::vector<PlacedReading>& before) const {
        return isAny(i, DateWord::rangeTo, DateWord::rangeAnd) && !before.empty() && before.back().end == i &&
               before.back().reading.time;
    }

    bool begins(std::size_t i) const {
        const std::size_t next = skipping(i, DateWord::article, DateWord::on, DateWord::at, DateWord::atHour);
        return momentAt(next, true).has_value() || is(next, DateWord::day);
    }

    // Where the date begins with the words that lead it: "on Friday", "at 5pm", "on the 4th of March". Left to others,
    // "on" would be an operator.
    std::size_t withLeadingWords(std::size_t i, std::size_t used) const {
        const auto leads = [&](std::size_t after) {
            return after > used && isAny(after - 1, DateWord::on, DateWord::at, DateWord::atHour) &&
                   !followsNumber(after - 1);
        };
        if (leads(i)) return i - 1;
        return i > used && is(i - 1, DateWord::article) && leads(i - 1) ? i - 2 : i;
    }

    static Attempt<DateReading> moment(std::optional<DayReading> day, std::optional<TimeReading> time, std::size_t end,
                                       bool certain = false) {
        DateReading reading;
        reading.day = std::move(day);
        reading.time = std::move(time);
        reading.offset = reading.time && !reading.time->zone.empty() && certain;
        return Parsed<DateReading>{std::move(reading), end, true, certain};
    }

    // The day of a span whose month stands at the other end: the 3 of "3 to 5 December", the 5 of "December 3 to 5".
    Attempt<DateReading> dayOfSpan(std::size_t i, const std::vector<PlacedReading>& before) const {
        const DateLexeme* written = count(i, 2);
        if (!written || written->value < 1) return std::nullopt;
        const auto day = static_cast<unsigned>(written->value);
        std::size_t end = i + 1;
        if (touches(end) && (isSign(end, u'.') || isAny(end, DateWord::ordinal, DateWord::dayMark))) ++end;
        if (isAny(end, DateWord::rangeTo) || (isFrom(i) && is(end, DateWord::rangeAnd))) {
            const std::size_t next = skipping(end + 1, DateWord::article, DateWord::on);
            const auto last = days_.dayAt(next);
            const auto* named = last && number(next) ? std::get_if<NamedDay>(&last->reading) : nullptr;
            if (!named || number(next)->digits > 2 || named->day <= day) return std::nullopt;
            return moment(NamedDay{named->year, named->month, day}, {}, end, true);
        }
        if (before.empty() || before.back().reading.time || !before.back().reading.day) return std::nullopt;
        const std::size_t to = before.back().end;
        const auto* first = std::get_if<NamedDay>(&*before.back().reading.day);
        const bool joined = isAny(to, DateWord::rangeTo) || is(to, DateWord::rangeAnd);
        if (!first || first->day == 0 || first->day >= day || !joined ||
            skipping(to + 1, DateWord::article, DateWord::on) != i)
            return std::nullopt;
        NamedDay last{first->year, first->month, day};
        if (const DateLexeme* year = number(afterComma(end)); year && year->digits == 4 && !year->openRight) {
            last.year = year->value;
            end = afterComma(end) + 1;
        }
        const DateLexeme* after = at(end);
        const bool ended = !after || (after->kind == DateLexeme::Kind::sign && after->sign != u':') ||
                           isAny(end, DateWord::ahead, DateWord::until, DateWord::dayCount);
        return ended ? moment(last, {}, end, true) : std::nullopt;
    }

    // `ends`: a span that begins with a time leads here.
    Attempt<DateReading> momentAt(std::size_t i, bool ends) const {
        Attempt<DateReading> best;
        if (const auto day = days_.dayAt(i)) best = dayMoment(i, *day);
        // this morning, last night
        if (is(i, DateWord::next) && value(i, DateWord::next) <= 0 && is(i + 1, DateWord::dayPart))
            keepLonger(best, partMoment(ShiftedDay{DateUnit::day, value(i, DateWord::next)},
                                        value(i + 1, DateWord::dayPart), i + 2));
        if (is(i, DateWord::partOfToday))
            keepLonger(best, partMoment(ShiftedDay{}, value(i, DateWord::partOfToday), i + 1));
        if (is(i, DateWord::lastNight))
            keepLonger(best, partMoment(ShiftedDay{DateUnit::day, -1}, value(i, DateWord::lastNight), i + 1));
        // 夜の8時
        if (is(i, DateWord::dayPart))
            if (const auto time = times_.timeAt(skipping(i + 1, DateWord::joint), TimeShapes::Beside::nothing))
                keepLonger(best, moment({}, TimeShapes::inPart(time->reading, value(i, DateWord::dayPart)), time->end));
        if (const auto time = timeOf(i, ends)) keepLonger(best, timeMoment(*time));
        if (count(i, 2) && isAny(i + 1, DateWord::day, DateWord::weekday, DateWord::partOfToday, DateWord::next))
            keepLonger(best, hourOfPart(i));
        return best;
    }

    // A day, with a time where one follows: tomorrow at 5pm, Friday evening at 7, 2027-03-04T10:30Z.
    Attempt<DateReading> dayMoment(std::size_t i, const Parsed<DayReading>& day) const {
        Attempt<DateReading> best;
        if (day.alone) best = moment(day.reading, {}, day.end, day.certain);
        const auto further = furtherFrom(day.end);
        if (further && day.alone) {
            best = moment(day.reading, {}, further->end, day.certain);
            best->reading.further = std::get<ShiftedDay>(further->reading);
        }
        const auto joined = [&](std::size_t from) {
            return skipping(afterComma(from), DateWord::at, DateWord::atHour, DateWord::joint, DateWord::on);
        };
        const bool isoT = isIsoT(day.end);
        std::size_t next = isoT ? day.end + 1 : joined(day.end);
        const bool opened = !isoT && is(next, DateWord::rangeFrom) && beginsSpanOfTimes(next + 1);
        if (opened) next = skipping(next + 1, DateWord::article, DateWord::at, DateWord::atHour);
        const bool isoDay = number(i) && number(i)->digits == 4 && isDash(i + 1);
        const auto beside = isoDay ? TimeShapes::Beside::isoDay : TimeShapes::Beside::day;
        Attempt<TimeReading> time = times_.timeAt(next, beside);
        if (!time && beginsSpan(next)) time = times_.bareHour(next);
        const bool led = next > day.end && isAny(next - 1, DateWord::at, DateWord::atHour);
        if (!time && led) time = hourBesideDay(next);
        if (time) {
            const auto with = moment(day.reading, time->reading, time->end, day.certain || time->certain);
            keepLonger(best, with);
            if (best->end == with->end) best->reading.offset = time->certain && !time->reading.zone.empty();
        }
        if (is(next, DateWord::dayPart))
            keepLonger(best, partMoment(day.reading, value(next, DateWord::dayPart), next + 1));
        return best;
    }

    // True when a span of times begins there: tomorrow "from" 3pm to 5pm.
    bool beginsSpanOfTimes(std::size_t i) const {
        const std::size_t next = skipping(i, DateWord::article, DateWord::at, DateWord::atHour);
        if (beginsSpan(next)) return true;
        const auto time = times_.timeAt(next, TimeShapes::Beside::day);
        return time && isAny(time->end, DateWord::rangeTo, DateWord::rangeAnd);
    }

    // A part of a day, with an hour where one follows: tonight at 8, 今夜8時.
    Attempt<DateReading> partMoment(const DayReading& day, int hour, std::size_t end) const {
        const std::size_t next = skipping(afterComma(end), DateWord::at, DateWord::atHour, DateWord::joint);
        Attempt<TimeReading> time = times_.timeAt(next, TimeShapes::Beside::day);
        if (!time && next > end && isAny(next - 1, DateWord::at, DateWord::atHour)) time = hourBesideDay(next);
        if (time) return moment(day, TimeShapes::inPart(time->reading, hour), time->end);
        return moment(day, TimeReading{hour, 0}, end);
    }

    // 8 tomorrow morning, 8 tonight
    Attempt<DateReading> hourOfPart(std::size_t i) const {
        const auto part = momentAt(i + 1, false);
        const bool toldByPart = part && part->reading.day && part->reading.time &&
                                isAny(part->end - 1, DateWord::dayPart, DateWord::partOfToday);
        const DateLexeme* hour = number(i);
        if (!toldByPart || hour->value > 12 || (i > 0 && number(i - 1))) return std::nullopt;
        auto with = part;
        with->reading.time = TimeShapes::inPart({hour->value, 0}, part->reading.time->hour);
        return with;
    }

    // The 8 of "tomorrow at 8"; nothing where a unit follows.
    Attempt<TimeReading> hourBesideDay(std::size_t i) const {
        if (auto hour = times_.bareHour(i)) return hour;
        const DateLexeme* hour = count(i, 2);
        const DateLexeme* next = at(i + 1);
        const bool words = next && next->kind == DateLexeme::Kind::word && next->spaced && !isPartOfDuration(i + 1) &&
                           next->range.length > 3;
        if (!hour || hour->value > 23 || !words) return std::nullopt;
        return Parsed<TimeReading>{TimeReading{hour->value, 0}, i + 1};
    }

    // の2週間前, after a day
    Attempt<DayReading> furtherFrom(std::size_t i) const {
        if (!is(i, DateWord::joint)) return std::nullopt;
        auto shift = days_.dayAt(i + 1);
        if (!shift || !std::holds_alternative<ShiftedDay>(shift->reading) || !number(i + 1)) return std::nullopt;
        return shift;
    }

    // A time of day; after "at", or at either end of a span, less is enough for one.
    Attempt<TimeReading> timeOf(std::size_t i, bool ends) const {
        const bool led = ends || (i > 0 && isAny(i - 1, DateWord::at, DateWord::atHour, DateWord::before,
                                                 DateWord::after, DateWord::until, DateWord::since, DateWord::howLong));
        const bool spans =
            isAny(endOfHour(i), DateWord::rangeTo) || (isFrom(i) && isAny(endOfHour(i), DateWord::rangeAnd));
        const auto beside = led || spans ? TimeShapes::Beside::preposition : TimeShapes::Beside::nothing;
        Attempt<TimeReading> time = times_.timeAt(i, beside);
        const bool lettered = time && is(i + 1, DateWord::hourLetter) && time->end == i + 2;
        if (lettered && spans && !led && !endsSpan(time->end + 1)) return std::nullopt;
        if (time) return time;
        if (i > 0 && is(i - 1, DateWord::atHour) && !followsNumber(i - 1)) return times_.bareHour(i);
        if (ends) return times_.bareHour(i);
        return spans && beginsSpan(i) ? times_.bareHour(i) : std::nullopt;
    }
    // True for the number of an hour with the end of a span after it: the 3 of "3 to 5pm", of "from 3 to 5 h".
    bool beginsSpan(std::size_t i) const {
        if (!count(i, 2) || !isAny(i + 1, DateWord::rangeTo, DateWord::rangeAnd)) return false;
        return isFrom(i) ? endsSpan(i + 2) : saysTime(i + 2);
    }
    std::size_t endOfHour(std::size_t i) const {
        // "3.15 to 5.30pm"
        const bool stopped = isSign(i + 1, u'.') && touches(i + 1) && touches(i + 2) && number(i + 2);
        if (stopped) return number(i + 2)->digits == 2 && saysTime(i + 4) ? i + 3 : i + 1;
        return is(i + 1, DateWord::hourLetter) ? i + 2 : i + 1;
    }
    bool isFrom(std::size_t i) const { return i > 0 && is(i - 1, DateWord::rangeFrom); }
    // True when a time stands there, or another hour with its letter.
    bool endsSpan(std::size_t i) const {
        const std::size_t next = skipping(i, DateWord::article, DateWord::at, DateWord::atHour);
        return times_.timeAt(next, TimeShapes::Beside::nothing) || times_.letteredHour(next);
    }
    bool saysTime(std::size_t i) const {
        const std::size_t next = skipping(i, DateWord::article, DateWord::at, DateWord::atHour);
        return times_.timeAt(next, TimeShapes::Beside::nothing).has_value();
    }

    // 5pm tomorrow, 10:30 on Friday, 8 tonight
    Attempt<DateReading> timeMoment(const Parsed<TimeReading>& time) const {
        Attempt<DateReading> best = moment({}, time.reading, time.end, time.certain);
        best->reading.offset = time.certain && !time.reading.zone.empty();
        const std::size_t next = skipping(afterComma(time.end), DateWord::on, DateWord::article, DateWord::joint);
        if (is(next, DateWord::partOfToday))
            keepLonger(best, moment(ShiftedDay{}, TimeShapes::inPart(time.reading, value(next, DateWord::partOfToday)),
                                    next + 1));
        if (const auto day = days_.dayAt(next); day && !is(next, DateWord::ahead)) {
            auto with = moment(day->reading, time.reading, day->end, time.certain || day->certain);
            with->reading.offset = best->reading.offset;
            with->reading.dayAfter = true;
            keepLonger(best, with);
        }
        return best;
    }

    DayShapes days_;
    TimeShapes times_;
};

}  // namespace

DateReadings readDates(std::u16string_view text, std::u16string_view written, const DateVocabulary& vocabulary,
                       DateOrder order, DateNames isDateName) {
    std::u16string lower(text);
    for (char16_t& c : lower) c = lowercasedUnit(c);
    std::vector<DateLexeme> lexemes = dateLexemes(lower, vocabulary);
    const DateText dates{text, written, lexemes, order, vocabulary.language(), isDateName};
    readRangeDashes(dates, lexemes);
    std::vector<PlacedReading> placed = DateGrammar(dates).readings();
    DateReadings result;
    result.relations = relationsOf(dates, placed);
    for (PlacedReading& reading : placed) result.dates.push_back(std::move(reading.reading));
    return result;
}

}  // namespace vemo
