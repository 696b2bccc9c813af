// SPDX-License-Identifier: MIT
#include "notepad/completion_source.h"

#include <algorithm>

#include "notepad/texts.h"
#include "session/common_words.h"
#include "session/word_starts.h"

namespace vemo::notepad {

namespace {

constexpr std::size_t mostItems = 8;
constexpr std::size_t mostCandidates = 1000;

bool isText(QStringView before) {
    return before.trimmed().startsWith(u'#') || before.contains(QStringLiteral("//"));
}

std::vector<Completion> itemsFor(const LineList& lines, int line, std::u16string_view typed,
                                 const Completions* vocabulary) {
    std::vector<Completion> items;
    const auto add = [&](const Completion& completion) {
        const bool known = std::any_of(items.begin(), items.end(),
                                       [&](const Completion& item) { return item.text == completion.text; });
        if (!known && items.size() < mostItems) items.push_back(completion);
    };
    lines.visitNames([&](int defining, const QString& name) {
        if (defining != line && session::beginsWith(viewOf(name), typed))
            add({std::u16string(viewOf(name)), CompletionKind::variable, 0});
    });
    if (!vocabulary) return items;
    auto found = vocabulary->startingWith(typed, mostCandidates);
    // A place is written with a capital.
    const bool placesFirst = typed.front() >= u'A' && typed.front() <= u'Z';
    const auto rank = [&](const Completion& completion) {
        const bool first = placesFirst && completion.kind == CompletionKind::place;
        return std::pair(first ? 0 : 1, session::rarityOf(completion.text));
    };
    std::stable_sort(found.begin(), found.end(),
                     [&](const Completion& a, const Completion& b) { return rank(a) < rank(b); });
    for (const Completion& completion : found) add(completion);
    return items;
}

}  // namespace

CompletionOffer completionsFor(const LineList& lines, int line, QStringView before, const Completions* vocabulary,
                               int least) {
    if (isText(before)) return {};
    const std::u16string_view text = viewOf(before);
    for (const std::size_t start : session::wordStarts(text)) {
        const std::u16string_view typed = text.substr(start);
        if (typed.size() < static_cast<std::size_t>(least)) return {};
        auto items = itemsFor(lines, line, typed, vocabulary);
        if (items.size() == 1 && items.front().text == typed) return {};
        if (!items.empty()) return {static_cast<int>(typed.size()), std::move(items)};
    }
    return {};
}

}  // namespace vemo::notepad
