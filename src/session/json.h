// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vemo/engine.h"

namespace vemo::session {

// One JSON object with all that is known of the document's lines. `log` is what scripts said, `problems` what kept
// rates or places from being known, `readings` the lines as they were calculated, where they are wanted.
std::string jsonText(const VemoEngine::Result& result, std::string_view log, const std::vector<std::string>& problems,
                     const std::vector<std::string>& readings = {});

}  // namespace vemo::session
