// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/engine.h"

namespace vemo::cli {

// Completes the words of a line from the engine's vocabulary, from what the document says already, and from places.
class Completer {
public:
    struct Choice {
        std::u16string text;
        std::string kind;  // such as "unit"; empty: not known
    };
    struct Answer {
        std::size_t typed = 0;     // units before the cursor that the completions begin with
        std::u16string insertion;  // what all of them begin with, to take the place of those; empty: nothing is gained
        std::vector<Choice> choices;  // best first
    };
    // The kinds of words of the engine's.
    using KindsOf = std::function<std::vector<std::string>(const std::vector<std::u16string>& words)>;

    Completer(std::shared_ptr<const QuickTypeEngine> quickType, KindsOf kindsOf)
        : quickType_(std::move(quickType)), kindsOf_(std::move(kindsOf)) {}

    // Learns the document's names, words and conversions in place of those of an earlier one.
    void learn(const VemoEngine::Result& document);
    // For the text in front of the cursor.
    Answer complete(std::u16string_view text) const;

private:
    std::vector<Choice> choicesFor(std::u16string_view line, std::size_t start, bool& all) const;

    std::shared_ptr<const QuickTypeEngine> quickType_;
    KindsOf kindsOf_;
    std::vector<Choice> words_;  // of the document
};

// An answer with those of the choices that begin with the last units of the line, from `start`, in any case.
Completer::Answer answerAmong(std::u16string_view line, std::size_t start, std::vector<Completer::Choice> choices);

}  // namespace vemo::cli
