// SPDX-License-Identifier: MIT
#include "platform/system.h"

#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <cstdlib>
#include <memory>

#include "base/text.h"
#include "platform/icu_locale.h"
#include "platform/time_zones.h"

namespace vemo {

namespace {

constexpr std::size_t longestShown = 40;  // bytes of a name in the log

std::string firstSet(std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const char* value = std::getenv(name);
        if (value && *value) return value;
    }
    return {};
}

std::filesystem::path cacheFolder() {
    const std::string cache = firstSet({"XDG_CACHE_HOME"});
    if (cache.starts_with('/')) return std::filesystem::path(cache) / "vemo";
    const std::string home = firstSet({"HOME"});
    return home.empty() ? std::filesystem::path() : std::filesystem::path(home) / ".cache" / "vemo";
}

bool isNeutral(std::string_view locale) {
    return locale.empty() || locale.starts_with("C") || locale == "POSIX";
}

std::string hostTimeZone() {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString identifier;
    std::string result;
    zone->getID(identifier).toUTF8String(result);
    return result;
}

}  // namespace

Environment withDefaults(Environment environment) {
    if (environment.locale.empty()) {
        environment.locale = firstSet({"LC_ALL", "LC_NUMERIC", "LANG"});
        if (isNeutral(environment.locale)) environment.locale = "en_US";
    }
    environment.locale = environment.locale.substr(0, environment.locale.find('.'));
    if (environment.language.empty()) environment.language = environment.locale;
    for (std::string* name : {&environment.locale, &environment.language}) {
        if (isUsableLocale(name->substr(0, name->find('.')))) continue;
        if (environment.log)
            environment.log("No locale is called '" + name->substr(0, longestShown) + "': the neutral one is used.");
        *name = "root";
    }
    if (environment.timeZone.empty()) environment.timeZone = hostTimeZone();
    if (!TimeZoneRules::find(toUtf16(environment.timeZone))) {
        if (environment.log) environment.log("No time zone is called '" + environment.timeZone + "': UTC is used.");
        environment.timeZone = "UTC";
    }
    if (environment.caches.empty()) environment.caches = cacheFolder();
    if (!environment.clock) {
        environment.clock = [] { return Date(std::chrono::system_clock::now()); };
    }
    return environment;
}

}  // namespace vemo
