// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "vemo/quick_type.h"

namespace vemo {

namespace {

constexpr std::size_t most = QuickTypeEngine::maxElementsInArray;

// True for the text that comes first by its letters, without regard to ASCII case: "km" before "KMF".
bool comesBefore(std::u16string_view a, std::u16string_view b) {
    const auto folded = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
    const auto less = [&](char16_t x, char16_t y) { return folded(x) < folded(y); };
    if (std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), less)) return true;
    return !std::lexicographical_compare(b.begin(), b.end(), a.begin(), a.end(), less) && a < b;
}

}  // namespace

// Every beginning of a lower-cased hint is a node, which keeps the best hints that begin so.
struct QuickTypeEngine::Trie {
    using Index = std::uint32_t;
    static constexpr Index none = ~Index(0);

    struct Node {
        char16_t unit = 0;
        std::uint8_t count = 0;  // of `best`
        Index firstChild = none;
        Index nextSibling = none;
        Index firstHint = none;  // of those that end here
        std::array<Index, most> best{};
    };

    struct Entry {
        QuickTypeHint hint;
        Index nextWithSameKey = none;
        std::size_t lowerings = 0;  // as many as there had been when it was registered last
    };

    Index child(Index parent, char16_t unit) const {
        if (parent == 0 && unit < asciiStarts.size()) return asciiStarts[unit];
        Index node = nodes[parent].firstChild;
        while (node != none && nodes[node].unit != unit) node = nodes[node].nextSibling;
        return node;
    }

    Index childMade(Index parent, char16_t unit) {
        const Index present = child(parent, unit);
        if (present != none) return present;
        const auto made = static_cast<Index>(nodes.size());
        Node node;
        node.unit = unit;
        node.nextSibling = std::exchange(nodes[parent].firstChild, made);
        nodes.push_back(node);
        if (parent == 0 && unit < asciiStarts.size()) asciiStarts[unit] = made;
        return made;
    }

    // Null when no hint begins so.
    const Node* find(std::u16string_view key) const {
        Index node = 0;
        for (const char16_t unit : key) {
            node = child(node, unit);
            if (node == none) return nullptr;
        }
        return &nodes[node];
    }

    bool isBetter(Index a, Index b) const {
        const QuickTypeHint& left = entries[a].hint;
        const QuickTypeHint& right = entries[b].hint;
        return left.weight != right.weight ? left.weight > right.weight : comesBefore(left.string, right.string);
    }

    void place(Node& node, Index hint) const {
        const auto begin = node.best.begin();
        auto end = std::remove(begin, begin + node.count, hint);
        const auto position = std::find_if(begin, end, [&](Index other) { return isBetter(hint, other); });
        if (position != node.best.end()) {
            if (end == node.best.end()) --end;
            std::move_backward(position, end, end + 1);
            *position = hint;
            ++end;
        }
        node.count = static_cast<std::uint8_t>(end - begin);
    }

    void add(std::u16string_view string, int weight) {
        path.assign(1, 0);
        for (const char16_t unit : lowercased(string)) path.push_back(childMade(path.back(), unit));
        Index hint = nodes[path.back()].firstHint;
        while (hint != none && entries[hint].hint.string != string) hint = entries[hint].nextWithSameKey;
        if (hint == none) {
            hint = static_cast<Index>(entries.size());
            entries.push_back({{std::u16string(string), weight}, std::exchange(nodes[path.back()].firstHint, hint), 0});
        } else {
            Entry& entry = entries[hint];
            // Where the hint is missing among the best, five are better, unless one of them was lowered since.
            if (entry.hint.weight == weight && entry.lowerings == lowerings) return;
            if (weight < entry.hint.weight) ++lowerings;
            entry.hint.weight = weight;
        }
        entries[hint].lowerings = lowerings;
        for (const Index node : path) place(nodes[node], hint);
    }

    std::vector<Node> nodes{1};
    std::vector<Entry> entries;
    std::array<Index, 128> asciiStarts = filled();  // the root's children, which are many
    std::size_t lowerings = 0;                      // hints that were registered again with a lower weight
    std::vector<Index> path;

private:
    static std::array<Index, 128> filled() {
        std::array<Index, 128> indices{};
        indices.fill(none);
        return indices;
    }
};

QuickTypeEngine::QuickTypeEngine() : trie_(std::make_unique<Trie>()) {}
QuickTypeEngine::~QuickTypeEngine() = default;
QuickTypeEngine::QuickTypeEngine(QuickTypeEngine&&) noexcept = default;
QuickTypeEngine& QuickTypeEngine::operator=(QuickTypeEngine&&) noexcept = default;

void QuickTypeEngine::registerHint(std::u16string_view string, int weight) {
    trie_->add(string, weight);
}

void QuickTypeEngine::registerHints(const std::vector<QuickTypeHint>& hints) {
    for (const QuickTypeHint& hint : hints) registerHint(hint);
}

std::vector<QuickTypeHint> QuickTypeEngine::hintsFor(const Context& context,
                                                     const std::vector<QuickTypeHint>& additionalHints) const {
    const std::u16string key = lowercased(context.string);
    std::vector<QuickTypeHint> answer;
    answer.reserve(most + 1);
    const Trie::Node* node = context.ignoreRegisteredHints ? nullptr : trie_->find(key);
    for (std::size_t i = 0; node && i < node->count; ++i) answer.push_back(trie_->entries[node->best[i]].hint);
    for (const QuickTypeHint& hint : additionalHints) {
        if (!lowercased(hint.string).starts_with(key)) continue;
        std::erase_if(answer, [&](const QuickTypeHint& other) { return other.string == hint.string; });
        const auto position = std::find_if(answer.begin(), answer.end(),
                                           [&](const QuickTypeHint& other) { return other.weight < hint.weight; });
        answer.insert(position, hint);
        if (answer.size() > most) answer.resize(most);
    }
    return answer;
}

std::vector<QuickTypeHint> QuickTypeEngine::hintsFor(std::u16string_view text,
                                                     const std::vector<std::u16string>& additionalTokens,
                                                     int weight) const {
    std::vector<QuickTypeHint> hints;
    hints.reserve(additionalTokens.size());
    for (const std::u16string& token : additionalTokens) hints.push_back({token, weight});
    return hintsFor(Context{std::u16string(text), false}, hints);
}

}  // namespace vemo
