// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "vemo/environment.h"

namespace vemo::session {

bool isUrl(const std::string& source);

// What kept rates or a place from coming, in a line for people.
std::string problemText(const OnlineProblem& problem);

}  // namespace vemo::session
