// SPDX-License-Identifier: MIT
#include "scanning/string_extractor.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "base/text.h"
#include "records/number_words.h"

namespace vemo {

namespace {

// The non-overlapping candidates accepted so far.
class AcceptedRanges {
public:
    explicit AcceptedRanges(std::size_t length) : covered_(length, false) {}

    bool conflicts(TextRange range) const {
        if (range.length == 0) return range.location < covered_.size() && covered_[range.location];
        for (std::size_t i = range.location; i < range.end(); ++i)
            if (covered_[i]) return true;
        return std::any_of(points_.begin(), points_.end(),
                           [&](std::size_t point) { return range.location < point && point < range.end(); });
    }

    void accept(TextRange range) {
        if (range.length == 0) points_.push_back(range.location);
        std::fill_n(covered_.begin() + static_cast<std::ptrdiff_t>(range.location), range.length, true);
    }

private:
    std::vector<bool> covered_;
    std::vector<std::size_t> points_;  // candidates of no length
};

using Candidates = std::vector<const Extraction*>;

// Stable. Short lists, as most are, are sorted by insertion, which needs no buffer.
template <class Less>
void sortCandidates(Candidates& candidates, Less less) {
    constexpr std::size_t few = 32;
    if (candidates.size() > few) return std::stable_sort(candidates.begin(), candidates.end(), less);
    for (auto next = candidates.begin(); next != candidates.end(); ++next)
        std::rotate(std::upper_bound(candidates.begin(), next, *next, less), next, next + 1);
}

RunType typeOf(const Extraction& extraction) {
    return extraction.element->attributedText.runs().begin()->type;
}

// Drops the signs of operators inside phrases, to which they belong: "US-Dollar", a script's "km/h", and inside
// numbers: "quatre-vingts". Inside a date a sign belongs to it when it stands between letters: "après-demain", but not
// "3/4/27".
void dropSignsInPhrases(std::u16string_view text, Candidates& candidates) {
    std::vector<const Extraction*> phrases;
    bool signs = false;
    for (const Extraction* candidate : candidates) {
        const RunType type = typeOf(*candidate);
        const bool phrase = type == RunType::unit || type == RunType::function || type == RunType::operatorWord ||
                            candidate->element->value.has(Attribute::date) ||
                            candidate->element->value.is(Attribute::type, number_word::count);
        if (type == RunType::operatorSymbol)
            signs = true;
        else if (phrase && candidate->range.length > 2 && candidate->range.end() <= text.size())
            phrases.push_back(candidate);
    }
    if (!signs || phrases.empty()) return;
    std::erase_if(candidates, [&](const Extraction* candidate) {
        const TextRange sign = candidate->range;
        return typeOf(*candidate) == RunType::operatorSymbol &&
               std::any_of(phrases.begin(), phrases.end(), [&](const Extraction* phrase) {
                   if (sign.location <= phrase->range.location || sign.end() >= phrase->range.end()) return false;
                   return !phrase->element->value.has(Attribute::date) ||
                          (isLetter(text[sign.location - 1]) && isLetter(text[sign.end()]));
               });
    });
}

}  // namespace

void StringExtractor::extract(std::u16string_view text, const Regex& pattern, std::int64_t priority,
                              FunctionRef<ElementPointer(std::u16string_view)> make, std::vector<Extraction>& result) {
    for (const TextRange& range : pattern.ranges(text)) result.push_back({range, priority, 0, make(range.in(text))});
}

ElementList StringExtractor::elements(std::u16string_view text, const std::vector<Extraction>& extractions) {
    Candidates sorted(extractions.size());
    std::transform(extractions.begin(), extractions.end(), sorted.begin(), [](const Extraction& e) { return &e; });
    dropSignsInPhrases(text, sorted);
    sortCandidates(sorted, [](const Extraction* a, const Extraction* b) {
        return std::tuple(b->priority, b->range.length, b->secondaryPriority, a->range.location) <
               std::tuple(a->priority, a->range.length, a->secondaryPriority, b->range.location);
    });
    AcceptedRanges accepted(text.size());
    std::erase_if(sorted, [&](const Extraction* candidate) {
        if (candidate->range.end() > text.size() || accepted.conflicts(candidate->range)) return true;
        accepted.accept(candidate->range);
        return false;
    });
    sortCandidates(sorted,
                   [](const Extraction* a, const Extraction* b) { return a->range.location < b->range.location; });

    ElementList result;
    result.reserve(2 * sorted.size() + 1);
    std::size_t cursor = 0;
    const auto fillUpTo = [&](std::size_t end) {
        if (cursor < end) result.append(makeElement({}, AttributedText(text.substr(cursor, end - cursor))));
    };
    for (const Extraction* extraction : sorted) {
        fillUpTo(extraction->range.location);
        result.append(extraction->element);
        cursor = extraction->range.end();
    }
    fillUpTo(text.size());
    return result;
}

}  // namespace vemo
