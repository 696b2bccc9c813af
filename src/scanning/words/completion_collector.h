// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "vemo/completions.h"

namespace vemo {

// How early a completion is offered.
namespace completion_weight {
inline constexpr int rareUnit = -1;
inline constexpr int usual = 0;
inline constexpr int function = 10;
inline constexpr int unitSymbol = 10;
inline constexpr int currencyCode = 10;
inline constexpr int commonCurrency = 15;
inline constexpr int mainCurrency = 20;
inline constexpr int conversion = 20;  // nothing is typed as often
}  // namespace completion_weight

// Receives the phrases that catalogues offer as completions; a larger weight is better.
class CompletionCollector {
public:
    virtual ~CompletionCollector() = default;
    virtual void add(std::u16string_view text, int weight, CompletionKind kind) = 0;
    virtual void addLowercased(std::u16string_view text, int weight, CompletionKind kind) = 0;
    // Every word between white space, in lower case.
    virtual void addWords(std::u16string_view phrase, int weight, CompletionKind kind) = 0;
};

}  // namespace vemo
