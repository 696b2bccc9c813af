// SPDX-License-Identifier: MIT
#include "base/sha1.h"

#include <array>
#include <bit>
#include <cstdint>

namespace vemo {

namespace {

using State = std::array<std::uint32_t, 5>;

// One block of 64 bytes.
void process(std::string_view block, State& state) {
    std::array<std::uint32_t, 80> words{};
    for (std::size_t i = 0; i < 64; ++i)
        words[i / 4] |= std::uint32_t{static_cast<unsigned char>(block[i])} << (24 - i % 4 * 8);
    for (std::size_t i = 16; i < words.size(); ++i)
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
    auto [a, b, c, d, e] = state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t mixed = i < 20   ? ((b & c) | (~b & d)) + 0x5a827999
                                    : i < 40 ? (b ^ c ^ d) + 0x6ed9eba1
                                    : i < 60 ? ((b & c) | (b & d) | (c & d)) + 0x8f1bbcdc
                                             : (b ^ c ^ d) + 0xca62c1d6;
        const std::uint32_t next = std::rotl(a, 5) + mixed + e + words[i];
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    }
    const State sums{a, b, c, d, e};
    for (std::size_t i = 0; i < sums.size(); ++i) state[i] += sums[i];
}

}  // namespace

std::string sha1Hex(std::string_view bytes) {
    // The bytes are followed by a one bit, zeros up to the end of a block, and their length in bits.
    std::string padded(bytes);
    padded += '\x80';
    padded.resize((padded.size() + 8 + 63) / 64 * 64);
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (std::size_t i = 0; i < 8; ++i) padded[padded.size() - 1 - i] = static_cast<char>(bits >> (8 * i) & 0xff);
    State state{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
    for (std::size_t at = 0; at < padded.size(); at += 64) process(std::string_view(padded).substr(at, 64), state);
    std::string hex;
    for (const std::uint32_t word : state)
        for (int shift = 28; shift >= 0; shift -= 4) hex += "0123456789abcdef"[word >> shift & 0xf];
    return hex;
}

}  // namespace vemo
