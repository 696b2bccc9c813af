// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/calendar_names.h"
#include "scanning/dates/date_grammar.h"
#include "scanning/dates/date_lexer.h"

namespace vemo {

template <class Reading>
struct Parsed {
    Reading reading;
    std::size_t end;       // index of the next lexeme
    bool alone = true;     // it is a date without a time as well
    bool certain = false;  // nothing else is meant by its signs
};
template <class Reading>
using Attempt = std::optional<Parsed<Reading>>;

template <class Reading>
void keepLonger(Attempt<Reading>& best, Attempt<Reading> other) {
    if (other && (!best || other->end > best->end)) best = std::move(other);
}

// The text that is read.
struct DateText {
    std::u16string_view text;
    std::u16string_view written;  // the same with its own signs
    const std::vector<DateLexeme>& lexemes;
    DateOrder order;
    std::string_view language;
    DateNames isDateName;
};

// Questions about the lexemes of a text that the shapes of dates and times are told by; an index beyond the last one is
// no lexeme.
class DateShapes {
protected:
    explicit DateShapes(const DateText& text) : text_(text), lexemes_(text.lexemes) {}

    const DateLexeme* at(std::size_t i) const { return i < lexemes_.size() ? &lexemes_[i] : nullptr; }
    bool is(std::size_t i, DateWord word) const { return i < lexemes_.size() && lexemes_[i].isWord(word); }
    template <class... Words>
    bool isAny(std::size_t i, Words... words) const {
        return (is(i, words) || ...);
    }
    int value(std::size_t i, DateWord word) const { return lexemes_[i].entry->find(word)->value; }
    bool isSign(std::size_t i, char16_t sign) const { return i < lexemes_.size() && lexemes_[i].isSign(sign); }
    bool touches(std::size_t i) const { return i < lexemes_.size() && !lexemes_[i].spaced; }
    bool isDash(std::size_t i) const { return isSign(i, u'*') || isSign(i, u'-'); }
    // As it is written, where the text may be masked.
    char16_t signAt(std::size_t i) const { return text_.written[lexemes_[i].range.location]; }

    const DateLexeme* number(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && lexeme->kind == DateLexeme::Kind::number ? lexeme : nullptr;
    }
    // A whole number of at most so many digits that is no part of arithmetic or of another number.
    const DateLexeme* count(std::size_t i, std::size_t mostDigits) const {
        const DateLexeme* lexeme = number(i);
        if (!lexeme || lexeme->openLeft || lexeme->openRight || lexeme->afterOperator || lexeme->digits > mostDigits)
            return nullptr;
        return lexeme;
    }
    // True after a number, where the word is an operator or a unit: "5% on …", "2 in …".
    bool followsNumber(std::size_t i) const { return i > 0 && (isSign(i - 1, u'%') || number(i - 1)); }
    bool followsAnyNumber(std::size_t i) const {
        while (i-- > 0)
            if (number(i)) return true;
        return false;
    }
    bool isPartOfDuration(std::size_t i) const {
        return isAny(i, DateWord::unit, DateWord::unitSymbol, DateWord::businessDay, DateWord::duration);
    }

    std::size_t afterComma(std::size_t i) const { return isSign(i, u',') ? i + 1 : i; }
    template <class... Words>
    std::size_t skipping(std::size_t i, Words... words) const {
        while ((is(i, words) || ...)) ++i;
        return i;
    }

    // True for the letters of "2027-03-04T10:30Z".
    bool isIsoT(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->kind == DateLexeme::Kind::word &&
               lexeme->range.in(text_.text) == u"T" && number(i + 1) && touches(i + 1);
    }
    bool isIsoZ(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->range.in(text_.text) == u"Z";
    }

    const DateText& text_;
    const std::vector<DateLexeme>& lexemes_;
};

// Tries the shapes of days at a place of the text. None of them looks further than a few words.
class DayShapes : DateShapes {
public:
    explicit DayShapes(const DateText& text) : DateShapes(text) {}

    // The longest one that starts at the lexeme.
    Attempt<DayReading> dayAt(std::size_t i) const;

private:
    // Days of the calendar, in calendar_shapes.cpp and numeric_shapes.cpp.
    Attempt<DayReading> calendarDate(std::size_t i) const;
    Attempt<DayReading> monthFirst(std::size_t i) const;
    Attempt<DayReading> dayFirst(std::size_t i) const;
    Attempt<DayReading> yearFirst(std::size_t i) const;
    Attempt<DayReading> monthOnly(std::size_t i) const;
    Attempt<DayReading> festival(std::size_t i) const;
    Attempt<DayReading> marked(std::size_t i) const;
    Attempt<DayReading> numeric(std::size_t i) const;
    Attempt<DayReading> dottedWithoutYear(std::size_t i) const;
    Attempt<DayReading> strokedWithoutYear(std::size_t i) const;
    Attempt<DayReading> joinedByDashes(std::size_t i) const;
    bool endsNumeric(std::size_t last) const;
    static int fullYear(const DateLexeme& year);
    static Attempt<DayReading> numericDate(const DateLexeme& year, const DateLexeme& month, const DateLexeme& day,
                                           std::size_t i);
    const DateLexeme* monthDay(std::size_t i) const;
    const DateLexeme* dayNumber(std::size_t i) const;
    const DateLexeme* year(std::size_t i) const;
    std::size_t takeYear(std::size_t i, NamedDay& date, bool twoDigits) const;
    std::size_t afterWeekday(std::size_t i) const;
    std::size_t afterOrdinal(std::size_t i) const;
    std::size_t afterStop(std::size_t i) const;
    bool endsPhrase(std::size_t i) const;

    // Days told from today, in relative_shapes.cpp.
    struct Week {
        int weeks;
        std::size_t end;
    };
    std::optional<Week> weekAt(std::size_t i) const;
    Attempt<DayReading> weekdayNamed(std::size_t i) const;
    Attempt<DayReading> weekendAt(std::size_t i) const;
    Attempt<DayReading> relative(std::size_t i) const;
    Attempt<DayReading> neighbour(std::size_t unitAt, int direction, std::size_t end) const;
    Attempt<DayReading> counted(std::size_t i, int sign) const;
    Attempt<DayReading> countedAhead(std::size_t i) const;
    Attempt<DayReading> countedAfter(std::size_t i) const;
    Attempt<DayReading> edgeAt(std::size_t i) const;
    static ShiftedDay shiftOf(int shiftedUnit);
};

// The same for times of day.
class TimeShapes : DateShapes {
public:
    explicit TimeShapes(const DateText& text) : DateShapes(text) {}

    // What stands before or after a time makes less of a text a time.
    enum class Beside {
        nothing,
        preposition,  // "at", "um", or the other end of a span
        day,
        isoDay,  // 2027-03-04
    };
    // With a zone after it or before it: 10:30 EST, EST 10:30.
    Attempt<TimeReading> timeAt(std::size_t i, Beside beside) const;
    // The number of an hour: the 8 in "tomorrow at 8", in "from 8 to 16:30".
    Attempt<TimeReading> bareHour(std::size_t i) const;
    // 17h, 17 h
    Attempt<TimeReading> letteredHour(std::size_t i) const;
    // The same time in that part of the day: 8 in the evening is 20.
    static TimeReading inPart(TimeReading time, int hourOfPart);

private:
    struct Zone {
        std::u16string name;
        std::size_t end;
    };
    Attempt<TimeReading> clockAt(std::size_t i, Beside beside) const;
    std::optional<Zone> zoneAt(std::size_t i, bool afterTime) const;
    std::optional<Zone> offsetAt(std::size_t i) const;
    static bool exists(const TimeReading& time);
    bool startsTime(std::size_t i) const;
    const DateLexeme* twoDigits(std::size_t i) const;
    Attempt<TimeReading> colons(std::size_t i) const;
    Attempt<TimeReading> stopped(std::size_t i, Beside beside) const;
    Attempt<TimeReading> halfAfter(std::size_t i) const;
    static bool halved(TimeReading& time, int half);
    Attempt<TimeReading> halfBefore(std::size_t i) const;
    Attempt<TimeReading> hours(std::size_t i) const;
    Attempt<TimeReading> named(std::size_t i) const;
    Attempt<TimeReading> minutesBeforeHour(std::size_t i) const;
    bool endsBareHour(std::size_t i) const;
    void takeMinutesAfter(Parsed<TimeReading>& time) const;
};

}  // namespace vemo
