// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdio>
#include <map>

#include "scanning/date_extractor.h"
#include "scanning/words/localizer.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

// Tuesday, 24 November 2026, 14:00 in Berlin.
const Date now{std::chrono::duration<double>(1795525200)};

const TimeZoneRules& zone(const char* identifier) {
    static std::map<std::string, std::shared_ptr<const TimeZoneRules>> zones;
    auto& rules = zones[identifier];
    if (!rules) rules = TimeZoneRules::find(utf16(identifier));
    return *rules;
}

const DateDetector& detector(const std::string& locale) {
    static std::map<std::string, std::unique_ptr<DateDetector>> detectors;
    auto& found = detectors[locale];
    if (!found) found = std::make_unique<DateDetector>(Localizer(locale), locale, locale);
    return *found;
}

// "2027-03-04 10:30:00" for each date found, joined with "; "; before it, in brackets, the text when it is not the
// whole.
std::string read(const std::string& locale, const char* text, const char* zoneName = "Europe/Berlin") {
    const std::u16string line = utf16(text);
    std::string result;
    for (const DetectedDate& date : detector(locale).detect(line, now, zone(zoneName))) {
        if (!result.empty()) result += "; ";
        if (date.range.length != line.size()) result += "[" + utf8(date.range.in(line)) + "] ";
        const CivilTime civil = zone(zoneName).civil(date.instant);
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u %02d:%02d", civil.year, civil.month, civil.day, civil.hour,
                      civil.minute);
        result += buffer;
        if (civil.second != 0) {
            std::snprintf(buffer, sizeof buffer, ":%02.0f", civil.second);
            result += buffer;
        }
    }
    return result;
}

struct Row {
    const char* text;
    const char* expected;
};

void check(const std::string& locale, std::initializer_list<Row> rows, const char* zoneName = "Europe/Berlin") {
    for (const Row& row : rows) EXPECT_EQ(read(locale, row.text, zoneName), row.expected) << locale << ": " << row.text;
}

TEST(DateDetector, readsClockTimes) {
    check("en_US", {
                       {"10:30", "2026-11-24 10:30"},
                       {"0:00", "2026-11-24 00:00"},
                       {"23:59", "2026-11-24 23:59"},
                       {"9:05:20", "2026-11-24 09:05:20"},
                       {"5pm", "2026-11-24 17:00"},
                       {"5 PM", "2026-11-24 17:00"},
                       {"12am", "2026-11-24 00:00"},
                       {"12 pm", "2026-11-24 12:00"},
                       {"5:30 pm", "2026-11-24 17:30"},
                       {"5:30pm", "2026-11-24 17:30"},
                       {"5 p.m.", "2026-11-24 17:00"},
                       {"11:15 a.m.", "2026-11-24 11:15"},
                       {"5 o'clock", "2026-11-24 05:00"},
                       {"noon", "2026-11-24 12:00"},
                       {"Midnight", "2026-11-24 00:00"},
                       {"at 5pm", "2026-11-24 17:00"},
                       {"meeting at 10:30 with Ann", "[at 10:30] 2026-11-24 10:30"},
                       {"10:30 - 9:15", "[10:30] 2026-11-24 10:30; [9:15] 2026-11-24 09:15"},
                       {"10:30-9:15", "[10:30] 2026-11-24 10:30; [9:15] 2026-11-24 09:15"},
                       {"12:30pm-1:30pm", "[12:30pm] 2026-11-24 12:30; [1:30pm] 2026-11-24 13:30"},
                       {"(10:30)", "[10:30] 2026-11-24 10:30"},
                   });
}

TEST(DateDetector, readsNamedDates) {
    check("en_US", {
                       {"March 4", "2026-03-04 12:00"},
                       {"march 4", "2026-03-04 12:00"},
                       {"MARCH 4TH", "2026-03-04 12:00"},
                       {"Mar 4", "2026-03-04 12:00"},
                       {"Mar. 4", "2026-03-04 12:00"},
                       {"March 4, 2027", "2027-03-04 12:00"},
                       {"March 4 2027", "2027-03-04 12:00"},
                       {"March 4th, 2027", "2027-03-04 12:00"},
                       {"4 March 2027", "2027-03-04 12:00"},
                       {"4th of March", "2026-03-04 12:00"},
                       {"March the 4th", "2026-03-04 12:00"},
                       {"4 mar", "2026-03-04 12:00"},
                       {"March 2027", "2027-03-01 12:00"},
                       {"May 5", "2026-05-05 12:00"},
                       {"Dec 31, 1969", "1969-12-31 12:00"},
                       {"July 14, 1789", "1789-07-14 12:00"},
                       {"February 29, 2028", "2028-02-29 12:00"},
                       {"feb 29 2000", "2000-02-29 12:00"},
                       {"Sept 3", "2026-09-03 12:00"},
                       {"March , 2027", ""},
                       {"March 4,2027", "2027-03-04 12:00"},
                   });
}

TEST(DateDetector, readsNumericDatesInTheOrderOfTheLocale) {
    check("en_US", {
                       {"3/4/2027", "2027-03-04 12:00"},
                       {"12/25/26", "2026-12-25 12:00"},
                       {"3/4/27", "2027-03-04 12:00"},
                       {"1/2/69", "1969-01-02 12:00"},
                       {"1/2/68", "2068-01-02 12:00"},
                       {"13/1/2027", ""},
                       {"2/30/2027", ""},
                       {"2/29/2028", "2028-02-29 12:00"},
                       {"3/4/2027 10:30", "2027-03-04 10:30"},
                       {"4.3.2027", "2027-03-04 12:00"},
                       {"2027-03-04", "2027-03-04 12:00"},
                       {"2027*03*04", "2027-03-04 12:00"},
                       {"2027/03/04", "2027-03-04 12:00"},
                       {"04-03-2027", "2027-04-03 12:00"},
                       {"2027-03-04T10:30", "2027-03-04 10:30"},
                       {"2027-03-04 10:30:15", "2027-03-04 10:30:15"},
                       {"2027-03-04T10:30:00Z", "2027-03-04 11:30"},
                       {"due 2027-03-04, paid", "[2027-03-04] 2027-03-04 12:00"},
                       {"3/14/2027 - 3/4/2027", "[3/14/2027] 2027-03-14 12:00; [3/4/2027] 2027-03-04 12:00"},
                   });
    check("en_GB", {{"3/4/2027", "2027-04-03 12:00"},
                    {"04/03/27", "2027-03-04 12:00"},
                    {"25/12/2026", "2026-12-25 12:00"},
                    {"12/25/2026", ""},
                    {"2027-03-04", "2027-03-04 12:00"},
                    {"3 Sept", "2026-09-03 12:00"}});
}

TEST(DateDetector, readsWeekdays) {
    check("en_US", {
                       {"Sunday", "2026-11-29 12:00"},
                       {"tuesday", "2026-11-24 12:00"},
                       {"this tuesday", "2026-11-24 12:00"},
                       {"next tuesday", "2026-12-01 12:00"},
                       {"last tuesday", "2026-11-17 12:00"},
                       {"next friday", "2026-11-27 12:00"},
                       {"this Friday", "2026-11-27 12:00"},
                       {"last monday", "2026-11-23 12:00"},
                       {"on Friday", "2026-11-27 12:00"},
                       {"next fri", "2026-11-27 12:00"},
                       {"Friday next week", "2026-12-04 12:00"},
                       {"sunday next week", "2026-12-06 12:00"},
                       {"monday last week", "2026-11-16 12:00"},
                       {"Friday, March 5, 2027", "2027-03-05 12:00"},
                       {"Fri, Mar 5, 2027", "2027-03-05 12:00"},
                       {"Thursday 4 March", "2026-03-04 12:00"},
                       {"lunch on the 4th of March", "[on the 4th of March] 2026-03-04 12:00"},
                       {"lunch on Friday", "[on Friday] 2026-11-27 12:00"},
                   });
}

TEST(DateDetector, readsRelativeDates) {
    check("en_US", {
                       {"day after tomorrow", "2026-11-26 12:00"},
                       {"the day before yesterday", "2026-11-22 12:00"},
                       {"in 3 days", "2026-11-27 12:00"},
                       {"in a week", "2026-12-01 12:00"},
                       {"2 weeks ago", "2026-11-10 12:00"},
                       {"3 months ago", "2026-08-24 12:00"},
                       {"a year ago", "2025-11-24 12:00"},
                       {"3 days from now", "2026-11-27 12:00"},
                       {"100 days from today", "2027-03-04 12:00"},
                       {"next week", "2026-12-01 12:00"},
                       {"next month", "2026-12-24 12:00"},
                       {"last month", "2026-10-24 12:00"},
                       {"last year", "2025-11-24 12:00"},
                       {"next year", "2027-11-24 12:00"},
                       {"in 10 minutes", "2026-11-24 14:10"},
                       {"30 seconds ago", "2026-11-24 13:59:30"},
                       {"tonight", "2026-11-24 20:00"},
                       {"this morning", "2026-11-24 09:00"},
                       {"in 3 days at 10:30", "2026-11-27 10:30"},
                       {"two weeks ago", "2026-11-10 12:00"},
                       {"in ten days", "2026-12-04 12:00"},
                       {"last night", "2026-11-23 20:00"},
                       {"rent due in 3 days", "[in 3 days] 2026-11-27 12:00"},
                   });
}

TEST(DateDetector, joinsDatesAndTimes) {
    check("en_US", {
                       {"tomorrow at 5pm", "2026-11-25 17:00"},
                       {"yesterday 10:30", "2026-11-23 10:30"},
                       {"today at noon", "2026-11-24 12:00"},
                       {"5pm tomorrow", "2026-11-25 17:00"},
                       {"midnight tomorrow", "2026-11-25 00:00"},
                       {"tomorrow morning", "2026-11-25 09:00"},
                       {"tomorrow night", "2026-11-25 20:00"},
                       {"Friday evening", "2026-11-27 20:00"},
                       {"yesterday afternoon", "2026-11-23 15:00"},
                       {"tonight at 9pm", "2026-11-24 21:00"},
                       {"9pm tonight", "2026-11-24 21:00"},
                       {"March 4 at 10:30", "2026-03-04 10:30"},
                       {"10:30 on Friday", "2026-11-27 10:30"},
                       {"10:30 Friday", "2026-11-27 10:30"},
                       {"Fri 10:30", "2026-11-27 10:30"},
                       {"next monday 9am", "2026-11-30 09:00"},
                       {"9am next monday", "2026-11-30 09:00"},
                       {"March 4, 2027, 10:30", "2027-03-04 10:30"},
                       {"March 4, 2027 at 5:30 pm", "2027-03-04 17:30"},
                       {"10:30 March 4", "2026-03-04 10:30"},
                       {"noon on March 4", "2026-03-04 12:00"},
                       {"Sat 9am", "2026-11-28 09:00"},
                       {"Sun, 5 p.m.", "2026-11-29 17:00"},
                       {"10:30 on the 4th of March", "2026-03-04 10:30"},
                       {"next friday @ 5pm", "2026-11-27 17:00"},
                       {"from 9:00 to 17:30", "[9:00] 2026-11-24 09:00; [17:30] 2026-11-24 17:30"},
                   });
}

TEST(DateDetector, readsTimesOfOtherZones) {
    // 14:00 in Berlin is 08:00 in New York, 22:00 in Tokyo and 02:00 of the next day in Auckland.
    check("en_US", {
                       {"10:30 EST", "2026-11-24 16:30"},
                       {"5pm UTC", "2026-11-24 18:00"},
                       {"5 pm GMT", "2026-11-24 18:00"},
                       {"10:30 JST", "2026-11-24 02:30"},
                       {"10:30 NZDT", "2026-11-24 22:30"},
                       {"March 4, 2027 5pm PST", "2027-03-05 02:00"},
                       {"July 4, 2027 5pm EST", "2027-07-04 23:00"},
                       {"noon IST on July 1, 2027", "2027-07-01 08:30"},
                       {"tomorrow at 9:00 GMT", "2026-11-25 10:00"},
                       {"10:30 xyz", "[10:30] 2026-11-24 10:30"},
                       {"10:30 est", "2026-11-24 16:30"},
                       {"EST 10:30", "2026-11-24 16:30"},
                       {"Monday EST 5pm", "2026-11-30 23:00"},
                       {"EST 10:30 JST", "[10:30 JST] 2026-11-24 02:30"},
                       {"art 10:30", "[10:30] 2026-11-24 10:30"},
                   });
    check("en_US",
          {{"10:30", "2026-11-24 10:30"}, {"tomorrow at 5pm EST", "2026-11-25 22:00"}, {"Sunday", "2026-11-29 12:00"}},
          "UTC");
    // Already Wednesday there.
    check("en_US",
          {{"10:30", "2026-11-25 10:30"}, {"wednesday", "2026-11-25 12:00"}, {"in 3 days", "2026-11-28 12:00"}},
          "Pacific/Auckland");
}

TEST(DateDetector, readsGerman) {
    check("de_DE", {
                       {"10:30", "2026-11-24 10:30"},
                       {"10:30 Uhr", "2026-11-24 10:30"},
                       {"10 Uhr", "2026-11-24 10:00"},
                       {"10 Uhr 30", "2026-11-24 10:30"},
                       {"um 17 Uhr", "2026-11-24 17:00"},
                       {"Mitternacht", "2026-11-24 00:00"},
                       {"4. M\u00e4rz", "2026-03-04 12:00"},
                       {"4. M\u00c4RZ 2027", "2027-03-04 12:00"},
                       {"4 Mai", "2026-05-04 12:00"},
                       {"am 4. M\u00e4rz", "2026-03-04 12:00"},
                       {"4.3.2027", "2027-03-04 12:00"},
                       {"04.03.27", "2027-03-04 12:00"},
                       {"2027-03-04", "2027-03-04 12:00"},
                       {"31.2.2027", ""},
                       {"Montag", "2026-11-30 12:00"},
                       {"n\u00e4chsten Freitag", "2026-11-27 12:00"},
                       {"letzten Montag", "2026-11-23 12:00"},
                       {"Sonnabend", "2026-11-28 12:00"},
                       {"n\u00e4chste Woche", "2026-12-01 12:00"},
                       {"n\u00e4chsten Monat", "2026-12-24 12:00"},
                       {"letztes Jahr", "2025-11-24 12:00"},
                       {"vor 3 Tagen", "2026-11-21 12:00"},
                       {"in 2 Wochen", "2026-12-08 12:00"},
                       {"vor zwei Tagen", "2026-11-22 12:00"},
                       {"vor einem Jahr", "2025-11-24 12:00"},
                       {"\u00fcbermorgen", "2026-11-26 12:00"},
                       {"vorgestern", "2026-11-22 12:00"},
                       {"morgen um 17 Uhr", "2026-11-25 17:00"},
                       {"morgen fr\u00fch", "2026-11-25 09:00"},
                       {"heute Abend", "2026-11-24 20:00"},
                       {"Mi 10:30", "2026-11-25 10:30"},
                       {"Freitag, 5. M\u00e4rz 2027", "2027-03-05 12:00"},
                       {"am Freitag um 10:30 Uhr", "2026-11-27 10:30"},
                       {"4. M\u00e4rz um 10 Uhr", "2026-03-04 10:00"},
                       {"25 Uhr", ""},
                       {"4 March", "2026-03-04 12:00"},
                       {"in 5 Stunden", ""},
                       {"30. Februar", ""},
                   });
}

TEST(DateDetector, readsFrench) {
    check("fr_FR", {
                       {"10:30", "2026-11-24 10:30"},
                       {"17h30", "2026-11-24 17:30"},
                       {"17 h 30", "2026-11-24 17:30"},
                       {"midi", "2026-11-24 12:00"},
                       {"minuit", "2026-11-24 00:00"},
                       {"4 mars", "2026-03-04 12:00"},
                       {"1er mars 2027", "2027-03-01 12:00"},
                       {"le 4 mars", "2026-03-04 12:00"},
                       {"4 f\u00e9vr. 2027", "2027-02-04 12:00"},
                       {"14 juillet 1789", "1789-07-14 12:00"},
                       {"4/3/2027", "2027-03-04 12:00"},
                       {"vendredi", "2026-11-27 12:00"},
                       {"lundi prochain", "2026-11-30 12:00"},
                       {"mardi dernier", "2026-11-17 12:00"},
                       {"semaine prochaine", "2026-12-01 12:00"},
                       {"mois dernier", "2026-10-24 12:00"},
                       {"il y a 3 jours", "2026-11-21 12:00"},
                       {"dans 2 semaines", "2026-12-08 12:00"},
                       {"il y a un an", "2025-11-24 12:00"},
                       {"apr\u00e8s-demain", "2026-11-26 12:00"},
                       {"avant-hier", "2026-11-22 12:00"},
                       {"avant*hier", "2026-11-22 12:00"},
                       {"ce soir", "2026-11-24 20:00"},
                       {"demain \u00e0 17h30", "2026-11-25 17:30"},
                       {"demain matin", "2026-11-25 09:00"},
                       {"vendredi 5 mars 2027 \u00e0 10:30", "2027-03-05 10:30"},
                       {"17 h", ""},
                       {"17 h 30 min", ""},
                       {"2 h 5", ""},
                   });
}

TEST(DateDetector, readsSpanish) {
    check("es_ES", {
                       {"10:30", "2026-11-24 10:30"},
                       {"5 p. m.", "2026-11-24 17:00"},
                       {"mediod\u00eda", "2026-11-24 12:00"},
                       {"4 de marzo", "2026-03-04 12:00"},
                       {"4 de marzo de 2027", "2027-03-04 12:00"},
                       {"el 4 de marzo", "2026-03-04 12:00"},
                       {"3 mar 2027", "2027-03-03 12:00"},
                       {"15 ene", "2026-01-15 12:00"},
                       {"4/3/2027", "2027-03-04 12:00"},
                       {"viernes", "2026-11-27 12:00"},
                       {"el lunes", "2026-11-30 12:00"},
                       {"pr\u00f3ximo viernes", "2026-11-27 12:00"},
                       {"el lunes pasado", "2026-11-23 12:00"},
                       {"semana que viene", "2026-12-01 12:00"},
                       {"mes pasado", "2026-10-24 12:00"},
                       {"hace 3 d\u00edas", "2026-11-21 12:00"},
                       {"dentro de 2 semanas", "2026-12-08 12:00"},
                       {"en 3 d\u00edas", "2026-11-27 12:00"},
                       {"anteayer", "2026-11-22 12:00"},
                       {"pasado ma\u00f1ana", "2026-11-26 12:00"},
                       {"ma\u00f1ana a las 17:30", "2026-11-25 17:30"},
                       {"el viernes a las 10:30", "2026-11-27 10:30"},
                       {"5 ago", "2026-08-05 12:00"},
                       {"esta noche", "2026-11-24 20:00"},
                       {"mar", ""},
                       {"31 de febrero", ""},
                   });
}

TEST(DateDetector, readsJapanese) {
    check("ja_JP", {
                       {"10:30", "2026-11-24 10:30"},
                       {"10\u664230\u5206", "2026-11-24 10:30"},
                       {"10\u6642", "2026-11-24 10:00"},
                       {"10\u6642\u534a", "2026-11-24 10:30"},
                       {"\u5348\u5f8c5\u6642", "2026-11-24 17:00"},
                       {"\u5348\u5f8c5\u664230\u5206", "2026-11-24 17:30"},
                       {"\u5348\u524d9:05", "2026-11-24 09:05"},
                       {"\u6b63\u5348", "2026-11-24 12:00"},
                       {"3\u67084\u65e5", "2026-03-04 12:00"},
                       {"2027\u5e743\u67084\u65e5", "2027-03-04 12:00"},
                       {"2027/3/4", "2027-03-04 12:00"},
                       {"2027/03/04", "2027-03-04 12:00"},
                       {"\u91d1\u66dc\u65e5", "2026-11-27 12:00"},
                       {"\u6b21\u306e\u91d1\u66dc\u65e5", "2026-11-27 12:00"},
                       {"\u6765\u9031", "2026-12-01 12:00"},
                       {"\u6765\u6708", "2026-12-24 12:00"},
                       {"\u5148\u6708", "2026-10-24 12:00"},
                       {"\u6628\u5e74", "2025-11-24 12:00"},
                       {"\u6765\u9031\u306e\u6708\u66dc\u65e5", "2026-11-30 12:00"},
                       {"3\u65e5\u524d", "2026-11-21 12:00"},
                       {"3\u65e5\u5f8c", "2026-11-27 12:00"},
                       {"2\u9031\u9593\u5f8c", "2026-12-08 12:00"},
                       {"10\u5206\u5f8c", "2026-11-24 14:10"},
                       {"\u660e\u5f8c\u65e5", "2026-11-26 12:00"},
                       {"\u660e\u65e510\u664230\u5206", "2026-11-25 10:30"},
                       {"\u660e\u65e5\u306e\u5348\u5f8c5\u6642", "2026-11-25 17:00"},
                       {"3\u67084\u65e510:30", "2026-03-04 10:30"},
                       {"\u4f1a\u8b70\u306f3\u67084\u65e5\u3067\u3059", "[3\u67084\u65e5] 2026-03-04 12:00"},
                       {"10\u6642\u9593", ""},
                       {"2\u670830\u65e5", ""},
                       {"3\u65e5", ""},
                       {"13\u67084\u65e5", ""},
                   });
}

TEST(DateDetector, leavesTheRestAlone) {
    for (const char* text : {"",
                             " ",
                             "5",
                             "5-3",
                             "5*3",
                             "2+2",
                             "10/2",
                             "3/4",
                             "1/2 cup",
                             "1.5",
                             "4.3.2",
                             "1.2.3",
                             "192.168.1.1",
                             "10.0.0.127",
                             "3/4/5",
                             "10/2/5",
                             "100/10/20",
                             "12 / 3 / 10",
                             "12/3/100",
                             "2027-3-4",
                             "2027*3*4",
                             "2*3/4/27",
                             "10/2/20-5",
                             "5-3 march",
                             "5*3 march",
                             "1/2/3/4/2027",
                             "16:9",
                             "4:3",
                             "25:99",
                             "10:60",
                             "24:00",
                             "1:2:3",
                             "10:30:45:12",
                             "10:30.5",
                             "10:3",
                             "x10:30",
                             "$10:30",
                             "10:30: 50",
                             "rent: 1200",
                             "3 hours",
                             "5 min",
                             "10 h",
                             "3 s",
                             "90 minutes",
                             "1 hour in minutes",
                             "5 days",
                             "3 weeks + 2 days",
                             "in 5 hours",
                             "may",
                             "May I",
                             "march",
                             "march alone",
                             "sun",
                             "sat",
                             "mon",
                             "second",
                             "a second",
                             "the third",
                             "now",
                             "today",
                             "tomorrow",
                             "Yesterday",
                             "today + tomorrow",
                             "next",
                             "last",
                             "this",
                             "this month",
                             "next 5",
                             "last 2 days",
                             "20% on 50",
                             "$50 in 3 days",
                             "5 in 3 days",
                             "100 4 March",
                             "x5 days ago",
                             "1.5 days ago",
                             "1,000 days ago",
                             "-5 days ago",
                             "13pm",
                             "0am",
                             "12.5 pm",
                             "5 pmm",
                             "spam",
                             "am",
                             "pm",
                             "at",
                             "5 a",
                             "marching 4",
                             "march4",
                             "may_5",
                             "March 4.5",
                             "March 45",
                             "March 4%",
                             "March $4",
                             "march 4/2",
                             "February 30",
                             "February 29",
                             "April 31, 2027",
                             "April 0",
                             "31 June",
                             "v3/4/2027",
                             "3/4/2027/5",
                             "3/4/20275",
                             "17h30",
                             "0x1F",
                             "1e5",
                             "255 in dec",
                             "12 in oct",
                             "3 + mar",
                             "price 5 to 10",
                             "1 000 000",
                             "\xf0\x9f\x98\x80 5",
                             "in 99999 days",
                             "in 9999 years",
                             "morning",
                             "5 nights"})
        EXPECT_EQ(read("en_US", text), "") << text;
    for (const char* text : {"so", "do", "mi", "morgen", "heute", "1.234,5", "1.234.567", "12.000", "1.5", "3. Platz",
                             "am", "in", "vor 5 Stunden", "acht"})
        EXPECT_EQ(read("de_DE", text), "") << text;
}

TEST(DateDetector, knowsTheChangesOfTheClock) {
    const auto seconds = [](const char* text) {
        const auto dates = detector("en_US").detect(utf16(text), now, zone("Europe/Berlin"));
        return dates.size() == 1 ? dates[0].instant.time_since_epoch().count() : 0;
    };
    constexpr double march28 = 1806192000, october31 = 1824940800;  // midnight UTC, 2027
    EXPECT_EQ(seconds("March 28, 2027 1:59"), march28 + 59 * 60);
    EXPECT_EQ(seconds("March 28, 2027 2:30"), march28 + 5400);  // skipped: half an hour after the change
    EXPECT_EQ(seconds("March 28, 2027 3:00"), march28 + 3600);
    EXPECT_EQ(seconds("March 28, 2027"), march28 + 10 * 3600);
    EXPECT_EQ(seconds("October 31, 2027 2:30"), october31 + 1800);  // the first of two
    EXPECT_EQ(seconds("October 31, 2027"), october31 + 11 * 3600);
}

TEST(DateDetector, stepsToTheEndOfShorterMonths) {
    const auto from = [](CivilTime today, const char* text) {
        const TimeZoneRules& utc = zone("UTC");
        const auto dates = detector("en_US").detect(utf16(text), *utc.instant(today), utc);
        return dates.size() == 1 ? utc.civil(dates[0].instant) : CivilTime{};
    };
    EXPECT_EQ(from({2027, 1, 31}, "next month"), (CivilTime{2027, 2, 28, 12}));
    EXPECT_EQ(from({2028, 2, 29}, "next year"), (CivilTime{2029, 2, 28, 12}));
    EXPECT_EQ(from({2027, 3, 31}, "4 months ago"), (CivilTime{2026, 11, 30, 12}));
    EXPECT_EQ(from({2026, 12, 31, 23, 59}, "tomorrow at 5pm"), (CivilTime{2027, 1, 1, 17}));
    EXPECT_EQ(from({2028, 5, 1}, "February 29"), (CivilTime{2028, 2, 29, 12}));
}

TEST(DateDetector, saysWhatAnInstantFollowsFrom) {
    for (const auto& [text, basis] : {std::pair("March 4, 2027 5pm EST", DateBasis::fixed),
                                      {"3/4/2027", DateBasis::fixed},
                                      {"March 4", DateBasis::today},
                                      {"10:30", DateBasis::today},
                                      {"next friday", DateBasis::today},
                                      {"in 3 days", DateBasis::today},
                                      {"10:30 EST", DateBasis::now},
                                      {"in 10 minutes", DateBasis::now}}) {
        const auto dates = detector("en_US").detect(utf16(text), now, zone("Europe/Berlin"));
        ASSERT_EQ(dates.size(), 1u) << text;
        EXPECT_EQ(dates[0].basis, basis) << text;
    }
}

// Texts of pieces that dates are made of.
RC_GTEST_PROP(DateDetectorLaws, stayInTheText, ()) {
    const std::string locale =
        *rc::gen::elementOf(std::vector<std::string>{"en_US", "de_DE", "fr_FR", "es_ES", "ja_JP"});
    static const std::vector<std::u16string> pieces{u"4",          u"10",
                                                    u"2027",       u"99999999999",
                                                    u":",          u"30",
                                                    u"/",          u".",
                                                    u"*",          u"-",
                                                    u" ",          u" ",
                                                    u" ",          u",",
                                                    u"march",      u"4th",
                                                    u"next",       u"friday",
                                                    u"in",         u"days",
                                                    u"ago",        u"at",
                                                    u"on",         u"5pm",
                                                    u"am",         u"uhr",
                                                    u"h",          u"EST",
                                                    u"tomorrow",   u"de",
                                                    u"a",          u"T",
                                                    u"Z",          u"\u5e74",
                                                    u"\u6708",     u"\u65e5",
                                                    u"\u6642",     u"\u534a",
                                                    u"\u5f8c",     u"\u5348\u5f8c",
                                                    u"\u00e4",     std::u16string(1, 0xd83d),
                                                    u"\U0001f600", u"\u0130",
                                                    u"\u0663",     u"%",
                                                    u"$",          u"\u202f"};
    std::u16string text;
    for (const std::u16string& piece : *rc::gen::container<std::vector<std::u16string>>(60, rc::gen::elementOf(pieces)))
        text += piece;
    std::size_t used = 0;
    for (const DetectedDate& date : detector(locale).detect(text, now, zone("Europe/Berlin"))) {
        RC_ASSERT(date.range.location >= used && date.range.length > 0);
        used = date.range.end();
        RC_ASSERT(used <= text.size());
        RC_ASSERT(std::isfinite(date.instant.time_since_epoch().count()));
    }
}

}  // namespace
}  // namespace vemo::test
