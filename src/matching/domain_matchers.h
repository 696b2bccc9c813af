// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "matching/combinators.h"

namespace vemo {

// The constructs that evaluators reduce, each found anywhere in a line. The comment names the groups.

FinderMatcher decimalFollowedByUnitMatcher();         // "value", "unit"
FinderMatcher unitFollowedByDecimalMatcher();         // "unit", "value"
FinderMatcher unitAroundDecimalMatcher();             // "unit1", "decimal", "unit2"
FinderMatcher convertableValueSequenceMatcher();      // "value" for each quantity of a run
FinderMatcher explicitUnitConversionMatcher();        // "from", "op", "to"
FinderMatcher scaledExpressionMatcher();              // "value", "scale"
FinderMatcher valueWithParenthesesSequenceMatcher();  // "value" for each factor
FinderMatcher functionExpressionMatcher();            // "function", "values" for each argument
FinderMatcher timePrefixedByTimeZoneMatcher();        // "timezone", "time"
FinderMatcher geoNameSequenceMatcher();               // "text"
FinderMatcher assignmentSequenceMatcher();            // "varnameparts", "operation", "assignment", "expression"

// One operator element: any, or the one with the given id.
SingleMatcherPointer operationMatcher(std::optional<std::u16string_view> operationId = std::nullopt);

}  // namespace vemo
