// SPDX-License-Identifier: MIT
#pragma once

namespace vemo {

class FunctionManager;
class Localizer;
class Reduction;
class UnitConverter;

// Registers the built-in functions.
void registerFunctions(FunctionManager& functions, const Localizer& localizer, const Reduction& reduction,
                       const UnitConverter& unitConverter);

}  // namespace vemo
