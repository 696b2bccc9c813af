// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdio>
#include <map>

#include "scanning/date_extractor.h"
#include "scanning/localizer.h"
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

// "2027-03-04 10:30:00" for each date found, joined with "; "; before it, in brackets, the text when it is not the whole.
std::string read(const std::string& locale, const char* text, const char* zoneName = "Europe/Berlin") {
    const std::u16string line = utf16(text);
    std::string result;
    for (const DetectedDate& date : detector(locale).detect(line, now, zone(zoneName))) {
        if (!result.empty()) result += "; ";
        if (date.range.length != line.size()) result += "[" + utf8(date.range.in(line)) + "] ";
        const CivilTime civil = zone(zoneName).civil(date.instant);
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u %02d:%02d", civil.year, civil.month, civil.day, civil.hour, civil.minute);
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
        {"10:30", "2026-11-24 10:30"}, {"0:00", "2026-11-24 00:00"}, {"23:59", "2026-11-24 23:59"},
        {"9:05:20", "2026-11-24 09:05:20"}, {"5pm", "2026-11-24 17:00"}, {"5 PM", "2026-11-24 17:00"},
        {"12am", "2026-11-24 00:00"}, {"12 pm", "2026-11-24 12:00"}, {"5:30 pm", "2026-11-24 17:30"},
        {"5:30pm", "2026-11-24 17:30"}, {"5 p.m.", "2026-11-24 17:00"}, {"11:15 a.m.", "2026-11-24 11:15"},
        {"5 o'clock", "2026-11-24 05:00"}, {"noon", "2026-11-24 12:00"}, {"Midnight", "2026-11-24 00:00"},
        {"at 5pm", "2026-11-24 17:00"}, {"meeting at 10:30 with Ann", "[at 10:30] 2026-11-24 10:30"},
        {"10:30 - 9:15", "[10:30] 2026-11-24 10:30; [9:15] 2026-11-24 09:15"},
        {"(10:30)", "[10:30] 2026-11-24 10:30"},
    });
}

TEST(DateDetector, readsNamedDates) {
    check("en_US", {
        {"March 4", "2026-03-04 12:00"}, {"march 4", "2026-03-04 12:00"}, {"MARCH 4TH", "2026-03-04 12:00"},
        {"Mar 4", "2026-03-04 12:00"}, {"Mar. 4", "2026-03-04 12:00"}, {"March 4, 2027", "2027-03-04 12:00"},
        {"March 4 2027", "2027-03-04 12:00"}, {"March 4th, 2027", "2027-03-04 12:00"}, {"4 March 2027", "2027-03-04 12:00"},
        {"4th of March", "2026-03-04 12:00"}, {"March the 4th", "2026-03-04 12:00"}, {"4 mar", "2026-03-04 12:00"},
        {"March 2027", "2027-03-01 12:00"}, {"May 5", "2026-05-05 12:00"}, {"Dec 31, 1969", "1969-12-31 12:00"},
        {"July 14, 1789", "1789-07-14 12:00"}, {"February 29, 2028", "2028-02-29 12:00"}, {"feb 29 2000", "2000-02-29 12:00"},
        {"Sept 3", "2026-09-03 12:00"}, {"March 4,2027", "2027-03-04 12:00"},
    });
}

}  // namespace
}  // namespace vemo::test
