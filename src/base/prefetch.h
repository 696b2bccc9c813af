// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vemo {

// Asks for the memory at `address`, which need not be valid, to be brought closer to the processor.
inline void prefetch(const void* address) {
    __builtin_prefetch(address);
    asm volatile("");  // or GCC takes functions that do nothing else to have no effect, and drops calls to them
}

// The same for what begins there and ends less than `size` bytes behind it.
inline void prefetch(const void* address, std::size_t size) {
    constexpr std::size_t cacheLine = 64;
    const auto* bytes = static_cast<const char*>(address);
    for (std::size_t at = 0; at < size; at += cacheLine) prefetch(bytes + at);
    prefetch(bytes + size - 1);
}

}  // namespace vemo
