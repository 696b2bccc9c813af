// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vemo::session {

// Writes all of it to a file descriptor, and waits where it takes no more for now. False after a failure, which `errno`
// tells.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace vemo::session
