// SPDX-License-Identifier: MIT
// Date words in any order, in five languages and zones: what is found lies in the text, is found again, and changes
// with the day and the minute only where it says so, since lines are kept by that.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>

#include "base/text.h"
#include "scanning/dates/date_detector.h"
#include "scanning/words/localizer.h"

namespace {

using namespace vemo;

struct Place {
    const char* language;
    const char* locale;
    const char16_t* zone;
};
constexpr Place places[] = {{"en", "en_US", u"America/New_York"},
                            {"de", "de_DE", u"Europe/Berlin"},
                            {"fr", "fr_FR", u"Africa/Casablanca"},
                            {"es", "es_ES", u"Pacific/Apia"},
                            {"ja", "ja_JP", u"Australia/Lord_Howe"}};

constexpr const char* words[] = {
    "1",         "2",      "3",         "4",      "12",        "13",        "24",      "29",          "30",
    "31",        "32",     "60",        "99",     "1969",      "2027",      "2028",    "9999",        "0",
    "00",        "/",      "-",         ".",      ":",         ",",         "+",       "at ",         "on ",
    "next ",     "last ",  "this ",     "ago",    " from now", "in ",       "noon",    "midnight",    "am",
    "pm",        "a.m.",   "o'clock",   "today",  "tomorrow",  "yesterday", "now",     "March ",      "may ",
    "Feb ",      "sept ",  "friday ",   "sat ",   "week ",     "days ",     "month ",  "year ",       "hours ",
    "EST",       "UTC",    "GMT+5:30",  "Z",      "T",         "th ",       "st ",     "März ",       "Montag ",
    "nächsten ", "um ",    "Uhr",       "vor ",   "Tagen ",    "heute",     "morgen ", "Mitternacht", "halb ",
    "mars ",     "lundi ", "prochain ", "à ",     "h",         "demain ",   "midi",    "il y a ",     "jours ",
    "marzo ",    "lunes ", "próximo ",  "a las ", "mañana ",   "mediodía",  "hace ",   "días ",       "de ",
    "年",        "月",     "日",        "時",     "分",        "午後",      "午前",    "明日",        "月曜日",
    "来週",      "前",     "半",        "正午",   " ",         "(",         "x",       "\u00a0",      "１２"};

const DateDetector& detectorFor(const Place& place) {
    static std::unique_ptr<DateDetector> detectors[std::size(places)];
    auto& detector = detectors[&place - places];
    if (!detector) detector = std::make_unique<DateDetector>(Localizer(place.language), place.language, place.locale);
    return *detector;
}

// Dates of the first list that do not say they depend on what has changed must be in the second.
void checkKept(const std::vector<DetectedDate>& dates, const std::vector<DetectedDate>& later, bool sameDay) {
    for (const DetectedDate& date : dates) {
        if (date.basis == DateBasis::now || (date.basis == DateBasis::today && !sameDay)) continue;
        for (const DetectedDate& other : later)
            if (other.range == date.range && other.basis == date.basis && other.instant != date.instant) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const Place& place = places[data[0] % std::size(places)];
    const auto zone = TimeZoneRules::find(places[data[1] % std::size(places)].zone);
    // An hour of a day within two years, so that clocks are changed sometimes.
    const Date now(std::chrono::duration<double>(1767225600 + 3600.0 * (data[2] * 256 + data[3]) / 4));
    std::string utf8;
    for (std::size_t i = 4; i < size && utf8.size() < 400; ++i) utf8 += words[data[i] % std::size(words)];
    const std::u16string text = toUtf16(utf8);
    const DateDetector& detector = detectorFor(place);
    const auto dates = detector.detect(text, now, *zone);
    if (!dates.empty() && !detector.mayDetect(text)) std::abort();
    std::size_t end = 0;
    for (const DetectedDate& date : dates) {
        if (date.range.length == 0 || date.range.location < end || date.range.end() > text.size()) std::abort();
        if (!std::isfinite(date.instant.time_since_epoch().count())) std::abort();
        end = date.range.end();
    }
    if (detector.detect(text, now, *zone) != dates) std::abort();
    const Date minuteLater = now + std::chrono::duration<double>(60);
    checkKept(dates, detector.detect(text, minuteLater, *zone), zone->day(now) == zone->day(minuteLater));
    checkKept(dates, detector.detect(text, now + std::chrono::duration<double>(86400 * 400), *zone), false);
    return 0;
}
