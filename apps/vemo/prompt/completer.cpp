// SPDX-License-Identifier: MIT
#include "prompt/completer.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "session/common_words.h"
#include "session/word_starts.h"

namespace vemo::cli {

namespace {

constexpr std::size_t mostChoices = 10;
constexpr std::size_t mostCandidates = 2000;

char16_t lowered(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

std::size_t commonLength(std::u16string_view a, std::u16string_view b) {
    std::size_t length = 0;
    while (length < a.size() && length < b.size() && lowered(a[length]) == lowered(b[length])) ++length;
    // No surrogate pair is cut in two.
    if (length > 0 && a[length - 1] >= 0xd800 && a[length - 1] < 0xdc00) --length;
    return length;
}

// A name may go on after a blank.
std::vector<std::size_t> beginnings(std::u16string_view text) {
    if (text.size() > 1 && text.back() == u' ' && text[text.size() - 2] != u' ') text.remove_suffix(1);
    return session::wordStarts(text);
}

// True when a place may be meant: it is written with a capital, or its time is asked for.
bool asksForPlace(std::u16string_view line, std::size_t start) {
    return (line[start] >= u'A' && line[start] <= u'Z') || line.substr(0, start).find(u"time in ") != line.npos;
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

// The document's own words come first, then those that people type most. One more than are shown tells that there are
// more.
std::vector<Completer::Choice> Completer::choicesFor(std::u16string_view line, std::size_t start) const {
    const std::u16string_view typed = line.substr(start);
    std::vector<Choice> choices;
    for (const Choice& word : words_)
        if (session::beginsWith(word.text, typed) && choices.size() <= mostChoices) choices.push_back(word);
    auto found = vocabulary_->startingWith(typed, mostCandidates);
    const bool placesFirst = asksForPlace(line, start);
    const auto rank = [&](const Completion& completion) {
        const std::size_t after = completion.kind == CompletionKind::place && placesFirst ? 0 : 1;
        return std::pair(after, session::rarityOf(completion.text));
    };
    std::stable_sort(found.begin(), found.end(), [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    for (const Completion& completion : found) {
        std::string kind = utf8(completionKindName(completion.kind));
        const auto known = std::find_if(choices.begin(), choices.end(),
                                        [&](const auto& choice) { return choice.text == completion.text; });
        if (known == choices.end()) {
            if (choices.size() <= mostChoices) choices.push_back({completion.text, std::move(kind)});
        } else if (known->kind.empty()) {
            known->kind = std::move(kind);
        }
    }
    return choices;
}

Completer::Answer answerAmong(std::u16string_view line, std::size_t start, std::vector<Completer::Choice> choices) {
    std::erase_if(choices, [&](const auto& choice) { return !session::beginsWith(choice.text, line.substr(start)); });
    return answerOf(line, start, std::move(choices), true);
}

Completer::Answer Completer::complete(std::u16string_view text) {
    if (!vocabulary_) vocabulary_ = build_();
    for (const std::size_t start : beginnings(text)) {
        auto choices = choicesFor(text, start);
        const bool all = choices.size() <= mostChoices;
        if (!all) choices.resize(mostChoices);
        if (!choices.empty()) return answerOf(text, start, std::move(choices), all);
    }
    return {};
}

}  // namespace vemo::cli
