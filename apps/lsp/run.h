// SPDX-License-Identifier: MIT
#pragma once

#include "lsp/settings.h"

namespace vemo::lsp {

// Serves the client on standard input and output until it is done, and gives the exit status.
int run(const Settings& settings);

}  // namespace vemo::lsp
