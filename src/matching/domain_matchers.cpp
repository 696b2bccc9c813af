// SPDX-License-Identifier: MIT
#include "matching/domain_matchers.h"

namespace vemo {

using namespace pattern;

namespace {

SingleMatcherPointer decimalWithoutUnit() {
    return test([](const Element& e) { return e.value.has(Attribute::decimal) && !e.value.has(Attribute::unit); });
}

// A unit word on its own, or the name of a numeral system, which is attached to numbers like a unit.
SingleMatcherPointer unitWithoutDecimal() {
    return test([](const Element& e) {
        return (e.value.has(Attribute::unit) || e.value.has(Attribute::nsystem)) && !e.value.has(Attribute::decimal);
    });
}

SingleMatcherPointer prefixedByParenthesis() {
    return test([](const Element& e) { return trimmed(e.text()).starts_with(u'('); });
}

SingleMatcherPointer functionNamed(std::u16string_view name) {
    return test([name](const Element& e) { return e.value.is(Attribute::function, name); });
}

// The multiplication letter before an assignment sign is a name, never a compound assignment.
SingleMatcherPointer assignmentOperation() {
    return test(
        [](const Element& e) { return e.value.has(Attribute::operation) && e.text() != u"x" && e.text() != u"X"; });
}

SingleMatcherPointer quantity() {
    return all({has(Attribute::decimal), has(Attribute::unit)});
}

// The first part, then any number of further ones with spaces between.
MatcherPointer run(MatcherPointer first, MatcherPointer further) {
    return seq({std::move(first), repeat(seq({gap(), std::move(further)}))});
}

}  // namespace

SingleMatcherPointer operationMatcher(std::optional<std::u16string_view> operationId) {
    return test([operationId](const Element& e) {
        return operationId ? e.value.is(Attribute::operation, *operationId) : e.value.has(Attribute::operation);
    });
}

FinderMatcher decimalFollowedByUnitMatcher() {
    return FinderMatcher(seq({group(decimalWithoutUnit(), u"value"), gap(), group(unitWithoutDecimal(), u"unit")}));
}

FinderMatcher unitFollowedByDecimalMatcher() {
    return FinderMatcher(seq({group(unitWithoutDecimal(), u"unit"), gap(), group(decimalWithoutUnit(), u"value")}));
}

FinderMatcher unitAroundDecimalMatcher() {
    return FinderMatcher(seq({group(unitWithoutDecimal(), u"unit1"), gap(), group(decimalWithoutUnit(), u"decimal"),
                              gap(), group(unitWithoutDecimal(), u"unit2")}));
}

FinderMatcher convertableValueSequenceMatcher() {
    return FinderMatcher(run(group(quantity(), u"value"), group(quantity(), u"value")));
}

FinderMatcher explicitUnitConversionMatcher() {
    return FinderMatcher(seq({group(has(Attribute::unit), u"from"), gap(), group(operationMatcher(u"in"), u"op"), gap(),
                              group(has(Attribute::unit), u"to")}));
}

FinderMatcher scaledExpressionMatcher() {
    return FinderMatcher(
        seq({group(has(Attribute::decimal), u"value"), gap(), group(has(Attribute::scale), u"scale")}));
}

FinderMatcher valueWithParenthesesSequenceMatcher() {
    return FinderMatcher(run(group(has(Attribute::decimal), u"value"),
                             group(all({has(Attribute::decimal), prefixedByParenthesis()}), u"value")));
}

FinderMatcher functionExpressionMatcher() {
    return FinderMatcher(run(group(has(Attribute::function), u"function"), group(has(Attribute::decimal), u"values")));
}

FinderMatcher timePrefixedByTimeZoneMatcher() {
    return FinderMatcher(seq({group(has(Attribute::timeZone), u"timezone"), gap(),
                              group(all({has(Attribute::date), has(Attribute::timeZone)}), u"time")}));
}

FinderMatcher geoNameSequenceMatcher() {
    return FinderMatcher(either({seq({group(someText(), u"text"), functionNamed(u"time")}),
                                 seq({operationMatcher(u"in"), group(someText(), u"text")})}));
}

FinderMatcher assignmentSequenceMatcher() {
    return FinderMatcher(
        seq({group(repeat(possibleVariableNamePart()), u"varnameparts"),
             repeat(group(assignmentOperation(), u"operation"), std::nullopt, 1),
             group(has(Attribute::assignment), u"assignment"), group(repeat(anyElement(), 1), u"expression")}));
}

}  // namespace vemo
