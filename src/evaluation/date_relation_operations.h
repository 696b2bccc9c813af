// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "evaluation/operation_collection.h"
#include "scanning/dates/date_grammar.h"

namespace vemo {

class UnitConverter;
class OperatorCollection;

// The id of the operator that a word between dates stands for: "ago", "until"…
std::u16string_view dateOperatorId(DateRelation::Kind kind);
bool isDateRelation(std::u16string_view operatorId);

// These operators have no words of their own: the dates beside them tell which words they are.
void registerDateOperators(OperatorCollection& operators);
void registerDateRelations(OperationCollection& operations, const UnitConverter& unitConverter);

}  // namespace vemo
