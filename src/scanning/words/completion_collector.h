// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vemo {

// Receives the phrases that catalogues offer as completions; a larger weight is better.
class CompletionCollector {
public:
    virtual ~CompletionCollector() = default;
    virtual void add(std::u16string_view text, int weight) = 0;
    virtual void addLowercased(std::u16string_view text, int weight) = 0;
    // Every word between white space, in lower case.
    virtual void addWords(std::u16string_view phrase, int weight) = 0;
};

}  // namespace vemo
