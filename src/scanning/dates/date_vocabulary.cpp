// SPDX-License-Identifier: MIT
#include "scanning/dates/date_vocabulary.h"

#include <algorithm>
#include <cstdlib>

#include "platform/calendar_names.h"
#include "platform/locale_info.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr int shifted(DateUnit unit, bool next) {
    return static_cast<int>(unit) + (next ? nextUnit : 0);
}

constexpr struct {
    std::u16string_view key;
    DateWord word;
    int value = 0;
} tableRows[] = {
    {u"today.variants", DateWord::day, 0},
    {u"tomorrow.variants", DateWord::day, 1},
    {u"yesterday.variants", DateWord::day, -1},
    {u"after_tomorrow.variants", DateWord::day, 2},
    {u"before_yesterday.variants", DateWord::day, -2},
    {u"tonight.variants", DateWord::tonight, 20},
    {u"next.variants", DateWord::next, 1},
    {u"last.variants", DateWord::next, -1},
    {u"this.variants", DateWord::next, 0},
    {u"next_behind.variants", DateWord::nextBehind, 1},
    {u"last_behind.variants", DateWord::nextBehind, -1},
    {u"next_week.variants", DateWord::shiftedUnit, shifted(DateUnit::week, true)},
    {u"last_week.variants", DateWord::shiftedUnit, shifted(DateUnit::week, false)},
    {u"next_month.variants", DateWord::shiftedUnit, shifted(DateUnit::month, true)},
    {u"last_month.variants", DateWord::shiftedUnit, shifted(DateUnit::month, false)},
    {u"next_year.variants", DateWord::shiftedUnit, shifted(DateUnit::year, true)},
    {u"last_year.variants", DateWord::shiftedUnit, shifted(DateUnit::year, false)},
    {u"in_time.variants", DateWord::ahead},
    {u"from_now.variants", DateWord::aheadBehind},
    {u"ago_before.variants", DateWord::ago},
    {u"ago.variants", DateWord::agoBehind},
    {u"one.variants", DateWord::count, 1},
    {u"two.variants", DateWord::count, 2},
    {u"three.variants", DateWord::count, 3},
    {u"four.variants", DateWord::count, 4},
    {u"five.variants", DateWord::count, 5},
    {u"six.variants", DateWord::count, 6},
    {u"seven.variants", DateWord::count, 7},
    {u"eight.variants", DateWord::count, 8},
    {u"nine.variants", DateWord::count, 9},
    {u"ten.variants", DateWord::count, 10},
    {u"at.variants", DateWord::at},
    {u"on.variants", DateWord::on},
    {u"of.variants", DateWord::of},
    {u"article.variants", DateWord::article},
    {u"ordinal.variants", DateWord::ordinal},
    {u"joint.variants", DateWord::joint},
    {u"hour_letter.variants", DateWord::hourLetter},
    {u"oclock.variants", DateWord::oclock},
    {u"half.variants", DateWord::halfPast},
    {u"minute_mark.variants", DateWord::minuteMark},
    {u"second_mark.variants", DateWord::secondMark},
    {u"year_mark.variants", DateWord::yearMark},
    {u"month_mark.variants", DateWord::monthMark},
    {u"day_mark.variants", DateWord::dayMark},
    {u"am.variants", DateWord::half, 0},
    {u"pm.variants", DateWord::half, 1},
    {u"noon.variants", DateWord::timeOfDay, 12},
    {u"midnight.variants", DateWord::timeOfDay, 0},
    {u"morning.variants", DateWord::dayPart, 9},
    {u"afternoon.variants", DateWord::dayPart, 15},
    {u"evening.variants", DateWord::dayPart, 20},
    {u"night.variants", DateWord::dayPart, 20},
    {u"september.variants", DateWord::month, 9},
    {u"tuesday.variants", DateWord::weekday, 2},
    {u"thursday.variants", DateWord::weekday, 4},
    {u"saturday.variants", DateWord::weekday, 6},
};

constexpr std::u16string_view unitKeys[] = {u"second.variants", u"minute.variants", u"hour.variants", u"day.variants",
                                            u"week.variants",   u"month.variants",  u"year.variants"};

// Words that no date of more than numbers lacks.
constexpr bool isTelling(DateWord word) {
    switch (word) {
        case DateWord::count:
        case DateWord::at:
        case DateWord::on:
        case DateWord::of:
        case DateWord::article:
        case DateWord::ordinal:
        case DateWord::joint:
        case DateWord::ahead:
        case DateWord::next:
        case DateWord::nextBehind:
        case DateWord::minuteMark:
        case DateWord::secondMark:
        case DateWord::dayMark:
        case DateWord::halfPast:
            return false;
        default:
            return true;
    }
}

// In lower case, every stretch of white space one blank. A hyphen is "*", as it may come masked.
std::u16string normalized(std::u16string_view phrase) {
    std::u16string result;
    for (const char16_t c : trimmed(phrase)) {
        if (!isWhitespace(c))
            result += c == u'-' ? u'*' : lowercasedUnit(c);
        else if (result.back() != u' ')
            result += u' ';
    }
    return result;
}

// The length of the text at `start` that spells the phrase; nothing when another text stands there.
std::optional<std::size_t> spelledAt(std::u16string_view text, std::size_t start, std::u16string_view phrase) {
    std::size_t i = start;
    for (const char16_t c : phrase) {
        if (i >= text.size()) return std::nullopt;
        if (c != u' ') {
            if (text[i] != c && !(c == u'*' && text[i] == u'-')) return std::nullopt;
            ++i;
            continue;
        }
        if (!isWhitespace(text[i])) return std::nullopt;
        while (i < text.size() && isWhitespace(text[i])) ++i;
    }
    return i - start;
}

}  // namespace

const DateVocabulary::Meaning* DateVocabulary::Entry::find(DateWord word) const {
    for (const Meaning& meaning : meanings)
        if (meaning.word == word) return &meaning;
    return nullptr;
}

DateVocabulary::DateVocabulary(const Localizer& localizer, std::string_view language, std::string_view locale)
    : language_(language) {
    addNames(language);
    if (locale.substr(0, 2) != language.substr(0, 2)) addNames(locale);
    if (language.substr(0, 2) != "en" && locale.substr(0, 2) != "en") addNames("en");
    addTables(localizer);
    for (auto& [first, entries] : entries_) {
        std::stable_sort(entries.begin(), entries.end(),
                         [](const Entry& a, const Entry& b) { return a.phrase.size() > b.phrase.size(); });
    }
}

void DateVocabulary::addNames(std::string_view locale) {
    const CalendarNames names = CalendarNames::forLocale(locale);
    const auto addAll = [&](const auto& list, DateWord word, int firstValue) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            const int value = firstValue + static_cast<int>(i);
            for (const std::u16string& name : list[i].full) add(name, word, value);
            for (std::u16string name : list[i].abbreviated) {
                if (name.ends_with(u'.')) name.pop_back();
                // Of one character, such as the Japanese weekdays: too little to tell anything.
                if (name.size() > 1) add(name, word, value, true);
            }
        }
    };
    addAll(names.months, DateWord::month, 1);
    addAll(names.weekdays, DateWord::weekday, 0);
    for (int half = 0; half < 2; ++half) add(names.halves[static_cast<std::size_t>(half)], DateWord::half, half);
}

void DateVocabulary::addTables(const Localizer& localizer) {
    const auto addAll = [&](std::u16string_view key, std::u16string_view table, DateWord word, int value) {
        for (const std::u16string& phrase : localizer.variants(key, table))
            if (phrase != key) add(phrase, word, value);  // the key itself: no language has it
    };
    for (const auto& row : tableRows) addAll(row.key, u"Dates", row.word, row.value);
    for (int unit = 0; unit < static_cast<int>(std::size(unitKeys)); ++unit)
        addAll(unitKeys[unit], u"Time", DateWord::unit, unit);
}

void DateVocabulary::add(std::u16string_view phrase, DateWord word, int value, bool abbreviated) {
    std::u16string key = normalized(phrase);
    if (key.empty() || digitValue(key.front()) >= 0) return;
    const char16_t second = key.size() > 1 ? key[1] : u' ';
    if (key.front() < 128) {
        if (second < 128)
            asciiStarts_[key.front()][second] = true;
        else
            asciiStarts_[key.front()].set();
    }
    std::vector<Entry>& entries = entries_[key.front()];
    auto entry = std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.phrase == key; });
    if (entry == entries.end()) entry = entries.insert(entries.end(), {std::move(key), {}});
    if (entry->has(word)) return;  // the user's language comes first
    entry->meanings.push_back({word, value, abbreviated});
    // Today and its neighbours are words of functions too: alone they are no dates.
    if (isTelling(word) && (word != DateWord::day || std::abs(value) > 1)) entry->telling = true;
}

std::optional<DateVocabulary::Found> DateVocabulary::longestAt(std::u16string_view text, std::size_t start) const {
    const auto entries = entries_.find(text[start]);
    if (entries == entries_.end()) return std::nullopt;
    for (const Entry& entry : entries->second) {
        const auto length = spelledAt(text, start, entry.phrase);
        if (!length) continue;
        const std::size_t end = start + *length;
        const char16_t last = text[end - 1];
        if (end < text.size() && isLetter(last) && !isCjk(last)) {
            // "17h30" goes on with a digit, other words don't: "march4" may be a name.
            const bool goesOn = isLetter(text[end]) ? !isCjk(text[end])
                                                    : text[end] == u'_' || (digitValue(text[end]) >= 0 &&
                                                                            !entry.has(DateWord::hourLetter));
            if (goesOn) continue;
        }
        return Found{&entry, *length};
    }
    return std::nullopt;
}

}  // namespace vemo
