// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vemo {

struct TimeUnit {
    std::u16string_view id;
    std::int64_t seconds;
};

// The units in which durations are told, smallest first. Months have 30 days and years 365.
inline constexpr std::array<TimeUnit, 7> timeUnits{{{u"second", 1},
                                                    {u"minute", 60},
                                                    {u"hour", 3600},
                                                    {u"day", 86400},
                                                    {u"week", 604800},
                                                    {u"month", 2592000},
                                                    {u"year", 31536000}}};

// The months of a unit that the calendar counts in months; 0 for others.
constexpr int calendarMonths(std::u16string_view unit) {
    constexpr struct {
        std::u16string_view id;
        int months;
    } rows[] = {{u"month", 1},    {u"quarter", 3},    {u"year", 12},
                {u"decade", 120}, {u"century", 1200}, {u"millennium", 12000}};
    for (const auto& row : rows)
        if (row.id == unit) return row.months;
    return 0;
}

}  // namespace vemo
