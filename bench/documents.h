// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vemo::bench {

// Documents whose lines are all different, so that no line is served from a cache the first time.

inline std::u16string digits(std::size_t number) {
    const std::string text = std::to_string(number);
    return {text.begin(), text.end()};
}

// (8120.5 - 311) / 47
inline std::u16string arithmeticLine(std::size_t i) {
    return std::u16string(u"(").append(digits(8120 + i)) + u".5 - " + digits(311 + i % 977) + u") / " +
           digits(47 + i % 89);
}

// 1234.5 cm to inch
inline std::u16string unitLine(std::size_t i) {
    return digits(1234 + i) + u".5 cm to inch";
}

template <class Line>
std::u16string document(std::size_t lines, Line line) {
    std::u16string text;
    for (std::size_t i = 0; i < lines; ++i) text += line(i) + u"\n";
    return text;
}

}  // namespace vemo::bench
