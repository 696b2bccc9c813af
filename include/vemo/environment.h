// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/time.h"

namespace vemo {

// Where rates and the time zones of places are fetched from. Nothing is fetched for what is left empty.
struct Sources {
    std::string ratesHost;      // a host name, or the beginning of a URL, after which both files below are found at
                                // /rates/currency.json and /rates/coins2.json
    std::string currencyRates;  // or the URL of each
    std::string cryptoRates;
    std::string timeZones;  // URL of a service that is asked with "?q=" and a place; without one, places are those
                            // of the time zone database
    bool offline = false;   // nothing is fetched: rates are those of the copies there are

    friend bool operator==(const Sources&, const Sources&) = default;
};

// What kept rates or a place from coming, or a copy from being kept.
struct OnlineProblem {
    enum class Kind : std::uint8_t {
        ratesNotFetched,
        ratesNotKept,     // they were fetched, and are used
        copyUnusable,     // of rates fetched earlier
        placeNotFetched,  // the service for places did not answer, or not as it should
    };
    Kind kind = Kind::ratesNotFetched;
    std::string source;   // the URL, or the place
    std::string message;  // why, in English; empty where there is no more to say
};

// What varies by user or by test. A default-constructed one is the real system.
struct Environment {
    std::string locale;               // ICU identifier such as "de_DE"; empty: the system's
    std::string language;             // of the phrases; empty: the locale's
    std::string timeZone;             // IANA identifier; empty: the system's
    std::function<Date()> clock;      // empty: the system's clock
    std::filesystem::path resources;  // phrase tables that override the built-in ones; empty: none
    std::filesystem::path caches;     // folder for what is fetched; empty: vemo in the user's cache folder
    Sources sources;
    std::function<void(std::string_view)> log;    // one message a call, on any thread; empty: dropped
    std::function<void(std::string_view)> trace;  // lines of the per-line trace; empty: standard output
};

// True for what an environment can be given, and lists of it. Locales are ICU or POSIX identifiers of a known language
// and country; languages are those that have phrases. Any thread may ask.
bool isKnownLocale(std::string_view identifier);
bool isKnownLanguage(std::string_view code);
std::vector<std::string> knownLocales();
std::vector<std::string> knownLanguages();
std::vector<std::string> knownTimeZones();

}  // namespace vemo
