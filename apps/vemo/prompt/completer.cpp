// SPDX-License-Identifier: MIT
#include "prompt/completer.h"

#include <algorithm>
#include <unordered_set>

namespace vemo::cli {

namespace {

constexpr int documentWeight = 30;  // the document's own words come first
constexpr std::size_t mostWords = 4;
constexpr std::size_t mostPlaces = 5;
constexpr std::size_t leastOfPlace = 2;  // letters
constexpr std::u16string_view separators = u" \t()+-*/^=,;:<>&|\"#";
constexpr std::u16string_view leading = u"0123456789.%";  // an amount may stand right in front of its unit

char16_t lowered(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

std::size_t commonLength(std::u16string_view a, std::u16string_view b) {
    std::size_t length = 0;
    while (length < a.size() && length < b.size() && lowered(a[length]) == lowered(b[length])) ++length;
    // Not in the middle of a surrogate pair.
    if (length > 0 && a[length - 1] >= 0xd800 && a[length - 1] < 0xdc00) --length;
    return length;
}

bool beginsWith(std::u16string_view text, std::u16string_view beginning) {
    return commonLength(text, beginning) == beginning.size();
}

// Where the last words of the text begin, the longest stretch first.
std::vector<std::size_t> beginnings(std::u16string_view text) {
    std::vector<std::size_t> starts;
    std::size_t position = text.size();
    // A name may go on after a blank.
    if (position > 1 && text.back() == u' ' && text[position - 2] != u' ') --position;
    while (starts.size() < mostWords && position > 0) {
        std::size_t start = position;
        while (start > 0 && separators.find(text[start - 1]) == separators.npos) --start;
        std::size_t word = start;
        while (word < position && leading.find(text[word]) != leading.npos) ++word;
        if (word == position) break;
        starts.insert(starts.begin(), word);
        if (word != start || start == 0 || text[start - 1] != u' ') break;
        position = start - 1;
    }
    return starts;
}

// The cities of the time zones.
const std::vector<std::u16string>& places() {
    static const std::vector<std::u16string> names = [] {
        std::vector<std::u16string> result;
        for (const std::string& zone : knownTimeZones()) {
            const std::size_t slash = zone.rfind('/');
            if (slash == zone.npos || zone.starts_with("Etc/") || zone.starts_with("SystemV/")) continue;
            std::string city = zone.substr(slash + 1);
            std::replace(city.begin(), city.end(), '_', ' ');
            result.push_back(utf16(city));
        }
        std::sort(result.begin(), result.end());
        result.erase(std::unique(result.begin(), result.end()), result.end());
        return result;
    }();
    return names;
}

// Names of places are written with a capital, or asked for their time.
bool mayBePlace(std::u16string_view line, std::size_t start) {
    if (line.size() < start + leastOfPlace) return false;
    if (line[start] >= u'A' && line[start] <= u'Z') return true;
    return line.substr(0, start).find(u"time") != line.npos;
}

// `all` tells that there are no others.
Completer::Answer answerOf(std::u16string_view line, std::size_t start, std::vector<Completer::Choice> choices,
                           bool all) {
    const std::u16string_view typed = line.substr(start);
    Completer::Answer answer;
    answer.typed = typed.size();
    answer.choices = std::move(choices);
    if (answer.choices.empty() || !all) return answer;
    std::u16string_view common = answer.choices.front().text;
    for (const auto& choice : answer.choices) common = common.substr(0, commonLength(common, choice.text));
    if (common.size() > typed.size() || (answer.choices.size() == 1 && common != typed)) answer.insertion = common;
    return answer;
}

}  // namespace

void Completer::learn(const VemoEngine::Result& document) {
    words_.clear();
    std::unordered_set<std::u16string> known;
    const auto learnWord = [&](std::u16string_view word, const char* kind) {
        while (!word.empty() && (word.back() == u' ' || word.back() == u'\t')) word.remove_suffix(1);
        if (word.size() > 1 && known.emplace(word).second) words_.push_back({std::u16string(word), kind});
    };
    for (const auto& line : document.lines) {
        line.attributedText().enumerate([&](std::u16string_view run, RunType type, std::size_t) {
            if (type == RunType::variable) learnWord(run, "name");
        });
        for (const std::u16string& token : line.quickTypeData().tokens) learnWord(token, "");
        for (const std::u16string& expression : line.quickTypeData().expressions) learnWord(expression, "conversion");
    }
}

std::vector<Completer::Choice> Completer::choicesFor(std::u16string_view line, std::size_t start, bool& all) const {
    std::vector<std::u16string> own;
    for (const Choice& word : words_) own.push_back(word.text);
    const auto hints = quickType_->hintsFor(line.substr(start), own, documentWeight);
    // With five there may be more, which begin otherwise.
    all = hints.size() < QuickTypeEngine::maxElementsInArray;
    std::vector<Choice> choices;
    std::vector<std::u16string> unknown;
    for (const QuickTypeHint& hint : hints) {
        const auto known =
            std::find_if(words_.begin(), words_.end(), [&](const auto& word) { return word.text == hint.string; });
        choices.push_back(known != words_.end() ? *known : Choice{hint.string, ""});
        if (choices.back().kind.empty()) unknown.push_back(hint.string);
    }
    if (!unknown.empty()) {
        const auto kinds = kindsOf_(unknown);
        auto kind = kinds.begin();
        for (Choice& choice : choices)
            if (choice.kind.empty() && kind != kinds.end()) choice.kind = *kind++;
    }
    if (!mayBePlace(line, start)) return choices;
    std::size_t count = 0;
    for (const std::u16string& place : places()) {
        if (!beginsWith(place, line.substr(start))) continue;
        if (++count > mostPlaces) {
            all = false;
            break;
        }
        choices.push_back({place, "place"});
    }
    return choices;
}

Completer::Answer answerAmong(std::u16string_view line, std::size_t start, std::vector<Completer::Choice> choices) {
    std::erase_if(choices, [&](const auto& choice) { return !beginsWith(choice.text, line.substr(start)); });
    return answerOf(line, start, std::move(choices), true);
}

Completer::Answer Completer::complete(std::u16string_view text) const {
    for (const std::size_t start : beginnings(text)) {
        bool all = true;
        auto choices = choicesFor(text, start, all);
        if (!choices.empty()) return answerOf(text, start, std::move(choices), all);
    }
    return {};
}

}  // namespace vemo::cli
