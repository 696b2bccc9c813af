// SPDX-License-Identifier: MIT
// Any pattern over elements matches where its definition says: the ends that a plain set of them gives.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

#include "matching/combinators.h"

namespace vemo {
namespace {

using namespace pattern;
using Ends = std::set<std::size_t>;

ElementList listOf(std::u16string_view text) {
    ElementList list;
    for (const char16_t c : text)
        list.append(makeElement(Value(Attribute::type, std::u16string_view(&c, 1)),
                                AttributedText(std::u16string_view(&c, 1))));
    return list;
}

// A pattern beside what it means: from where a match may end.
struct Pattern {
    MatcherPointer matcher;
    std::function<Ends(std::u16string_view text, std::size_t from)> ends;
};

Pattern anyPattern(int depth);

Pattern anySingle() {
    const auto letter = *rc::gen::element<char16_t>(u'a', u'b');
    return {type(std::u16string_view(&letter, 1)), [letter](std::u16string_view text, std::size_t from) {
                return from < text.size() && text[from] == letter ? Ends{from + 1} : Ends{};
            }};
}

Pattern sequence(const Pattern& first, const Pattern& second) {
    return {seq({first.matcher, second.matcher}), [=](std::u16string_view text, std::size_t from) {
                Ends result;
                for (const std::size_t middle : first.ends(text, from)) result.merge(second.ends(text, middle));
                return result;
            }};
}

Pattern repeated(const Pattern& inner) {
    const auto least = *rc::gen::element<std::size_t>(0, 1, 2);
    const auto most = *rc::gen::element<std::size_t>(1, 2, 3, 100);
    const auto min = least == 0 ? std::nullopt : std::optional(least);
    const auto max = most == 100 ? std::nullopt : std::optional(std::max(least, most));
    return {repeat(inner.matcher, min, max), [=](std::u16string_view text, std::size_t from) {
                Ends result, reached{from};
                for (std::size_t count = 0; !reached.empty() && count <= std::max(least, most); ++count) {
                    if (count >= least) result.insert(reached.begin(), reached.end());
                    Ends next;
                    for (const std::size_t at : reached)
                        for (const std::size_t end : inner.ends(text, at))
                            if (end > at) next.insert(end);
                    reached = next;
                    if (count == std::max(least, most)) break;
                }
                return result;
            }};
}

Pattern anyPattern(int depth) {
    switch (*rc::gen::inRange(0, depth > 0 ? 6 : 2)) {
        case 0:
            return anySingle();
        case 1:
            return {anyElement(), [](std::u16string_view text, std::size_t from) {
                        return from < text.size() ? Ends{from + 1} : Ends{};
                    }};
        case 2: {
            const Pattern one = anyPattern(depth - 1), other = anyPattern(depth - 1);
            return {either({one.matcher, other.matcher}), [=](std::u16string_view text, std::size_t from) {
                        Ends result = one.ends(text, from);
                        result.merge(other.ends(text, from));
                        return result;
                    }};
        }
        case 3:
            return repeated(*rc::gen::arbitrary<bool>() ? anySingle() : anyPattern(depth - 1));
        case 4: {
            const Pattern inner = anyPattern(depth - 1);
            return {group(inner.matcher, u"g"), inner.ends};
        }
        default:
            return sequence(anyPattern(depth - 1), anyPattern(depth - 1));
    }
}

std::u16string anyText() {
    return *rc::gen::resize(8, rc::gen::container<std::u16string>(rc::gen::element<char16_t>(u'a', u'b', u'c')));
}

RC_GTEST_PROP(PatternLaws, matchWhereTheirDefinitionSays, ()) {
    const Pattern pattern = anyPattern(3);
    const std::u16string text = anyText();
    const ElementList list = listOf(text);
    for (std::size_t from = 0; from <= text.size(); ++from) {
        const Ends expected = pattern.ends(text, from);
        Ends found;
        for (const Match& match : pattern.matcher->matches(list, from)) {
            RC_ASSERT(match.range.location == from);
            found.insert(match.range.end());
            for (const Capture& capture : match.captures)
                RC_ASSERT((capture.range.location >= from && capture.range.end() <= match.range.end()));
        }
        RC_ASSERT(found == expected);
        RC_ASSERT(pattern.matcher->matchesAt(list, from) == !expected.empty());
    }
}

// The finder takes the furthest end at each place, steps over what it took, and leaves out what covers nothing.
RC_GTEST_PROP(PatternLaws, areFoundFromLeftToRight, ()) {
    const Pattern pattern = anyPattern(2);
    const std::u16string text = anyText();
    std::vector<ElementRange> expected;
    for (std::size_t at = 0; at < text.size();) {
        const Ends ends = pattern.ends(text, at);
        const std::size_t furthest = ends.empty() ? at : *ends.rbegin();
        if (furthest > at) expected.push_back({at, furthest - at});
        at = std::max(at + 1, furthest);
    }
    std::vector<ElementRange> found;
    for (const Match& match : FinderMatcher(pattern.matcher).occurrences(listOf(text))) found.push_back(match.range);
    RC_ASSERT(found == expected);
}

// A group of one element, which is tested without being asked for matches, is as any other group.
RC_GTEST_PROP(PatternLaws, groupSingleElementsAsAnyOther, ()) {
    const Pattern single = anySingle();
    const MatcherPointer quick = seq({group(single.matcher, u"one"), repeat(group(anyElement(), u"rest"))});
    const MatcherPointer general =
        seq({group(seq({single.matcher}), u"one"), repeat(group(seq({anyElement()}), u"rest"))});
    const ElementList list = listOf(anyText());
    for (std::size_t from = 0; from <= list.size(); ++from)
        RC_ASSERT(quick->matches(list, from) == general->matches(list, from));
    for (const Match& match : quick->matches(list, 0)) {
        RC_ASSERT(match.groups(u"rest").size() + 1 == match.range.length);
        RC_ASSERT((match.group(u"one") && *match.group(u"one") == ElementRange{0, 1} && !match.group(u"two")));
    }
}

}  // namespace
}  // namespace vemo
