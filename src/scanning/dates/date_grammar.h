// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/calendar_names.h"
#include "scanning/dates/date_vocabulary.h"

namespace vemo {

// What a text says of a day, before anything is known of today.
struct NamedDay {
    std::optional<int> year;
    unsigned month = 0;
    unsigned day = 0;
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
using DayReading = std::variant<NamedDay, NamedWeekday, ShiftedDay>;

struct TimeReading {
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::u16string_view zone;  // an IANA name; empty: the local one
};

struct DateReading {
    TextRange range;
    std::optional<DayReading> day;
    std::optional<TimeReading> time;
};

// All readings of a text, in its order, not overlapping. Times of day exist, days need not.
std::vector<DateReading> readDates(std::u16string_view text, const DateVocabulary& vocabulary, DateOrder order);

}  // namespace vemo
