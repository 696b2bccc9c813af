// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "options.h"
#include "session/listing.h"

namespace vemo::cli {

// Prints a result in the form that is asked for, remarks on its lines, what scripts said, and what kept rates or
// places from being known. `readings` are those of the lines, where they are wanted. Gives the exit status.
int present(const Options& options, const session::Layout& layout, const VemoEngine::Result& result,
            const std::string& log, const std::vector<std::string>& problems, const std::vector<std::string>& readings);

}  // namespace vemo::cli
