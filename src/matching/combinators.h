// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "matching/matcher.h"

namespace vemo {

// One part after the other, in every combination.
class SequenceMatcher : public Matcher {
public:
    explicit SequenceMatcher(std::vector<MatcherPointer> parts) : parts_(std::move(parts)) {}
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;

private:
    void matchFrom(std::size_t part, const ElementList&, std::size_t from, std::vector<Capture>&, Next) const;
    std::vector<MatcherPointer> parts_;
};

// The matches of every alternative, in order.
class OrMatcher : public Matcher {
public:
    explicit OrMatcher(std::vector<MatcherPointer> alternatives) : alternatives_(std::move(alternatives)) {}
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;

private:
    std::vector<MatcherPointer> alternatives_;
};

// `min` to `max` repetitions, fewer before more. An inner pattern that matches nothing ends the repetition.
class RepeatMatcher : public Matcher {
public:
    explicit RepeatMatcher(MatcherPointer match, std::optional<std::size_t> min = std::nullopt,
                           std::optional<std::size_t> max = std::nullopt);
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;

private:
    void matchFrom(std::size_t count, const ElementList&, std::size_t from, std::vector<Capture>&, Next) const;
    MatcherPointer match_;
    const SingleElementMatcher* single_;
    std::optional<std::size_t> min_;
    std::optional<std::size_t> max_;
};

// Records under a name what the inner pattern covers, before the groups inside it.
class GroupMatcher : public Matcher {
public:
    GroupMatcher(MatcherPointer match, std::u16string_view name)
        : match_(std::move(match)), single_(dynamic_cast<const SingleElementMatcher*>(match_.get())), name_(name) {}
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;

private:
    MatcherPointer match_;
    const SingleElementMatcher* single_;  // most groups are one element, at which most lists fail
    std::u16string_view name_;
};

// An empty match at the start of the list.
class SequenceStartMatcher : public Matcher {
public:
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;
};

// One element for which a test holds: the domain's single-element patterns are made of these.
class ElementMatcher : public SingleElementMatcher {
public:
    explicit ElementMatcher(std::function<bool(const Element&)> test) : test_(std::move(test)) {}
    bool test(const Element& element) const override { return test_(element); }

private:
    std::function<bool(const Element&)> test_;
};

using SingleMatcherPointer = std::shared_ptr<const SingleElementMatcher>;

// One element that every pattern accepts.
class AndMatcher : public SingleElementMatcher {
public:
    explicit AndMatcher(std::vector<SingleMatcherPointer> all) : all_(std::move(all)) {}
    bool test(const Element& element) const override;

private:
    std::vector<SingleMatcherPointer> all_;
};

// One element at which the pattern does not match.
class NotMatcher : public Matcher {
public:
    explicit NotMatcher(MatcherPointer matcher) : matcher_(std::move(matcher)) {}
    void match(const ElementList&, std::size_t from, std::vector<Capture>&, Next) const override;

private:
    MatcherPointer matcher_;
};

// Short forms for writing patterns down.
namespace pattern {

MatcherPointer seq(std::vector<MatcherPointer> parts);
MatcherPointer either(std::vector<MatcherPointer> alternatives);
MatcherPointer repeat(MatcherPointer match, std::optional<std::size_t> min = std::nullopt,
                      std::optional<std::size_t> max = std::nullopt);
MatcherPointer group(MatcherPointer match, std::u16string_view name);
SingleMatcherPointer test(std::function<bool(const Element&)> test);
SingleMatcherPointer all(std::vector<SingleMatcherPointer> all);

SingleMatcherPointer anyElement();
SingleMatcherPointer type(std::u16string_view type);  // the value's "type" is this
SingleMatcherPointer has(Attribute key);              // the value has the attribute
SingleMatcherPointer emptyValue();                    // plain text, comments, headers, labels
SingleMatcherPointer someText();                      // the same, with more than white space
SingleMatcherPointer possibleVariableNamePart();      // numbers, units, variables, functions, plain text, the letter x
MatcherPointer gap();                                 // any number of elements without a value

}  // namespace pattern

}  // namespace vemo
