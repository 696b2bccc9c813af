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
    month,        // 1 to 12
    weekday,      // 0 to 6, Sunday first
    day,          // days from today: today, tomorrow…
    timeOfDay,    // noon, midnight: the hour
    dayPart,      // morning, evening…: the hour, only after a day
    tonight,      // the hour
    half,         // before or after noon: 0 or 1
    unit,         // a DateUnit
    shiftedUnit,  // "next week" in one word: the unit and, added to it, 64 for the next one
    next,         // 1, -1 or 0 for next, last, this: before a weekday or a unit
    nextBehind,   // the same after it
    ahead,        // "in" 3 days
    aheadBehind,  // 3 days "from now"
    ago,          // "vor" 3 Tagen
    agoBehind,    // 3 days "ago"
    count,        // "a" week ago, "two" weeks ago
    at,
    on,
    of,
    article,
    ordinal,
    joint,
    hourLetter,  // 17 "h" 30
    oclock,
    halfPast,  // 時半
    minuteMark,
    secondMark,
    yearMark,
    monthMark,
    dayMark,
};
inline constexpr std::size_t dateWordCount = static_cast<std::size_t>(DateWord::dayMark) + 1;

enum class DateUnit : std::uint8_t { second, minute, hour, day, week, month, year };
inline constexpr int nextUnit = 64;

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
        bool telling = false;  // a date may be where this is

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
    // False when no phrase starts with these two characters. Quick.
    bool mayStart(char16_t first, char16_t second) const {
        return first >= asciiStarts_.size() || second >= 128 || second < u'a' || asciiStarts_[first][second];
    }

private:
    void addNames(std::string_view locale);
    void addTables(const Localizer& localizer);
    void add(std::u16string_view phrase, DateWord word, int value, bool abbreviated = false);

    std::unordered_map<char16_t, std::vector<Entry>> entries_;  // by first character, longest first
    std::array<std::bitset<128>, 128> asciiStarts_{};
    std::string language_;
};

}  // namespace vemo
