// SPDX-License-Identifier: MIT
#include "matching/matcher.h"

namespace vemo {

const ElementRange* Match::group(std::u16string_view name) const {
    for (const Capture& capture : captures)
        if (capture.name == name) return &capture.range;
    return nullptr;
}

std::vector<ElementRange> Match::groups(std::u16string_view name) const {
    std::vector<ElementRange> result;
    for (const Capture& capture : captures)
        if (capture.name == name) result.push_back(capture.range);
    return result;
}

bool Matcher::matchesAt(const ElementList& elements, std::size_t from) const {
    bool found = false;
    std::vector<Capture> captures;
    match(elements, from, captures, [&](std::size_t) { found = true; });
    return found;
}

std::vector<Match> Matcher::matches(const ElementList& elements, std::size_t from) const {
    std::vector<Match> result;
    std::vector<Capture> captures;
    match(elements, from, captures, [&](std::size_t end) { result.push_back({{from, end - from}, captures}); });
    return result;
}

void SingleElementMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>&,
                                 Next next) const {
    if (from < elements.size() && test(elements[from])) next(from + 1);
}

std::vector<Match> FinderMatcher::occurrences(const ElementList& elements) const {
    std::vector<Match> result;
    std::vector<Capture> captures;
    for (std::size_t i = 0; i < elements.size();) {
        // Only the furthest match is kept: the shorter ones are never built.
        Match furthest{{i, 0}, {}};
        pattern_->match(elements, i, captures, [&](std::size_t end) {
            if (end <= furthest.range.end()) return;
            furthest.range.length = end - i;
            furthest.captures = captures;
        });
        if (furthest.range.length == 0) {
            ++i;
            continue;
        }
        i = furthest.range.end();
        result.push_back(std::move(furthest));
    }
    return result;
}

}  // namespace vemo
