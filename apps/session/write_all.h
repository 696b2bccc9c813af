// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vemo::session {

// Writes everything to a file descriptor, and waits when that takes no more for now. False after a failure, which
// `errno` tells.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace vemo::session
