// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_collection.h"

namespace vemo {

class OperationCollection;
class UnitConverter;

// The percentage meanings of +, - and *, to be tried before the plain operations.
std::shared_ptr<const Operation> percentageAdditionOperation();
std::shared_ptr<const Operation> percentageSubtractionOperation();
std::shared_ptr<const Operation> percentageMultiplicationOperation();

// Registers the operations of the percentage phrases.
void registerPercentagePhrases(OperationCollection& operations, const UnitConverter& unitConverter);

}  // namespace vemo
