// SPDX-License-Identifier: MIT
#include "evaluation/element_replacement.h"

#include <utility>

#include "records/remarks.h"

namespace vemo {

ElementPointer plainText(std::u16string_view text) {
    return makeElement({}, AttributedText(text));
}

ElementPointer unwrittenOperator(std::u16string_view id, std::u16string_view between) {
    return makeElement(Value(Attribute::operation, id), between.empty() ? AttributedText() : AttributedText(between));
}

ElementList reducedTo(const Value& value, const ElementList& elements) {
    return ElementList({makeElement(value, elements.attributedText())});
}

ElementList& ElementReplacer::replace(const ElementRange& range) {
    if (!changed_) result_.reserve(elements_.size());
    takeUpTo(range.location);
    taken_ = range.end();
    changed_ = true;
    return result_;
}

std::optional<ElementList> ElementReplacer::finished() {
    if (!changed_) return std::nullopt;
    takeUpTo(elements_.size());
    return std::move(result_);
}

void ElementReplacer::takeUpTo(std::size_t end) {
    for (; taken_ < end; ++taken_) result_.append(elements_.pointers()[taken_]);
}

std::optional<ElementList> replacingMatches(const ElementList& elements, const FinderMatcher& matcher,
                                            FunctionRef<std::optional<Value>(const Match&)> reduce) {
    ElementReplacer replacer(elements);
    for (const Match& match : matcher.occurrences(elements)) {
        if (const auto value = reduce(match))
            replacer.replace(match.range)
                .append(makeElement(*value, elements.attributedText(match.range.location, match.range.end())));
    }
    return replacer.finished();
}

std::optional<Value> foldGroup(const ElementList& elements, const Match& match, std::u16string_view group,
                               std::u16string_view operatorId, const OperationCalculator& calculator,
                               Context& context) {
    std::optional<Value> result;
    TextRange covered;
    for (const ElementRange& range : match.groups(group)) {
        const Value& value = elements[range.location].value;
        const TextRange place = elements.rangeOf(range.location, range.end());
        if (!result) {
            result = value;
            covered = place;
            continue;
        }
        auto combined = calculator.apply(operatorId, *result, value, context);
        if (!combined) return std::nullopt;
        const TextRange left = std::exchange(covered, {covered.location, place.end() - covered.location});
        keepStep(context, [&] {
            return ReadingStep{std::u16string(operatorId), {{*result, left}, {value, place}}, *combined, covered};
        });
        result = std::move(combined);
    }
    return result;
}

}  // namespace vemo
