// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vemo::priority {

// Which candidate wins where several lie over each other, from the weakest to the strongest.
inline constexpr std::int64_t multiplicationLetter = -1;
inline constexpr std::int64_t usual = 0;  // numbers, words, brackets
inline constexpr std::int64_t operatorSymbol = 10;
inline constexpr std::int64_t prefixedLiteral = 10;  // scientific and hexadecimal
inline constexpr std::int64_t labelWords = 12;       // over the units and words that they hold
inline constexpr std::int64_t fraction = 15;         // over its stroke
inline constexpr std::int64_t argumentSeparator = 16;
inline constexpr std::int64_t label = 20;
inline constexpr std::int64_t certainDate = 30;  // with a colon, or a whole numeric date
inline constexpr std::int64_t comment = 1000;    // and header

// Among candidates of one priority and length.
inline constexpr std::int64_t unitOverOperator = 1;
inline constexpr std::int64_t variable = 10;
inline constexpr std::int64_t unitOverVariable = 11;

}  // namespace vemo::priority
