// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "vemo/engine.h"

namespace vemo::session {

bool isUrl(const std::string& source);

// Takes the rates of a file; says what is wrong with it, and nothing where it was taken. An empty name, or a URL, which
// the engine fetches from, needs nothing done.
std::string takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& source);

// What kept rates or a place from coming, in a line for people.
std::string problemText(const OnlineProblem& problem);

}  // namespace vemo::session
