// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace vemo {

// An instant: seconds since 1970-01-01 00:00 UTC, with fractions.
using Date = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;

// A time zone by its identifier: an IANA name ("Europe/Berlin") or a fixed offset ("GMT+05:30").
struct TimeZone {
    std::u16string identifier;

    friend bool operator==(const TimeZone&, const TimeZone&) = default;
};

// True when an environment can have this time zone. Any thread may call it.
bool isKnownTimeZone(std::string_view identifier);

}  // namespace vemo
