// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/calendar_names.h"
#include "platform/time_zones.h"
#include "scanning/dates/date_grammar.h"
#include "scanning/dates/date_vocabulary.h"

namespace vemo {

// What a detected instant would change with.
enum class DateBasis { fixed, today, now };

struct DetectedDate {
    TextRange range;
    Date instant;
    DateBasis basis;
    bool isDay;            // it says no time of day
    bool certain = false;  // nothing else is meant by its signs
    bool offset = false;   // it holds the sign of an offset from Greenwich

    friend bool operator==(const DetectedDate&, const DetectedDate&) = default;
};

struct DetectedDates {
    std::vector<DetectedDate> dates;      // in text order, not overlapping
    std::vector<DateRelation> relations;  // the words between dates and durations
    std::vector<TextRange> nonexistent;   // what has the form of a date that there is not: "Feb 30"
};

// Finds dates and clock times in free text, in any case: "March 4, 2027", "next friday at 5pm", "10:30 EST".
//
// A date without a time is noon, a time without a date is today, a date without a year is of the current year. A
// weekday is today or the next such day, with "next" never today, with "last" the latest one before today. "3/4/2027"
// is read in the order of the locale; two digits of a year are 1969 to 2068. Two numbers are never a date ("3/4"),
// neither are words that only may be one ("may", "sat") nor today, tomorrow and yesterday by themselves. Days and times
// that do not exist are left out. A hyphen in dates such as "2027-03-04" may come masked as "*".
//
// Immutable; finding is safe from several threads.
class DateDetector {
public:
    // Names and phrases of `language`, with the names of `locale` and the English ones after them.
    DateDetector(const Localizer& localizer, std::string_view language, std::string_view locale);

    // False for most texts without a date. Quick.
    bool mayDetect(std::u16string_view text) const;
    // `zone` is the local one. `written` is the same text where signs of arithmetic are masked in `text`.
    // Words beside names of dates are read as beside dates.
    DetectedDates read(std::u16string_view text, std::u16string_view written, Date now, const TimeZoneRules& zone,
                       DateNames isDateName) const;
    std::vector<DetectedDate> detect(std::u16string_view text, Date now, const TimeZoneRules& zone) const {
        return read(text, text, now, zone, [](const std::u16string&) { return false; }).dates;
    }

private:
    DateOrder order() const;

    DateVocabulary vocabulary_;
    const std::string locale_;
    // Found when a date needs it: it takes a tenth of the time in which a calculator starts.
    mutable std::once_flag orderIsKnown_;
    mutable DateOrder order_ = DateOrder::dayMonthYear;
};

}  // namespace vemo
