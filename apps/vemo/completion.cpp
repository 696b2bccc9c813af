// SPDX-License-Identifier: MIT
#include "completion.h"

#include <algorithm>
#include <unordered_set>

namespace vemo::cli {

namespace {

constexpr int documentWeight = 30;  // the document's own words come first
constexpr std::size_t mostWords = 4;
constexpr std::u16string_view separators = u" \t()+-*/^=,;:<>&|\"#";
constexpr std::u16string_view leading = u"0123456789.%";  // an amount may stand right in front of its unit

char16_t lowered(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

std::u16string_view commonBeginning(std::u16string_view a, std::u16string_view b) {
    std::size_t length = 0;
    while (length < a.size() && length < b.size() && lowered(a[length]) == lowered(b[length])) ++length;
    // Not in the middle of a surrogate pair.
    if (length > 0 && a[length - 1] >= 0xd800 && a[length - 1] < 0xdc00) --length;
    return a.substr(0, length);
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

}  // namespace

void Completion::learn(const VemoEngine::Result& document) {
    words_.clear();
    std::unordered_set<std::u16string> known;
    const auto learnWord = [&](std::u16string_view word) {
        while (!word.empty() && (word.back() == u' ' || word.back() == u'\t')) word.remove_suffix(1);
        if (word.size() > 1 && known.emplace(word).second) words_.emplace_back(word);
    };
    for (const auto& line : document.lines) {
        line.attributedText().enumerate([&](std::u16string_view run, RunType type, std::size_t) {
            if (type == RunType::variable) learnWord(run);
        });
        for (const std::u16string& token : line.quickTypeData().tokens) learnWord(token);
        for (const std::u16string& expression : line.quickTypeData().expressions) learnWord(expression);
    }
}

Completion::Answer Completion::complete(std::u16string_view text) const {
    for (const std::size_t start : beginnings(text)) {
        const auto hints = quickType_->hintsFor(text.substr(start), words_, documentWeight);
        if (hints.empty()) continue;
        Answer answer;
        answer.typed = text.size() - start;
        std::u16string_view common = hints.front().string;
        for (const QuickTypeHint& hint : hints) {
            common = commonBeginning(common, hint.string);
            answer.choices.push_back(hint.string);
        }
        // With five choices there may be more, which begin otherwise.
        const bool all = hints.size() < QuickTypeEngine::maxElementsInArray;
        if (all && (common.size() > answer.typed || (hints.size() == 1 && common != text.substr(start))))
            answer.insertion = common;
        return answer;
    }
    return {};
}

}  // namespace vemo::cli
