// SPDX-License-Identifier: MIT
#pragma once

namespace vemo {

class Localizer;
class OperationCollection;
class OperatorCollection;
class UnitConverter;

// Fills the collections with the built-in operators and their operations.
void registerOperators(OperatorCollection& operators, const Localizer& localizer);
void registerOperations(OperationCollection& operations, const UnitConverter& unitConverter);

}  // namespace vemo
