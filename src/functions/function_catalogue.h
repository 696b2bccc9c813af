// SPDX-License-Identifier: MIT
#pragma once

namespace vemo {

class FunctionManager;
class Localizer;
class OperationCalculator;
class UnitConverter;

// Registers the built-in functions.
void registerFunctions(FunctionManager& functions, const Localizer& localizer,
                       const OperationCalculator& operationCalculator, const UnitConverter& unitConverter);

}  // namespace vemo
