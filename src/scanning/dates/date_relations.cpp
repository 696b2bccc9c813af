// SPDX-License-Identifier: MIT
#include "scanning/dates/date_relations.h"

#include <algorithm>

namespace vemo {

namespace {

class RelationFinder : DateShapes {
public:
    using Kind = DateRelation::Kind;

    RelationFinder(const DateText& text, std::vector<PlacedReading>& readings)
        : DateShapes(text), readings_(readings) {}

    std::vector<DateRelation> find() {
        std::size_t reading = 0;
        for (std::size_t i = 0; i < lexemes_.size();) {
            while (reading < readings_.size() && readings_[reading].end <= i) ++reading;
            if (reading < readings_.size() && readings_[reading].start <= i) {
                i = readings_[reading].end;
                continue;
            }
            if (lexemes_[i].entry) relationAt(i);
            ++i;
        }
        return std::move(found_);
    }

private:
    // A day or time of the text: a reading, or a word that is a function by itself, such as "tomorrow".
    struct Anchor {
        PlacedReading* reading = nullptr;
        std::size_t end = 0;
    };

    // "weekday of (March 4 + 7 days)": brackets may hold what begins with one.
    std::optional<Anchor> anchorAt(std::size_t i) const {
        while (isSign(i, u'(')) ++i;
        const std::size_t last = skipping(i, DateWord::article, DateWord::on, DateWord::at, DateWord::atHour,
                                          DateWord::of, DateWord::rangeFrom);
        for (PlacedReading& reading : readings_)
            if (reading.start >= i && reading.start <= last) return Anchor{&reading, afterBrackets(reading.end)};
        for (std::size_t k = i; k <= last; ++k)
            if (is(k, DateWord::day) || isName(k)) return Anchor{nullptr, afterBrackets(k + 1)};
        return std::nullopt;
    }
    std::size_t afterBrackets(std::size_t i) const {
        while (isSign(i, u')')) ++i;
        return i;
    }
    // True for a variable that holds a date.
    bool isName(std::size_t i) const {
        const DateLexeme* word = at(i);
        return word && word->kind == DateLexeme::Kind::word && !word->entry &&
               text_.isDateName(lowercased(word->range.in(text_.text)));
    }
    std::optional<Anchor> anchorBefore(std::size_t i) const {
        while (i > 0 && isSign(i - 1, u')')) --i;
        for (PlacedReading& reading : readings_)
            if (reading.end == i) return Anchor{&reading, i};
        if (i > 0 && (is(i - 1, DateWord::day) || isName(i - 1))) return Anchor{nullptr, i};
        return std::nullopt;
    }

    // The lexeme at which a duration begins that ends here: "2 h 30 min", "two weeks", "half an hour".
    std::optional<std::size_t> durationBefore(std::size_t end) const {
        std::size_t i = end;
        bool counted = false;
        while (i > 0 && isInDuration(i - 1)) {
            counted = counted || number(i - 1) || isAny(i - 1, DateWord::count, DateWord::duration);
            --i;
        }
        while (i < end && isAny(i, DateWord::rangeAnd)) ++i;
        if (number(i) && number(i)->openLeft) return std::nullopt;  // "x5 days"
        const bool complete =
            end > 0 &&
            (isOfDuration(end - 1) || isAny(end - 1, DateWord::minutesAfter, DateWord::halfPast) || isMinutes(end - 1));
        return counted && complete ? std::optional(i) : std::nullopt;
    }
    std::optional<std::size_t> durationAt(std::size_t start) const {
        std::size_t i = start;
        if (!number(i) && !isAny(i, DateWord::count, DateWord::duration)) return std::nullopt;
        std::size_t end = start;
        for (; i < lexemes_.size() && isInDuration(i); ++i)
            if (isOfDuration(i) || is(i, DateWord::minutesAfter) || isMinutes(i)) end = i + 1;
        return end > start ? std::optional(end) : std::nullopt;
    }
    bool isInDuration(std::size_t i) const {
        return (number(i) && !isOperatorBefore(i)) || isOfDuration(i) ||
               isAny(i, DateWord::count, DateWord::rangeAnd, DateWord::minutesAfter, DateWord::halfPast,
                     DateWord::hourLetter) ||
               ((isSign(i, u'.') || isSign(i, u',')) && touches(i) && touches(i + 1) && number(i + 1));
    }
    // True for a unit of a duration. In "2週間3日後" the sign of a day of the month counts days, too.
    bool isOfDuration(std::size_t i) const {
        return isPartOfDuration(i) || (is(i, DateWord::dayMark) && i > 0 && number(i - 1));
    }
    bool isOperatorBefore(std::size_t i) const { return lexemes_[i].afterOperator; }
    // True for the 30 of "2 h 30".
    bool isMinutes(std::size_t i) const {
        return number(i) && number(i)->digits == 2 && i > 1 &&
               isAny(i - 1, DateWord::unitSymbol, DateWord::hourLetter) && number(i - 2);
    }

    bool isBareUnit(std::size_t i) const {
        return i > 0 && isAny(i - 1, DateWord::unit, DateWord::businessDay) &&
               !(i > 1 && (number(i - 2) || is(i - 2, DateWord::count)));
    }
    bool isDays(std::size_t i) const {
        return is(i, DateWord::dayMark) ||
               (is(i, DateWord::unit) && value(i, DateWord::unit) == static_cast<int>(DateUnit::day));
    }
    bool isPresent(std::size_t i) const { return i > 0 && is(i - 1, DateWord::present); }

    void add(std::size_t i, Kind kind, int value = 0) { found_.push_back({lexemes_[i].range, kind, value}); }
    // The words that count in a duration are numbers there, and "営業日後" is one word elsewhere.
    void addCounts(std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i)
            if (is(i, DateWord::businessDay))
                add(i, Kind::workdays);
            else if (is(i, DateWord::count) && isOfDuration(i + 1))
                add(i, Kind::number, value(i, DateWord::count));
    }

    void relationAt(std::size_t i) {
        if (isAny(i, DateWord::ahead, DateWord::ago)) {
            const auto end = durationAt(i + 1);
            if (end && !followsAnyNumber(i)) {
                add(i, is(i, DateWord::ago) ? Kind::ago : Kind::fromNow);
                return addCounts(i + 1, *end);
            }
        }
        const auto duration = durationBefore(i);
        if (duration && isAny(i, DateWord::agoAfter, DateWord::aheadAfter)) {
            // "3月3日から10日後": counted from that day.
            const std::size_t from = *duration - 1;
            if (*duration > 0 && isAny(from, DateWord::rangeTo) && anchorBefore(from)) {
                add(from, is(i, DateWord::agoAfter) ? Kind::before : Kind::after);
                if (isDays(i - 1)) add(i - 1, Kind::days);  // 日後 is one word elsewhere
                return addCounts(*duration, i);
            }
            add(i, is(i, DateWord::agoAfter) ? Kind::ago : Kind::fromNow);
            return addCounts(*duration, i);
        }
        if (dayCountAfter(i) || clockWord(i)) return;
        if (is(i, DateWord::placing) && followsTime(i)) return add(i, Kind::placed);
        const auto anchor = anchorAt(i + 1);
        if (anchor && betweenDates(i, *anchor, duration)) return;
        const auto before = anchorBefore(i);
        if (!before) return;
        if (is(i, DateWord::ageOf)) add(i, Kind::age);
        if (is(i, DateWord::weekdayOf)) add(i, Kind::weekday);
        if (is(i, DateWord::weekNumberOf)) add(i, Kind::weekNumber);
        if (is(i, DateWord::howLong)) howLong(i, *before);
    }
    void howLong(std::size_t i, const Anchor& anchor) {
        const int direction = value(i, DateWord::howLong);
        add(i, direction > 0 ? Kind::until : Kind::since);
        if (anchor.reading) anchor.reading->reading.direction = direction;
    }

    // Adds the relation to the day or time that follows; false when there is none.
    bool betweenDates(std::size_t i, const Anchor& anchor, std::optional<std::size_t> duration) {
        if (duration && isAny(i, DateWord::before, DateWord::after)) {
            add(i, is(i, DateWord::before) ? Kind::before : Kind::after);
            addCounts(*duration, i);
            return true;
        }
        if (isAny(i, DateWord::rangeTo, DateWord::rangeAnd, DateWord::until)) {
            const auto start = anchorBefore(i);
            const bool opened = start && (!is(i, DateWord::rangeAnd) || isOpened(*start, i));
            if (opened) {
                add(i, Kind::span);
                if (anchor.reading) {
                    anchor.reading->reading.ending = start->reading != nullptr;
                    if (!start->reading) anchor.reading->reading.direction = 1;
                }
                return true;
            }
        }
        if (isAny(i, DateWord::rangeFrom) && isBareUnit(i) && spansFrom(anchor)) {
            add(i, Kind::measured);
            return true;
        }
        const bool open = isBareUnit(i) || isPresent(i);
        if (open && isAny(i, DateWord::until, DateWord::rangeTo, DateWord::before)) {
            add(i, Kind::until);
            if (anchor.reading) anchor.reading->reading.direction = 1;
            return true;
        }
        if (isBareUnit(i) && isAny(i, DateWord::since, DateWord::after)) {
            add(i, Kind::since);
            if (anchor.reading) anchor.reading->reading.direction = -1;
            return true;
        }
        if (is(i, DateWord::howLong)) {
            howLong(i, anchor);
            return true;
        }
        const Kind kinds[] = {Kind::age, Kind::weekday, Kind::weekNumber};
        const DateWord words[] = {DateWord::ageOf, DateWord::weekdayOf, DateWord::weekNumberOf};
        for (std::size_t k = 0; k < std::size(words); ++k) {
            if (!is(i, words[k])) continue;
            add(i, kinds[k]);
            return true;
        }
        return false;
    }

    // True when "between" stands before the first end of the span.
    bool isOpened(const Anchor& start, std::size_t i) const {
        std::size_t first = start.reading ? start.reading->start : i - 1;
        for (std::size_t k = first; k < i; ++k)
            if (is(k, DateWord::rangeFrom)) return true;  // "tomorrow between 3 and 5pm"
        while (first > 0 && isAny(first - 1, DateWord::article, DateWord::on, DateWord::at, DateWord::atHour)) --first;
        return first > 0 && is(first - 1, DateWord::rangeFrom);
    }
    bool spansFrom(const Anchor& anchor) const {
        return isAny(anchor.end, DateWord::rangeTo, DateWord::rangeAnd, DateWord::until) && anchorAt(anchor.end + 1);
    }

    // Adds what 12月25日まで何日, 3月3日から何日 and 3月3日から6月1日までの日数 ask for; false for other words.
    bool dayCountAfter(std::size_t i) {
        const auto start = anchorBefore(i);
        if (!start || !is(i + 1, DateWord::dayCount) || !isAny(i, DateWord::until, DateWord::rangeTo)) return false;
        const bool ending = start->reading && start->reading->reading.ending;
        const bool until = is(i, DateWord::until);
        add(i, ending ? Kind::conversion : until ? Kind::until : Kind::since);
        if (start->reading && !ending) start->reading->reading.direction = until ? 1 : -1;
        add(i + 1, Kind::days);
        return true;
    }

    // Adds an hour of the day that is told with the word for durations: "à 17 heures", "8 heures du matin"; false for
    // other words.
    bool clockWord(std::size_t i) {
        if (isAny(i, DateWord::at, DateWord::atHour) && number(i + 1) && is(i + 2, DateWord::clockHour)) {
            add(i, Kind::clock);
            return true;
        }
        if (!is(i, DateWord::half) || i < 2 || !is(i - 1, DateWord::clockHour) || !number(i - 2)) return false;
        add(i, value(i, DateWord::half) == 0 ? Kind::clockAm : Kind::clockPm);
        return true;
    }

    bool followsTime(std::size_t i) const {
        const auto before = anchorBefore(i);
        const DateLexeme* place = at(i + 1);
        return before && before->reading && before->reading->reading.time && place &&
               place->kind == DateLexeme::Kind::word;
    }

    std::vector<PlacedReading>& readings_;
    std::vector<DateRelation> found_;
};

}  // namespace

std::vector<DateRelation> relationsOf(const DateText& text, std::vector<PlacedReading>& readings) {
    return RelationFinder(text, readings).find();
}

}  // namespace vemo
