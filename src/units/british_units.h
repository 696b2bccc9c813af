// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vemo {

class UnitManager;
class Localizer;
class ScaleManager;
class UnitRegistry;

// True for English as it is written where pints are imperial, such as "en_GB".
bool hasImperialMeasures(std::string_view locale);

// Gives the words pint, gallon, quart, cup, fluid ounce, gill and mpg to the imperial units, and "p" after a number to
// pence. After the units and scales.
void registerImperialMeasures(UnitRegistry& registry, ScaleManager& scales, const Localizer& localizer);

// Adds the notes for places in which a ton is that of 2,000 pounds.
void registerAmericanNotes(UnitManager& manager);

}  // namespace vemo
