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

}  // namespace vemo
