// SPDX-License-Identifier: MIT
#include "vemo/completions.h"

#include <algorithm>
#include <tuple>

#include "base/text.h"

namespace vemo {

std::u16string_view completionKindName(CompletionKind kind) {
    constexpr std::u16string_view names[] = {u"operator", u"unit",  u"currency", u"function",
                                             u"variable", u"place", u"script"};
    return names[static_cast<std::size_t>(kind)];
}

Completions::Completions(std::vector<Completion> all) {
    entries_.reserve(all.size());
    for (Completion& completion : all) {
        std::u16string key = lowercased(completion.text);
        entries_.push_back({std::move(key), std::move(completion)});
    }
    const auto rank = [](const Entry& entry) {
        return std::tie(entry.key, entry.completion.text, entry.completion.kind);
    };
    std::sort(entries_.begin(), entries_.end(), [&](const Entry& a, const Entry& b) {
        return rank(a) != rank(b) ? rank(a) < rank(b) : a.completion.weight > b.completion.weight;
    });
    entries_.erase(std::unique(entries_.begin(), entries_.end(),
                               [&](const Entry& a, const Entry& b) { return rank(a) == rank(b); }),
                   entries_.end());
}

std::vector<Completion> Completions::startingWith(std::u16string_view typed, std::size_t most) const {
    const std::u16string key = lowercased(typed);
    std::vector<const Entry*> found;
    for (auto entry = std::lower_bound(entries_.begin(), entries_.end(), key,
                                       [](const Entry&each, const std::u16string&wanted) { return each.key < wanted; });
         entry != entries_.end() && entry->key.starts_with(key); ++entry)
        found.push_back(&*entry);
    most = std::min(most, found.size());
    // What was typed in full comes before all that is longer; equal ones keep the order of their letters.
    std::partial_sort(found.begin(), found.begin() + static_cast<std::ptrdiff_t>(most), found.end(),
                      [&](const Entry* a, const Entry* b) {
                          const bool wholeA = a->key == key, wholeB = b->key == key;
                          if (wholeA != wholeB) return wholeA;
                          if (a->completion.weight != b->completion.weight)
                              return a->completion.weight > b->completion.weight;
                          return a < b;
                      });
    std::vector<Completion> answer;
    answer.reserve(most);
    for (std::size_t i = 0; i < most; ++i) answer.push_back(found[i]->completion);
    return answer;
}

}  // namespace vemo
