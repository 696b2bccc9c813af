// SPDX-License-Identifier: MIT
// The detector of phrases against one that tries every run of words, and phrase tables against plain maps.

#include "scanning/words/phrase_detector.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>

#include "scanning/words/localizer.h"
#include "support/laws.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

const std::vector<std::u16string>& tokens() {
    static const std::vector<std::u16string> all{u"a",    u"ab", u"b",  u"Mb", u"km",         u"2",  u"30", u"°", u"µ",
                                                 u"é",    u"$",  u"%",  u"-",  u"+",          u"x'", u".",  u"ß", u"Ab",
                                                 u"km/h", u"キ", u"ロ", u"平", u"\U0001f600", u"İ",  u"æ"};
    return all;
}

std::u16string phrase(int most) {
    std::u16string text;
    for (int i = anyOf(1, most); i > 0; --i) {
        if (!text.empty() && anyOf(0, 2) > 0) text += anyOf(0, 4) == 0 ? u"  " : u" ";
        text += anyRow(tokens());
    }
    return text;
}

using Vocabulary = std::map<std::u16string, int>;

std::optional<int> lookedUp(const Vocabulary& vocabulary, const std::u16string& text) {
    auto found = vocabulary.find(text);
    if (found == vocabulary.end()) found = vocabulary.find(lowercased(text));
    return found == vocabulary.end() ? std::nullopt : std::optional(found->second);
}

// Of up to seven words from each on, the longest run that is a phrase, with blanks between its words or without.
std::vector<PhraseMatch<int>> tried(const Vocabulary& vocabulary, StringRangeDetector& detector,
                                    std::u16string_view text) {
    const std::vector<TextRange> words = detector.wordRanges(text);
    std::vector<PhraseMatch<int>> matches;
    for (std::size_t i = 0; i < words.size();) {
        std::size_t taken = 0;
        for (std::size_t k = std::min<std::size_t>(7, words.size() - i); k > 0 && taken == 0; --k) {
            std::u16string spaced;
            for (std::size_t w = i; w < i + k; ++w) spaced.append(w > i ? u" " : u"").append(words[w].in(text));
            const TextRange range{words[i].location, words[i + k - 1].end() - words[i].location};
            auto found = lookedUp(vocabulary, spaced);
            // "6ft2in" is no "ft2".
            const bool inQuantity =
                range.end() < text.size() && isAsciiDigit(text[range.end() - 1]) && isLetter(text[range.end()]);
            if (!found && range.length < spaced.size() && !inQuantity)
                found = lookedUp(vocabulary, std::u16string(range.in(text)));
            if (!found) continue;
            matches.push_back({*found, range});
            taken = k;
        }
        i += std::max<std::size_t>(taken, 1);
    }
    return matches;
}

std::string shown(const std::vector<PhraseMatch<int>>& matches) {
    std::ostringstream text;
    for (const auto& match : matches)
        text << ' ' << match.object << '@' << match.range.location << '+' << match.range.length;
    return text.str();
}

TEST(PhraseDetectorLaws, findsWhatTryingEverythingFinds) {
    holds(
        [] {
            StringRangeDetector words;
            PhraseDetector<int> detector(words);
            Vocabulary vocabulary;
            std::string phrases;
            for (int i = anyOf(1, 12); i > 0; --i) {
                const bool normalize = anyOf(0, 1) == 0;
                const std::u16string text = phrase(4);
                const std::u16string key = normalize ? words.normalized(text) : text;
                detector.add(text, i, normalize);
                if (key.empty()) continue;
                vocabulary.insert_or_assign(key, i);
                phrases += " '" + toUtf8(key) + "'=" + std::to_string(i);
            }
            const std::u16string line = phrase(12);
            const auto expected = tried(vocabulary, words, line), given = detector.detect(line);
            if (given != expected)
                RC_FAIL("'" + toUtf8(line) + "' with" + phrases + " gives" + shown(given) + ", not" + shown(expected));
        },
        4000);
}

// Tables in a folder, as one finds them by hand.
class Tables {
public:
    // The language "xx", its region "xx-YY", and the base, with random keys in two tables.
    Tables() {
        for (const char* language : {"xx", "xx-YY", "Base"})
            for (const char* table : {"One", "Two"}) {
                auto& entries = tables_[std::string(language) + "/" + table];
                for (const char* key : {"a", "b", "c"})
                    if (anyOf(0, 2) > 0) entries[key] = list();
                if (std::string(language) == "xx-YY" && !region_) continue;
                const auto path = folder_.path() / (std::string(language) + ".lproj");
                std::filesystem::create_directories(path);
                std::ofstream file(path / (std::string(table) + ".strings"));
                for (const auto& [key, value] : entries) file << '"' << key << "\" = \"" << value << "\";\n";
            }
    }

    void check(const std::string& code) const {
        const Localizer localizer(code, folder_.path());
        const bool regional = region_ && (code == "xx_YY" || code == "xx-YY-variant" || code == "xx_YY.UTF-8");
        const std::string language = code.starts_with("xx") ? regional ? "xx-YY" : "xx" : "";
        for (const char* table : {"One", "Two"})
            for (const char* key : {"a", "b", "c", "d"}) {
                const auto own = language.empty() ? std::nullopt : entry(language, table, key);
                const auto base = entry("Base", table, key);
                const std::u16string k = toUtf16(key), t = toUtf16(table);
                std::vector<std::string> expected = cut(own.value_or(""));
                for (const std::string& item : cut(base.value_or(key)))
                    if (std::ranges::find(expected, item) == expected.end()) expected.push_back(item);
                std::vector<std::string> given;
                for (const auto& item : localizer.variants(k, t)) given.push_back(toUtf8(item));
                RC_ASSERT(given == expected);
                const auto translation = localizer.translation(k, t);
                RC_ASSERT((translation ? std::optional(toUtf8(*translation)) : std::nullopt) == own);
                RC_ASSERT(toUtf8(localizer.base(k, t)) == base.value_or(key));
                RC_ASSERT(toUtf8(localizer.translationOrBase(k, t)) == own.value_or(base.value_or(key)));
                const auto ownOnly = localizer.variants(k, t, false);
                RC_ASSERT(ownOnly.size() ==
                          (cut(own.value_or("")).empty() ? cut(base.value_or(key)) : cut(*own)).size());
            }
    }

private:
    std::optional<std::string> entry(const std::string& language, const std::string& table,
                                     const std::string& key) const {
        const auto& entries = tables_.at(language + "/" + table);
        const auto found = entries.find(key);
        return found == entries.end() ? std::nullopt : std::optional(found->second);
    }
    static std::string list() {
        constexpr const char* items[] = {"one", "two words", "one ", " three", "", "Four", "five"};
        std::string text;
        for (int i = anyOf(0, 4); i >= 0; --i) text += std::string(anyRow(items)) + (i > 0 ? "," : "");
        return text;
    }
    static std::vector<std::string> cut(const std::string& list) {
        std::vector<std::string> items;
        std::istringstream stream(list);
        for (std::string item; std::getline(stream, item, ',');) {
            item.erase(0, item.find_first_not_of(' '));
            item.erase(item.find_last_not_of(' ') + 1);
            if (!item.empty() && std::ranges::find(items, item) == items.end()) items.push_back(item);
        }
        return items;
    }

    bool region_ = anyOf(0, 1) == 1;
    TemporaryFolder folder_;
    std::map<std::string, std::map<std::string, std::string>> tables_;
};

TEST(LocalizerLaws, theNearestLanguageComesBeforeTheBase) {
    holds(
        [] {
            const Tables tables;
            for (const char* code : {"xx", "xx_YY", "xx_ZZ", "xx_YY.UTF-8", "xx-YY-variant", "qq", ""})
                tables.check(code);
        },
        40);
}

}  // namespace
}  // namespace vemo::test
