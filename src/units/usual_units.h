// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace vemo {

// The ids of the units that people convert into, those of one dimension in the order in which they are offered.
const std::vector<std::u16string_view>& usualUnits();

// Larger for what is offered earlier; 0 for all other units.
int usualRank(std::u16string_view unitId);

}  // namespace vemo
