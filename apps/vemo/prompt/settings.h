// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "prompt/session.h"

namespace vemo::cli {

// Changes a setting of the prompt, named in "precision 6", or shows it, or all of them.
void changeSetting(Session& session, const std::string& words);

std::vector<std::string> settingNames();

}  // namespace vemo::cli
