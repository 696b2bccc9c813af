// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "vemo/time.h"

namespace vemo {

// What varies by user or by test. A default-constructed one is the real system.
struct Environment {
    std::string locale;               // ICU identifier such as "de_DE"; empty: the system's
    std::string language;             // of the phrases; empty: the locale's
    std::string timeZone;             // IANA identifier; empty: the system's
    std::function<Date()> clock;      // empty: the system's clock
    std::filesystem::path resources;  // phrase tables that override the built-in ones; empty: none
    std::function<void(std::string_view)> log;    // one message a call, on any thread; empty: dropped
    std::function<void(std::string_view)> trace;  // lines of the per-line trace; empty: standard output
};

}  // namespace vemo
