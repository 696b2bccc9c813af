// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "prompt/session.h"

namespace vemo::cli {

// Shows the units of a kind such as "length", or those that a unit converts to; without either, the kinds there are.
void listUnits(Session& session, const std::string& kindOrUnit);

std::vector<std::string> unitKinds();

}  // namespace vemo::cli
