// SPDX-License-Identifier: MIT
// Dates and times as other programs write them, and as people count from today, are read back as what they were.

#include <unicode/calendar.h>
#include <unicode/smpdtfmt.h>

#include <chrono>
#include <map>

#include "scanning/dates/date_detector.h"
#include "scanning/dates/time_zone_abbreviations.h"
#include "scanning/words/localizer.h"
#include "support/laws.h"

namespace vemo::test {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year_month_day;

// Tuesday, 24 November 2026, 13:00 in UTC.
const Date now{std::chrono::duration<double>(1795525200)};
constexpr sys_days today{std::chrono::November / 24 / 2026};

const TimeZoneRules& utc() {
    static const auto rules = TimeZoneRules::find(u"UTC");
    return *rules;
}

const DateDetector& detector(const std::string& locale) {
    static std::map<std::string, std::unique_ptr<DateDetector>> detectors;
    auto& found = detectors[locale];
    if (!found) found = std::make_unique<DateDetector>(Localizer(locale), locale, locale);
    return *found;
}

CivilTime civilOf(sys_days date, int minute) {
    const year_month_day day(date);
    return {int(day.year()), unsigned(day.month()), unsigned(day.day()), minute / 60, minute % 60};
}

std::string shown(const CivilTime& t) {
    std::ostringstream text;
    text << t.year << '-' << t.month << '-' << t.day << ' ' << t.hour << ':' << t.minute;
    return text.str();
}

// Fails the law unless the whole text is read as one date.
void requireRead(const std::string& locale, const std::string& text, const CivilTime& expected) {
    const std::u16string line = toUtf16(text);
    const auto dates = detector(locale).detect(line, now, utc());
    std::string found;
    for (const DetectedDate& date : dates)
        found += "\n  '" + toUtf8(date.range.in(line)) + "' as " + shown(utc().civil(date.instant));
    if (dates.size() == 1 && dates[0].range == TextRange{0, line.size()} && utc().civil(dates[0].instant) == expected)
        return;
    RC_FAIL("\n  '" + text + "' in " + locale + " is " + shown(expected) + ", and is read" + found + "\n");
}

// A pattern of Unicode Technical Standard #35.
std::string written(const std::string& pattern, const std::string& locale, sys_days date, int minute) {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString::fromUTF8(pattern), icu::Locale(locale.c_str()), status);
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    const double seconds = static_cast<double>(date.time_since_epoch().count()) * 86400 + minute * 60;
    format.format(seconds * 1000, text);
    std::string utf8;
    return text.toUTF8String(utf8);
}

struct Pattern {
    const char* locale;
    const char* pattern;
};

constexpr Pattern dayPatterns[] = {{"en_US", "MMMM d, y"},
                                   {"en_US", "EEEE, MMMM d, y"},
                                   {"en_US", "MMM d, y"},
                                   {"en_US", "d MMMM y"},
                                   {"en_US", "d MMM y"},
                                   {"en_US", "M/d/y"},
                                   {"en_US", "MM/dd/y"},
                                   {"en_US", "y-MM-dd"},
                                   {"en_US", "EEE, d MMM y"},
                                   {"en_US", "y MMM d"},
                                   {"en_US", "dd-MMM-y"},
                                   {"en_US", "EEE MMM d, y"},
                                   {"en_US", "MMMM d y"},
                                   {"en_US", "y/MM/dd"},
                                   {"en_GB", "d MMMM y"},
                                   {"en_GB", "EEEE d MMMM y"},
                                   {"en_GB", "d/M/y"},
                                   {"en_GB", "dd/MM/y"},
                                   {"en_GB", "d MMM y"},
                                   {"en_GB", "d.M.y"},
                                   {"de_DE", "d. MMMM y"},
                                   {"de_DE", "EEEE, d. MMMM y"},
                                   {"de_DE", "d.M.y"},
                                   {"de_DE", "dd.MM.y"},
                                   {"de_DE", "d. MMM y"},
                                   {"de_DE", "EE, d. MMM y"},
                                   {"de_DE", "'am' d.M.y"},
                                   {"de_DE", "d. MMMM, y"},
                                   {"fr_FR", "d MMMM y"},
                                   {"fr_FR", "EEEE d MMMM y"},
                                   {"fr_FR", "dd/MM/y"},
                                   {"fr_FR", "d MMM y"},
                                   {"fr_FR", "'le' d MMMM y"},
                                   {"fr_FR", "d/M/y"},
                                   {"fr_FR", "EEE d MMM y"},
                                   {"es_ES", "d MMM y"},
                                   {"es_ES", "d 'de' MMMM 'de' y"},
                                   {"es_ES", "EEEE, d 'de' MMMM 'de' y"},
                                   {"es_ES", "d/M/y"},
                                   {"es_ES", "dd/MM/y"},
                                   {"es_ES", "'el' d 'de' MMMM 'de' y"},
                                   {"es_ES", "d 'de' MMMM, y"},
                                   {"ja_JP", "y年M月d日"},
                                   {"ja_JP", "y/MM/dd"},
                                   {"ja_JP", "y/M/d"},
                                   {"ja_JP", "y年M月d日EEEE"},

                                   {"ja_JP", "y-MM-dd"}};

TEST(DateSpellings, daysAreReadAsTheyWereWritten) {
    for (const Pattern& row : dayPatterns)
        holds(
            [&] {
                const sys_days date = today + days(anyOf(-20'000, 20'000));
                requireRead(row.locale, written(row.pattern, row.locale, date, 0), civilOf(date, 12 * 60));
            },
            50);
}

// A day of noon, and after it the time of day.
constexpr Pattern timePatterns[] = {{"en_US", "MMMM d, y 'at' h:mm a"}, {"en_US", "MMMM d, y, h:mm a"},
                                    {"en_US", "MMM d, y HH:mm"},        {"en_US", "y-MM-dd HH:mm"},
                                    {"en_US", "y-MM-dd'T'HH:mm"},       {"en_US", "M/d/y, h:mm a"},
                                    {"en_US", "h:mm a 'on' MMMM d, y"}, {"en_US", "EEEE, MMMM d, y h:mma"},
                                    {"en_GB", "d MMMM y 'at' HH:mm"},   {"en_GB", "dd/MM/y, HH:mm"},
                                    {"de_DE", "d. MMMM y 'um' HH:mm"},  {"de_DE", "d.M.y, HH:mm 'Uhr'"},
                                    {"de_DE", "d. MMMM y H 'Uhr' mm"},  {"de_DE", "dd.MM.y HH:mm"},
                                    {"fr_FR", "d MMMM y 'à' HH:mm"},    {"fr_FR", "d MMMM y 'à' H'h'mm"},
                                    {"fr_FR", "dd/MM/y HH:mm"},         {"es_ES", "d 'de' MMMM 'de' y 'a las' H:mm"},
                                    {"es_ES", "d/M/y, H:mm"},           {"ja_JP", "y年M月d日 H:mm"},
                                    {"ja_JP", "y年M月d日H時mm分"},      {"ja_JP", "y/MM/dd HH:mm"},
                                    {"ja_JP", "y年M月d日aK:mm"}};

TEST(DateSpellings, timesAreReadAsTheyWereWritten) {
    for (const Pattern& row : timePatterns)
        holds(
            [&] {
                const sys_days date = today + days(anyOf(-9'000, 9'000));
                const int minute = anyOf(0, 1439);
                requireRead(row.locale, written(row.pattern, row.locale, date, minute), civilOf(date, minute));
            },
            50);
}

struct Count {
    const char* locale;
    const char* text;  // with "#" for the number
    int days;          // that each counts
};

constexpr Count counts[] = {{"en_US", "in # days", 1},        {"en_US", "# days ago", -1},
                            {"en_US", "# days from now", 1},  {"en_US", "in # weeks", 7},
                            {"en_US", "# weeks ago", -7},     {"de_DE", "in # Tagen", 1},
                            {"de_DE", "vor # Tagen", -1},     {"de_DE", "in # Wochen", 7},
                            {"de_DE", "vor # Wochen", -7},    {"fr_FR", "dans # jours", 1},
                            {"fr_FR", "il y a # jours", -1},  {"fr_FR", "dans # semaines", 7},
                            {"es_ES", "dentro de # días", 1}, {"es_ES", "hace # días", -1},
                            {"es_ES", "hace # semanas", -7},  {"ja_JP", "#日後", 1},
                            {"ja_JP", "#日前", -1},           {"ja_JP", "#週間前", -7}};

TEST(DateSpellings, daysAreCountedFromToday) {
    for (const Count& row : counts)
        holds(
            [&] {
                const int count = anyOf(2, 500);
                std::string text = row.text;
                text.replace(text.find('#'), 1, std::to_string(count));
                requireRead(row.locale, text, civilOf(today + days(count * row.days), 12 * 60));
            },
            30);
}

// The day on which a name falls, looked for day by day.
sys_days stepped(weekday wanted, int step) {
    sys_days day = today + days(step);
    while (weekday(day) != wanted) day += days(step);
    return day;
}

TEST(DateSpellings, weekdaysAreTheNextOrTheLatest) {
    constexpr Pattern rows[] = {{"en_US", "next "},    {"en_US", "last "},    {"de_DE", "nächsten "},
                                {"de_DE", "letzten "}, {"es_ES", "próximo "}, {"fr_FR", " prochain"},
                                {"fr_FR", " dernier"}, {"ja_JP", "次の"}};
    constexpr bool latest[] = {false, true, false, true, false, false, true, false};
    for (std::size_t i = 0; i < std::size(rows); ++i)
        for (unsigned day = 0; day < 7; ++day) {
            const std::string locale = rows[i].locale, words = rows[i].pattern;
            const sys_days date = stepped(weekday(day), latest[i] ? -1 : 1);
            const std::string name = written("EEEE", locale, date, 0);
            holds([&] { requireRead(locale, words[0] == ' ' ? name + words : words + name, civilOf(date, 720)); }, 1);
        }
}

TEST(DateSpellings, abbreviationsOfZonesTellTheTimeThere) {
    const auto zones = timeZoneAbbreviations();
    ASSERT_GT(zones.size(), 50u);
    for (std::size_t i = 0; i < zones.size(); ++i) {
        SCOPED_TRACE(toUtf8(zones[i].abbreviation));
        EXPECT_TRUE(i == 0 || zones[i - 1].abbreviation < zones[i].abbreviation);
        EXPECT_EQ(zoneForAbbreviation(zones[i].abbreviation), zones[i].zone);
        const auto rules = TimeZoneRules::find(zones[i].zone);
        ASSERT_TRUE(rules);
        holds(
            [&] {
                const sys_days date = today + days(anyOf(0, 3'000));
                const int minute = anyOf(0, 1439);
                const std::string text = written("y-MM-dd HH:mm", "en_US", date, minute);
                const Date instant = *rules->instant(civilOf(date, minute));
                requireRead("en_US", text + " " + toUtf8(zones[i].abbreviation), utc().civil(instant));
                RC_ASSERT(zoneForAbbreviation(toUtf16(text)).empty());
            },
            3);
    }
}

TEST(DateSpellings, offsetsFromGreenwichMoveTheTime) {
    holds([&] {
        const sys_days date = today + days(anyOf(0, 3'000));
        const int minute = anyOf(0, 1439), offset = anyOf(-47, 47) * 15;
        std::ostringstream text;
        text << written("y-MM-dd HH:mm", "en_US", date, minute) << " UTC" << (offset < 0 ? '-' : '+')
             << std::abs(offset) / 60;
        if (offset % 60 != 0) text << ':' << std::abs(offset) % 60;
        const Date instant = *utc().instant(civilOf(date, minute)) - std::chrono::minutes(offset);
        requireRead("en_US", text.str(), utc().civil(instant));
    });
}

}  // namespace
}  // namespace vemo::test
