// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "base/function_ref.h"
#include "platform/calendar_names.h"
#include "scanning/dates/date_vocabulary.h"

namespace vemo {

// What a text says of a day, before anything is known of today.
struct NamedDay {
    std::optional<int> year;
    unsigned month = 0;
    unsigned day = 0;   // 0: the last one of the month
    int direction = 0;  // without a year: 1 for the next one after today, -1 for the latest one before it
};
struct NamedWeekday {
    unsigned weekday = 0;      // Sunday is 0
    int direction = 0;         // 0: today or the next one; 1: the next one, not today; -1: the last one, not today
    std::optional<int> weeks;  // of the week that is so many away, whatever the direction
};
struct ShiftedDay {
    DateUnit unit = DateUnit::day;
    int count = 0;
};
// The first or last day of the month, or another unit, that is so many away.
struct EdgeDay {
    DateUnit unit = DateUnit::month;
    int count = 0;
    bool end = false;
};
// So many days from Monday to Friday away.
struct BusinessDay {
    int count = 0;
};
using DayReading = std::variant<NamedDay, NamedWeekday, ShiftedDay, EdgeDay, BusinessDay>;

struct TimeReading {
    int hour = 0;
    int minute = 0;
    double second = 0;
    bool inHalf = false;       // it says which half of the day it is in
    std::u16string zone = {};  // an IANA name or a fixed offset; empty: the local one
};

struct DateReading {
    TextRange range;
    std::optional<DayReading> day;
    std::optional<ShiftedDay> further = {};  // from that day
    std::optional<TimeReading> time;
    bool certain = false;   // nothing else is meant by its signs
    bool offset = false;    // it holds the sign of an offset from Greenwich
    bool dayAfter = false;  // the day stands after the time
    bool ending = false;    // it is the end of a span that the reading before it begins
    int direction = 0;      // 1: not before the present, -1: not after it, where the text leaves that open
};

// A word between a date and a duration, or another date.
struct DateRelation {
    enum class Kind : std::uint8_t {
        fromNow,     // "in" 3 h; 3 h "from now"
        ago,         // 5 h "ago"
        before,      // 2 weeks "before" March 1
        after,       // 3 days "after" tomorrow
        until,       // days "until" December 25
        since,       // days "since" March 3
        span,        // 8:00 "to" 16:30
        measured,    // weeks "between" March 3 and June 1
        age,         // "age of" March 4, 1990
        weekday,     // "weekday of" April 3, 2027
        weekNumber,  // "week number of" April 3, 2027
        number,      // "two" weeks before March 1: the value
        days,        // "何日": the unit
        workdays,    // "営業日": the unit
        placed,      // 17h30 "à l'heure de" Pékin
        clock,       // "à" 17 heures: an hour told with a word of durations
        clockAm,     // 8 heures "du matin"
        clockPm,     // 3 heures "de l'après-midi"
        conversion,  // from 3月3日 to 6月1日 "まで" in days
    };
    TextRange range;
    Kind kind;
    int value = 0;

    friend bool operator==(const DateRelation&, const DateRelation&) = default;
};

struct DateReadings {
    std::vector<DateReading> dates;  // in the order of the text, not overlapping
    std::vector<DateRelation> relations;
};

// Tells whether a name, in lower case, stands for a date or time.
using DateNames = FunctionRef<bool(const std::u16string&)>;

// All readings of a text. Times of day exist, days need not. `written` is the same text, with the signs that may be
// masked in it.
DateReadings readDates(std::u16string_view text, std::u16string_view written, const DateVocabulary& vocabulary,
                       DateOrder order, DateNames isDateName);

}  // namespace vemo
