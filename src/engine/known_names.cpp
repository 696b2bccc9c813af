// SPDX-License-Identifier: MIT
#include <unicode/locid.h>
#include <unicode/strenum.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <memory>

#include "base/text.h"
#include "platform/icu_locale.h"
#include "scanning/words/compiled_tables.h"
#include "vemo/environment.h"

namespace vemo {

namespace {

bool isCountry(std::string_view code) {
    for (const char* const* known = icu::Locale::getISOCountries(); *known; ++known)
        if (code == *known) return true;
    return false;
}

}  // namespace

bool isKnownLocale(std::string_view identifier) {
    const std::string name(identifier.substr(0, identifier.find('.')));
    if (name.empty() || name == "C" || name == "POSIX") return true;
    if (!isUsableLocale(name)) return false;
    const icu::Locale locale = icuLocale(name);
    const std::string_view country = locale.getCountry();
    const bool area = !country.empty() && country.front() <= '9';  // such as 419, Latin America
    if (!country.empty() && !area && !isCountry(country)) return false;
    int32_t count = 0;
    const icu::Locale* known = icu::Locale::getAvailableLocales(count);
    return std::any_of(known, known + count, [&](const icu::Locale& candidate) {
        return std::string_view(candidate.getLanguage()) == locale.getLanguage();
    });
}

std::vector<std::string> knownLocales() {
    int32_t count = 0;
    const icu::Locale* known = icu::Locale::getAvailableLocales(count);
    std::vector<std::string> names(static_cast<std::size_t>(count));
    std::transform(known, known + count, names.begin(), [](const icu::Locale& locale) { return locale.getName(); });
    return names;
}

bool isKnownLanguage(std::string_view code) {
    const auto known = knownLanguages();
    return code.empty() ||
           std::find(known.begin(), known.end(), code.substr(0, code.find_first_of("_-."))) != known.end();
}

std::vector<std::string> knownLanguages() {
    std::vector<std::string> names{"en"};
    for (std::size_t i = 0; i < compiledTableCount; ++i) {
        const std::string name = toUtf8(compiledTables[i].language);
        if (name != "Base" && name != names.back()) names.push_back(name);
    }
    return names;
}

std::vector<std::string> knownTimeZones() {
    std::vector<std::string> names;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::StringEnumeration> zones(
        icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_ANY, nullptr, nullptr, status));
    while (zones && U_SUCCESS(status)) {
        const char* name = zones->next(nullptr, status);
        if (!name) break;
        names.emplace_back(name);
    }
    return names;
}

}  // namespace vemo
