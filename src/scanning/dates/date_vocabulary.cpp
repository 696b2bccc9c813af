// SPDX-License-Identifier: MIT
#include "scanning/dates/date_vocabulary.h"

#include <algorithm>
#include <cstdlib>

#include "platform/calendar_names.h"
#include "platform/locale_info.h"
#include "scanning/dates/date_word_rows.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

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

// The phrase as it is typed without the letters' marks: "aout", "marz"; short ones keep them, as "a" is not "à".
std::u16string withoutMarks(std::u16string_view phrase, bool spelledOut) {
    constexpr std::size_t shortest = 4;
    std::u16string result;
    if (phrase.size() < shortest) return result;
    bool changed = false;
    for (const char16_t c : phrase) {
        constexpr std::u16string_view marked =
            u"\u00e0\u00e1\u00e2\u00e4\u00e7\u00e8\u00e9\u00ea\u00eb\u00ed\u00ee\u00ef\u00f1\u00f3\u00f4\u00f6\u00f9"
            u"\u00fa\u00fb\u00fc";
        constexpr std::u16string_view plain = u"aaaaceeeeiiinooouuuu";
        const std::size_t at = marked.find(c);
        changed = changed || at != marked.npos;
        result += at == marked.npos ? c : plain[at];
        if (spelledOut && std::u16string_view(u"\u00e4\u00f6\u00fc").find(c) != std::u16string_view::npos)
            result += u'e';
    }
    return changed ? result : std::u16string();
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
    for (const DateWordRow& row : dateWordRows) addAll(row.key, row.table, row.word, row.value);
    for (int unit = 0; unit < static_cast<int>(std::size(unitKeys)); ++unit)
        addAll(unitKeys[unit], u"Time", DateWord::unit, unit);
}

void DateVocabulary::add(std::u16string_view phrase, DateWord word, int value, bool abbreviated) {
    const std::u16string key = normalized(phrase);
    if (key.empty() || digitValue(key.front()) >= 0) return;
    addKey(key, word, value, abbreviated);
    for (const bool spelledOut : {false, true})
        if (std::u16string plain = withoutMarks(key, spelledOut); !plain.empty())
            addKey(std::move(plain), word, value, abbreviated);
}

void DateVocabulary::addKey(std::u16string key, DateWord word, int value, bool abbreviated) {
    // Today and its neighbours are words of functions too: alone they are no dates.
    const bool telling = isTelling(word) && (word != DateWord::day || std::abs(value) > 1);
    if (const char16_t second = key.size() > 1 ? key[1] : u' ';
        (telling || isTellingBeforeDigits(word)) && key.front() < 128) {
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
    entry->telling = entry->telling || telling;
    entry->tellingBeforeDigits = entry->tellingBeforeDigits || isTellingBeforeDigits(word);
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
