// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/engine.h"

namespace vemo::cli {

// Completes the words of a line from the engine's vocabulary and from what the document says already.
class Completion {
public:
    struct Answer {
        std::size_t typed = 0;     // units before the cursor that the completions begin with
        std::u16string insertion;  // what all of them begin with, to take the place of those; empty: nothing is gained
        std::vector<std::u16string> choices;  // best first
    };

    explicit Completion(std::shared_ptr<const QuickTypeEngine> quickType) : quickType_(std::move(quickType)) {}

    // Learns the document's names, words and conversions in place of those of an earlier one.
    void learn(const VemoEngine::Result& document);
    // For the text in front of the cursor.
    Answer complete(std::u16string_view text) const;

private:
    std::shared_ptr<const QuickTypeEngine> quickType_;
    std::vector<std::u16string> words_;
};

}  // namespace vemo::cli
