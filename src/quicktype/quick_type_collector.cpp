// SPDX-License-Identifier: MIT
#include "quicktype/quick_type_collector.h"

#include <algorithm>

#include "base/cache.h"
#include "base/text.h"

namespace vemo {

namespace {

constexpr std::u16string_view untranslated = u"variants";

// Enough for the built-in vocabulary, so that the lists don't grow on the way.
constexpr std::size_t usualUnits = 30000;
constexpr std::size_t usualItems = 4000;

bool isWorthOffering(std::u16string_view hint) {
    if (hint.empty() || (hint.front() >= u'0' && hint.front() <= u'9')) return false;
    if (hint.find(untranslated) != hint.npos) return false;
    const bool plain = hint.size() > 1 && hint[0] < 0x80 && hint[1] < 0x80;
    return plain || graphemeCount(hint, 2) == 2;
}

template <class Visit>
void eachWord(std::u16string_view phrase, Visit visit) {
    for (std::size_t i = 0; i < phrase.size();) {
        const std::size_t start = i;
        while (i < phrase.size() && !isWhitespace(phrase[i])) ++i;
        if (i > start) visit(phrase.substr(start, i - start));
        while (i < phrase.size() && isWhitespace(phrase[i])) ++i;
    }
}

}  // namespace

void QuickTypeCollector::append(std::u16string_view text, int weight, Form form, CompletionKind kind) {
    if (items_.empty()) {
        texts_.reserve(usualUnits);
        items_.reserve(usualItems);
    }
    texts_ += text;
    items_.push_back({static_cast<std::uint32_t>(text.size()), static_cast<std::int16_t>(weight), form,
                      scripts_ ? CompletionKind::script : kind});
}

void QuickTypeCollector::enumerate(const std::function<void(std::u16string_view, int)>& visit) const {
    std::size_t location = 0;
    for (const Item& item : items_) {
        const std::u16string_view text = std::u16string_view(texts_).substr(location, item.length);
        location += item.length;
        switch (item.form) {
            case Form::verbatim:
                visit(text, item.weight);
                break;
            case Form::lowercased:
                visit(lowercased(text), item.weight);
                break;
            case Form::words:
                eachWord(lowercased(text), [&](std::u16string_view word) { visit(word, item.weight); });
                break;
        }
    }
}

std::vector<Completion> QuickTypeCollector::completions() const {
    std::vector<Completion> result;
    result.reserve(items_.size());
    std::size_t location = 0;
    for (const Item& item : items_) {
        const std::u16string_view text = std::u16string_view(texts_).substr(location, item.length);
        location += item.length;
        std::u16string phrase = item.form == Form::verbatim ? std::u16string(text) : lowercased(text);
        if (isWorthOffering(phrase)) result.push_back({std::move(phrase), item.kind, item.weight});
    }
    return result;
}

std::vector<QuickTypeHint> QuickTypeCollector::hints() const {
    std::vector<QuickTypeHint> result;
    enumerate([&](std::u16string_view text, int weight) { result.push_back({std::u16string(text), weight}); });
    return result;
}

std::shared_ptr<QuickTypeEngine> quickTypeEngine(const QuickTypeCollector& collector) {
    auto engine = std::make_shared<QuickTypeEngine>();
    // A text may be offered by several catalogues: its best weight counts.
    TextMap<int> weights;
    collector.enumerate([&](std::u16string_view text, int weight) {
        if (!isWorthOffering(text)) return;
        const auto [entry, added] = weights.try_emplace(std::u16string(text), weight);
        if (!added) entry->second = std::max(entry->second, weight);
    });
    for (const auto& [text, weight] : weights) engine->registerHint(text, weight);
    return engine;
}

}  // namespace vemo
