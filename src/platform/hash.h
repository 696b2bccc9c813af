// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vemo {

// The hash of a sequence, one element more (the constant of Boost's hash_combine: 2^64 over the golden ratio).
inline std::size_t combineHashes(std::size_t seed, std::size_t hash) {
    return seed ^ (hash + 0x9e3779b97f4a7c15u + (seed << 6) + (seed >> 2));
}

}  // namespace vemo
