// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vemo {

// The SHA-1 digest in hexadecimal. It tells names apart, and protects nothing.
std::string sha1Hex(std::string_view bytes);

}  // namespace vemo
