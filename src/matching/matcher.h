// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "base/function_ref.h"
#include "records/element.h"

namespace vemo {

// A stretch of elements.
struct ElementRange {
    std::size_t location = 0;
    std::size_t length = 0;

    std::size_t end() const { return location + length; }
    friend bool operator==(const ElementRange&, const ElementRange&) = default;
};

struct Capture {
    std::u16string_view name;  // a literal of the pattern
    ElementRange range;

    friend bool operator==(const Capture&, const Capture&) = default;
};

// The elements a pattern covers, and those of its named groups in order.
struct Match {
    ElementRange range;
    std::vector<Capture> captures;

    // The first range recorded under the name; null without one.
    const ElementRange* group(std::u16string_view name) const;
    std::vector<ElementRange> groups(std::u16string_view name) const;
    friend bool operator==(const Match&, const Match&) = default;
};

// A pattern over elements. `match` reports every way in which it matches at `from`, in a fixed order, by
// calling `next` with the index where the match ends; `captures` then holds the groups so far.
class Matcher {
public:
    using Next = FunctionRef<void(std::size_t end)>;

    virtual ~Matcher() = default;
    virtual void match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures,
                       Next next) const = 0;

    bool matchesAt(const ElementList& elements, std::size_t from) const;
    // All matches at `from`.
    std::vector<Match> matches(const ElementList& elements, std::size_t from) const;
};

using MatcherPointer = std::shared_ptr<const Matcher>;

// A pattern that covers exactly one element and decides by looking at it alone.
class SingleElementMatcher : public Matcher {
public:
    virtual bool test(const Element& element) const = 0;
    void match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures, Next next) const final;
};

// Scans a whole list for a pattern: at each index the match that ends furthest (the first reported of
// several), without overlaps.
class FinderMatcher {
public:
    explicit FinderMatcher(MatcherPointer pattern) : pattern_(std::move(pattern)) {}
    std::vector<Match> occurrences(const ElementList& elements) const;

private:
    MatcherPointer pattern_;
};

}  // namespace vemo
