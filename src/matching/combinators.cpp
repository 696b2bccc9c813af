// SPDX-License-Identifier: MIT
#include "matching/combinators.h"

#include <algorithm>

namespace vemo {

void SequenceMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures,
                            Next next) const {
    matchFrom(0, elements, from, captures, next);
}

void SequenceMatcher::matchFrom(std::size_t part, const ElementList& elements, std::size_t from,
                                std::vector<Capture>& captures, Next next) const {
    if (part == parts_.size()) return next(from);
    parts_[part]->match(elements, from, captures,
                        [&](std::size_t end) { matchFrom(part + 1, elements, end, captures, next); });
}

void OrMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures, Next next) const {
    for (const MatcherPointer& alternative : alternatives_) alternative->match(elements, from, captures, next);
}

RepeatMatcher::RepeatMatcher(MatcherPointer match, std::optional<std::size_t> min, std::optional<std::size_t> max)
    : match_(std::move(match)),
      single_(dynamic_cast<const SingleElementMatcher*>(match_.get())),
      min_(min),
      max_(max) {}

void RepeatMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures,
                          Next next) const {
    if (!single_) return matchFrom(0, elements, from, captures, next);
    // A loop, since a long run of elements would make a deep recursion.
    for (std::size_t count = 0;; ++count) {
        if (count >= min_.value_or(0)) next(from + count);
        if (count == max_ || from + count >= elements.size() || !single_->test(elements[from + count])) return;
    }
}

void RepeatMatcher::matchFrom(std::size_t count, const ElementList& elements, std::size_t from,
                              std::vector<Capture>& captures, Next next) const {
    if (count >= min_.value_or(0)) next(from);
    if (count == max_ || from >= elements.size()) return;
    match_->match(elements, from, captures, [&](std::size_t end) {
        if (end > from) matchFrom(count + 1, elements, end, captures, next);
    });
}

void GroupMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>& captures,
                         Next next) const {
    const std::size_t place = captures.size();
    if (single_) {
        if (from >= elements.size() || !single_->test(elements[from])) return;
        captures.push_back({name_, {from, 1}});
        next(from + 1);
    } else {
        captures.push_back({name_, {from, 0}});
        match_->match(elements, from, captures, [&](std::size_t end) {
            captures[place].range.length = end - from;
            next(end);
        });
    }
    captures.resize(place);
}

void SequenceStartMatcher::match(const ElementList&, std::size_t from, std::vector<Capture>&, Next next) const {
    if (from == 0) next(0);
}

bool AndMatcher::test(const Element& element) const {
    return std::all_of(all_.begin(), all_.end(), [&](const auto& matcher) { return matcher->test(element); });
}

void NotMatcher::match(const ElementList& elements, std::size_t from, std::vector<Capture>&, Next next) const {
    if (from < elements.size() && !matcher_->matchesAt(elements, from)) next(from + 1);
}

namespace pattern {

MatcherPointer seq(std::vector<MatcherPointer> parts) {
    return std::make_shared<SequenceMatcher>(std::move(parts));
}

MatcherPointer either(std::vector<MatcherPointer> alternatives) {
    return std::make_shared<OrMatcher>(std::move(alternatives));
}

MatcherPointer repeat(MatcherPointer match, std::optional<std::size_t> min, std::optional<std::size_t> max) {
    return std::make_shared<RepeatMatcher>(std::move(match), min, max);
}

MatcherPointer group(MatcherPointer match, std::u16string_view name) {
    return std::make_shared<GroupMatcher>(std::move(match), name);
}

SingleMatcherPointer test(std::function<bool(const Element&)> test) {
    return std::make_shared<ElementMatcher>(std::move(test));
}

SingleMatcherPointer all(std::vector<SingleMatcherPointer> all) {
    return std::make_shared<AndMatcher>(std::move(all));
}

SingleMatcherPointer anyElement() {
    return test([](const Element&) { return true; });
}

SingleMatcherPointer type(std::u16string_view type) {
    return test([type = std::u16string(type)](const Element& e) { return e.value.is(Attribute::type, type); });
}

SingleMatcherPointer has(Attribute key) {
    return test([key](const Element& e) { return e.value.has(key); });
}

SingleMatcherPointer emptyValue() {
    return test([](const Element& e) { return e.value.isEmpty(); });
}

SingleMatcherPointer someText() {
    return test([](const Element& e) { return e.value.isEmpty() && !trimmed(e.text()).empty(); });
}

SingleMatcherPointer possibleVariableNamePart() {
    return test([](const Element& e) {
        if (e.text() == u"x" || e.text() == u"X") return true;
        const auto& runs = e.attributedText.runs();
        return std::all_of(runs.begin(), runs.end(), [](const AttributedText::Run& run) {
            return run.type == RunType::none || run.type == RunType::number || run.type == RunType::unit ||
                   run.type == RunType::variable || run.type == RunType::function;
        });
    });
}

MatcherPointer gap() {
    return repeat(emptyValue());
}

}  // namespace pattern

}  // namespace vemo
