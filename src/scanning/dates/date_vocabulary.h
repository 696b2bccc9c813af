// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace vemo {

class Localizer;

// What a word can do in a date. A word may have several parts to play: "mar" is a month in English and a weekday in
// Spanish; a value goes with each.
enum class DateWord : std::uint8_t {
    month,          // 1 to 12
    weekday,        // 0 to 6, Sunday first
    day,            // days from today: today, tomorrow…
    timeOfDay,      // noon, midnight: the hour
    dayPart,        // morning, evening…: the hour, only after a day
    partOfToday,    // tonight, "今朝": the hour
    lastNight,      // the hour
    half,           // before or after noon, or of the night: 0, 1 or 2
    unit,           // a DateUnit
    unitSymbol,     // "h", "min": part of a duration
    shiftedUnit,    // "next week" in one word: the unit and, added to it, 64 for the next one or 128 for this one
    next,           // 1, -1 or 0 for next, last, this: before a weekday or a unit
    nextAfter,      // the same after it
    weekend,        // of which the next word tells which
    weekendOf,      // in one word: -1, 0 or 1
    weekdayName,    // "weekday": Monday to Friday
    edge,           // 1 for the end, -1 for the beginning, of a month or another unit
    edgeOfUnit,     // "Monatsende": the unit and, added to it, 64 for its end
    ahead,          // "in" 3 days
    aheadAfter,     // 3 days "from now"
    ago,            // "vor" 3 Tagen
    agoAfter,       // 3 days "ago"
    within,         // "within" 3 days
    inMonth,        // "in" January
    count,          // "a" week ago, "two" weeks ago
    duration,       // "half an hour", which needs no number
    businessDay,    // "business days"
    at,             // before a time
    atHour,         // "um" 7: before the number of an hour
    on,             // before a day
    of,             // between the parts of a date
    article,        // "the"
    ordinal,        // "4th"
    joint,          // between a day and a time
    hourLetter,     // 17 "h" 30
    oclock,         // "o'clock"
    halfPast,       // "時半"
    minutesBefore,  // "half past" 5: the minutes, negative where they are missing
    minutesAfter,   // las 7 "y media"
    minuteMark,     // "分"
    secondMark,     // "秒"
    yearMark,       // "年"
    monthMark,      // "月"
    dayMark,        // "日"
    firstYear,      // "元": the first year of an era
    era,            // "令和": the year before its first
    eraBefore,      // "AD" 79: 1, or 0 for years before our era
    eraAfter,       // 44 "BC"
    before,         // 2 weeks "before" a day or time
    after,
    until,
    since,
    rangeFrom,  // "from" 8:00
    rangeTo,    // "to" 16:30
    rangeAnd,   // between 8:00 "and" 16:30
    present,    // "now"
    ageOf,      // "age of" a day, and the like
    howLong,    // "how long until" a day or time: 1, or -1 for "how long since"
    weekdayOf,
    weekNumberOf,
    dayCount,   // "何日": a number of days is asked for
    placing,    // 17h30 "à l'heure de" Pékin
    clockHour,  // "à 17 heures"
    namedDay,   // Christmas: the month and, times 100, the day
};
inline constexpr std::size_t dateWordCount = static_cast<std::size_t>(DateWord::namedDay) + 1;

enum class DateUnit : std::uint8_t { second, minute, hour, day, week, month, year };
inline constexpr int nextUnit = 64;
inline constexpr int thisUnit = 128;

// The words of dates: names from the locale, the others from the phrase tables, each of the user's language with the
// English ones after them. Immutable once built; finding is safe from several threads.
class DateVocabulary {
public:
    struct Meaning {
        DateWord word;
        int value;
        bool abbreviated;
    };
    struct Entry {
        std::u16string phrase;  // in lower case, with single blanks
        std::vector<Meaning> meanings;
        bool telling = false;              // a date may be where this is
        bool tellingBeforeDigits = false;  // one may be where digits follow

        const Meaning* find(DateWord word) const;
        bool has(DateWord word) const { return find(word) != nullptr; }
    };
    struct Found {
        const Entry* entry;
        std::size_t length;
    };

    DateVocabulary(const Localizer& localizer, std::string_view language, std::string_view locale);

    const std::string& language() const { return language_; }

    // The longest phrase that starts at `start` of a text in lower case and ends where a word can.
    std::optional<Found> longestAt(std::u16string_view text, std::size_t start) const;
    // False when no telling phrase starts with these two characters. Quick.
    bool mayStart(char16_t first, char16_t second) const {
        return first >= asciiStarts_.size() || second >= 128 || second < u'a' || asciiStarts_[first][second];
    }

private:
    void addNames(std::string_view locale);
    void addTables(const Localizer& localizer);
    void add(std::u16string_view phrase, DateWord word, int value, bool abbreviated = false);
    void addKey(std::u16string key, DateWord word, int value, bool abbreviated);

    std::unordered_map<char16_t, std::vector<Entry>> entries_;  // by first character, longest first
    std::array<std::bitset<128>, 128> asciiStarts_{};
    std::string language_;
};

}  // namespace vemo
