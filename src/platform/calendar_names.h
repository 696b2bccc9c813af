// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

enum class DateOrder { monthDayYear, dayMonthYear, yearMonthDay };

// How a locale names and orders the parts of a date, in the Gregorian calendar. Names are as they are written within
// a date and on their own, full ones before abbreviated ones; a name that is only a number and a sign is left out.
struct CalendarNames {
    struct Names {
        std::vector<std::u16string> full;
        std::vector<std::u16string> abbreviated;
    };
    std::array<Names, 12> months;          // January first
    std::array<Names, 7> weekdays;         // Sunday first
    std::array<std::u16string, 2> halves;  // of the day: before and after noon

    // An ICU or POSIX identifier; unknown ones follow the root locale.
    static CalendarNames forLocale(std::string_view identifier);
};

DateOrder dateOrder(std::string_view localeIdentifier);

}  // namespace vemo
