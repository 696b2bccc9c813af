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

// Completes the words of a line from what the document says already and from the engine's vocabulary.
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
    using Vocabulary = std::function<std::shared_ptr<const Completions>()>;

    // `vocabulary` is called when the vocabulary is needed first.
    explicit Completer(Vocabulary vocabulary) : build_(std::move(vocabulary)) {}

    // Learns the document's names, words and conversions in place of those of an earlier one.
    void learn(const VemoEngine::Result& document);
    // For the text in front of the cursor.
    Answer complete(std::u16string_view text);

private:
    std::vector<Choice> choicesFor(std::u16string_view line, std::size_t start) const;

    Vocabulary build_;
    std::shared_ptr<const Completions> vocabulary_;
    std::vector<Choice> words_;  // of the document
};

// An answer with the choices that begin, in any case, with the units of the line from `start` on.
Completer::Answer answerAmong(std::u16string_view line, std::size_t start, std::vector<Completer::Choice> choices);

}  // namespace vemo::cli
