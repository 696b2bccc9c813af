// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "session/online.h"
#include "vemo/engine.h"

namespace vemo::session {

// Takes the rates of a file; says what is wrong with it, and nothing where it was taken. An empty name, or a URL, which
// the engine fetches from, needs nothing done.
std::string takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& source);

}  // namespace vemo::session
