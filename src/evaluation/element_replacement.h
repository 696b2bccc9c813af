// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_calculator.h"
#include "matching/matcher.h"

namespace vemo {

// Text that means nothing to the calculation.
ElementPointer plainText(std::u16string_view text);

// An operator that nobody wrote, in place of the text between two elements, which may be empty.
ElementPointer unwrittenOperator(std::u16string_view id, std::u16string_view between);

// A list of one element that stands for the whole list and carries the value.
ElementList reducedTo(const Value& value, const ElementList& elements);

// A list some of whose elements give way to others, from the left to the right.
class ElementReplacer {
public:
    explicit ElementReplacer(const ElementList& elements) : elements_(elements) {}

    // Takes over what stands before the range; what is appended to the list that this gives stands in its place. Ranges
    // go from the left to the right.
    ElementList& replace(const ElementRange& range);
    bool changed() const { return changed_; }
    // Nothing when nothing was replaced.
    std::optional<ElementList> finished();

private:
    void takeUpTo(std::size_t end);

    const ElementList& elements_;
    ElementList result_;
    std::size_t taken_ = 0;
    bool changed_ = false;
};

// The list with the element that `reduce` makes in place of each match of a pattern. A match for which it makes none
// stays. Nothing when no match was replaced.
std::optional<ElementList> replacingMatches(const ElementList& elements, const FinderMatcher& matcher,
                                            FunctionRef<std::optional<Value>(const Match&)> reduce);

// The values at the start of each range of the group, folded from the left with one operator.
std::optional<Value> foldGroup(const ElementList& elements, const Match& match, std::u16string_view group,
                               std::u16string_view operatorId, const OperationCalculator& calculator, Context& context);

}  // namespace vemo
