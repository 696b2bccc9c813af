// SPDX-License-Identifier: MIT
#pragma once

namespace vemo {

class Localizer;
class UnitRegistry;

// Registers the units beyond the first catalogue: more of its dimensions, and those of physics, kitchen and trade. Call
// it after that one, for where two units claim a phrase, the later one has it.
void registerEverydayUnits(UnitRegistry& registry, const Localizer& localizer);

}  // namespace vemo
