// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace vemo {

// Hash that lets maps keyed by text be searched with a view.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>{}(text); }
};

// The hash of a sequence with one element more (the constant is that of Boost's hash_combine: 2^64 over the golden
// ratio).
inline std::size_t combineHashes(std::size_t seed, std::size_t hash) {
    return seed ^ (hash + 0x9e3779b97f4a7c15u + (seed << 6) + (seed >> 2));
}

}  // namespace vemo
