// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vemo::session {

// The name that takes the fewest changes of a letter, whatever the case; the first of several.
std::string nearest(std::string_view name, const std::vector<std::string>& names);

}  // namespace vemo::session
