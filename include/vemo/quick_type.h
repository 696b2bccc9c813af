// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

// A completion as it is shown; a larger weight is better.
struct QuickTypeHint {
    std::u16string string;
    int weight = 0;

    friend bool operator==(const QuickTypeHint&, const QuickTypeHint&) = default;
};

// Completes the word being typed, in any case: at most five hints, best first. Registered hints of equal weight are in
// the order of their letters, whatever their case. Asking is safe from several threads, registering is not.
class QuickTypeEngine {
public:
    static constexpr std::size_t maxElementsInArray = 5;

    struct Context {
        std::u16string string;  // what was typed so far; empty asks for the best of all
        // Only additional hints are offered then.
        bool ignoreRegisteredHints = false;
    };

    QuickTypeEngine();
    ~QuickTypeEngine();
    QuickTypeEngine(QuickTypeEngine&&) noexcept;
    QuickTypeEngine& operator=(QuickTypeEngine&&) noexcept;

    // A hint with the string of an earlier one takes its place.
    void registerHint(std::u16string_view string, int weight);
    void registerHint(const QuickTypeHint& hint) { registerHint(hint.string, hint.weight); }
    void registerHints(const std::vector<QuickTypeHint>& hints);

    // Additional hints come after registered ones of the same weight, in the order given; one with the string of a
    // registered hint replaces it in this answer.
    std::vector<QuickTypeHint> hintsFor(const Context& context,
                                        const std::vector<QuickTypeHint>& additionalHints = {}) const;
    // The same with additional tokens that all have one weight.
    std::vector<QuickTypeHint> hintsFor(std::u16string_view text, const std::vector<std::u16string>& additionalTokens,
                                        int weight) const;

private:
    struct Trie;

    std::unique_ptr<Trie> trie_;
};

}  // namespace vemo
