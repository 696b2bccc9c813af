// SPDX-License-Identifier: MIT
#include "lsp/settings.h"

#include <chrono>
#include <cstdlib>

#include "session/configuration.h"
#include "session/sources.h"

namespace vemo::lsp {

namespace {

// Takes a value that is not null. Says what was expected when the value is of another kind.
struct Row {
    std::string_view key;
    std::string (*take)(const Json& value, Settings& settings);
};

template <std::string Settings::*member>
std::string text(const Json& value, Settings& settings) {
    if (!value.is_string()) return "a text";
    settings.*member = value.get<std::string>();
    return "";
}

// A file may be named from home.
template <std::string Settings::*member>
std::string path(const Json& value, Settings& settings) {
    if (!value.is_string()) return "a text";
    std::string name = value.get<std::string>();
    const char* home = std::getenv("HOME");
    if (name.starts_with("~/") && home) name = home + name.substr(1);
    settings.*member = std::move(name);
    return "";
}

constexpr Row rows[] = {
    {"locale",
     [](const Json& value, Settings& settings) -> std::string {
         if (!value.is_string() || !isKnownLocale(value.get<std::string>())) return "a locale such as de_DE";
         return text<&Settings::locale>(value, settings);
     }},
    {"language",
     [](const Json& value, Settings& settings) -> std::string {
         if (!value.is_string() || !isKnownLanguage(value.get<std::string>())) return "a language such as de";
         return text<&Settings::language>(value, settings);
     }},
    {"timezone",
     [](const Json& value, Settings& settings) -> std::string {
         const bool usable =
             value.is_string() && (value.get<std::string>().empty() || isKnownTimeZone(value.get<std::string>()));
         return usable ? text<&Settings::timeZone>(value, settings) : "a time zone such as Europe/Berlin";
     }},
    {"precision",
     [](const Json& value, Settings& settings) -> std::string {
         if (!value.is_number_integer() || value < 0 || value > session::mostPrecision) return "a number from 0 to 999";
         settings.precision = value.get<std::int64_t>();
         return "";
     }},
    {"offline",
     [](const Json& value, Settings& settings) -> std::string {
         if (!value.is_boolean()) return "true or false";
         settings.offline = value.get<bool>();
         return "";
     }},
    {"rates", path<&Settings::rates>},
    {"coins", path<&Settings::coins>},
    {"places", text<&Settings::places>},
    {"extensions", path<&Settings::extensions>},
};

}  // namespace

bool Settings::sameEngine(const Settings& other) const {
    Settings alike = other;
    alike.precision = precision;
    return *this == alike;
}

Settings withJson(const Settings& base, const Json& object, std::vector<std::string>& problems) {
    const Json& nested = member(object, "vemo");
    const Json& values = nested.is_object() ? nested : object;
    Settings settings = base;
    for (const Row& row : rows) {
        const Json& value = member(values, row.key);
        if (value.is_null()) continue;
        const std::string expected = row.take(value, settings);
        if (!expected.empty()) problems.push_back("'" + std::string(row.key) + "' takes " + expected);
    }
    return settings;
}

Environment environmentFor(const Settings& settings) {
    Environment environment;
    environment.locale = settings.locale;
    environment.language = settings.language;
    environment.timeZone = settings.timeZone;
    if (session::isUrl(settings.rates)) environment.sources.currencyRates = settings.rates;
    if (session::isUrl(settings.coins)) environment.sources.cryptoRates = settings.coins;
    environment.sources.timeZones = settings.places;
    environment.sources.offline = settings.offline;
    environment.trace = [](std::string_view) {};  // standard output is the client's
    if (settings.now) {
        environment.clock = [now = *settings.now, start = std::chrono::steady_clock::now()] {
            return now + (std::chrono::steady_clock::now() - start);
        };
    }
    return environment;
}

}  // namespace vemo::lsp
