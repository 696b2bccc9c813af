// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_collection.h"

namespace vemo {

class OperationCollection;
class UnitConverter;

// The percentage meanings of +, -, * and /, to be tried before the plain operations.
std::shared_ptr<const Operation> percentageAdditionOperation();
std::shared_ptr<const Operation> percentageSubtractionOperation();
std::shared_ptr<const Operation> percentageMultiplicationOperation();
std::shared_ptr<const Operation> divisionByPercentageOperation();
// "5% * $200", where the right operand has a unit of its own.
std::shared_ptr<const Operation> multiplicationByPercentageOperation();

// True for the phrases, which are calculated before other operators where the usual order gives nothing:
// "$50 + 20% of $30".
bool isPercentagePhrase(std::u16string_view operatorId);

// Registers the operations of the percentage phrases.
void registerPercentagePhrases(OperationCollection& operations, const UnitConverter& unitConverter);

}  // namespace vemo
