// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

// What a completion names. `script` is what a user script defined, whatever it is.
enum class CompletionKind : std::uint8_t { operatorWord, unit, currency, function, variable, place, script };

// The kind in texts for programs, such as "unit".
std::u16string_view completionKindName(CompletionKind kind);

// A phrase of one or several words, as it is written; a larger weight is better.
struct Completion {
    std::u16string text;
    CompletionKind kind = CompletionKind::operatorWord;
    int weight = 0;

    friend bool operator==(const Completion&, const Completion&) = default;
};

// The vocabulary of an engine with its kinds, for an application that shows more than the five completions of a
// `QuickTypeEngine`. Asking is safe from several threads.
class Completions {
public:
    // Of several completions of one text and kind, the one with the largest weight stays.
    explicit Completions(std::vector<Completion> all);

    // At most `most` completions that begin with what was typed, in any case; where nothing was typed, the best of all.
    // One that was typed in full comes first, then the best; those of equal weight are in the order of their letters.
    std::vector<Completion> startingWith(std::u16string_view typed, std::size_t most) const;
    std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        std::u16string key;  // in lower case
        Completion completion;
    };

    std::vector<Entry> entries_;  // by their keys
};

}  // namespace vemo
