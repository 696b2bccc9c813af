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
    std::size_t end;    // index of the lexeme after it
    bool alone = true;  // it is a date without a time as well
};
template <class Reading>
using Attempt = std::optional<Parsed<Reading>>;

template <class Reading>
void keepLonger(Attempt<Reading>& best, Attempt<Reading> other) {
    if (other && (!best || other->end > best->end)) best = std::move(other);
}

// Questions about the lexemes of a text that the shapes of dates and times are told by; an index beyond the last one is
// no lexeme.
class DateShapes {
protected:
    DateShapes(std::u16string_view text, const std::vector<DateLexeme>& lexemes) : text_(text), lexemes_(lexemes) {}

    const DateLexeme* at(std::size_t i) const { return i < lexemes_.size() ? &lexemes_[i] : nullptr; }
    bool is(std::size_t i, DateWord word) const { return i < lexemes_.size() && lexemes_[i].isWord(word); }
    int value(std::size_t i, DateWord word) const { return lexemes_[i].entry->find(word)->value; }
    bool isSign(std::size_t i, char16_t sign) const { return i < lexemes_.size() && lexemes_[i].isSign(sign); }
    bool touches(std::size_t i) const { return i < lexemes_.size() && !lexemes_[i].spaced; }
    bool isDash(std::size_t i) const { return isSign(i, u'*') || isSign(i, u'-'); }

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
    // "5% on …", "2 in …": the word is an operator or a unit.
    bool followsNumber(std::size_t i) const { return i > 0 && (isSign(i - 1, u'%') || number(i - 1)); }

    std::size_t behindComma(std::size_t i) const { return isSign(i, u',') ? i + 1 : i; }
    template <class... Words>
    std::size_t skipping(std::size_t i, Words... words) const {
        while ((is(i, words) || ...)) ++i;
        return i;
    }

    // The letters of "2027-03-04T10:30Z".
    bool isIsoT(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->kind == DateLexeme::Kind::word &&
               (lexeme->range.in(text_) == u"T") && number(i + 1) && touches(i + 1);
    }
    bool isIsoZ(std::size_t i) const {
        const DateLexeme* lexeme = at(i);
        return lexeme && !lexeme->spaced && lexeme->range.in(text_) == u"Z";
    }

    std::u16string_view text_;
    const std::vector<DateLexeme>& lexemes_;
};

// Tries the shapes of days at a place of the text. None of them looks further than a few words.
class DayShapes : DateShapes {
public:
    DayShapes(std::u16string_view text, const std::vector<DateLexeme>& lexemes, DateOrder order)
        : DateShapes(text, lexemes), order_(order) {}

    // The longest one that starts at the lexeme.
    Attempt<DayReading> dayAt(std::size_t i) const;

private:
    Attempt<DayReading> monthFirst(std::size_t i) const;
    const DateLexeme* monthDay(std::size_t i) const;
    Attempt<DayReading> dayFirst(std::size_t i) const;
    Attempt<DayReading> marked(std::size_t i) const;
    Attempt<DayReading> numeric(std::size_t i) const;
    bool endsNumeric(std::size_t last) const;
    static Attempt<DayReading> numericDate(const DateLexeme& year, const DateLexeme& month, const DateLexeme& day,
                                           std::size_t i);
    Attempt<DayReading> weekdayNamed(std::size_t i) const;
    static std::optional<int> weeksOf(int shiftedUnit);
    Attempt<DayReading> relative(std::size_t i) const;
    Attempt<DayReading> neighbour(std::size_t unitAt, int direction, std::size_t end) const;
    Attempt<DayReading> counted(std::size_t i, int sign) const;
    Attempt<DayReading> calendarDate(std::size_t i) const;
    const DateLexeme* dayNumber(std::size_t i) const;
    const DateLexeme* year(std::size_t i) const;
    std::size_t behindOrdinal(std::size_t i) const;
    std::size_t behindStop(std::size_t i) const;

    DateOrder order_;
};

// The same for times of day.
class TimeShapes : DateShapes {
public:
    TimeShapes(std::u16string_view text, const std::vector<DateLexeme>& lexemes, std::string_view language)
        : DateShapes(text, lexemes), language_(language) {}

    // With the abbreviation of a zone after it or before it: 10:30 EST, EST 10:30.
    Attempt<TimeReading> timeAt(std::size_t i) const;

private:
    Attempt<TimeReading> clockAt(std::size_t i) const;
    std::u16string_view zoneAt(std::size_t i) const;
    static bool exists(const TimeReading& time);
    bool startsTime(std::size_t i) const;
    const DateLexeme* twoDigits(std::size_t i) const;
    Attempt<TimeReading> colons(std::size_t i) const;
    Attempt<TimeReading> halfBehind(std::size_t i) const;
    static bool halved(TimeReading& time, int half);
    Attempt<TimeReading> halfBefore(std::size_t i) const;
    Attempt<TimeReading> hours(std::size_t i) const;
    Attempt<TimeReading> named(std::size_t i) const;

    std::string_view language_;
};

}  // namespace vemo
