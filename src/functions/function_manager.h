// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "functions/function.h"
#include "scanning/words/completion_collector.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

// The functions by id, and the phrases that name them.
class FunctionManager {
public:
    // The words of phrases are offered as completions to `hints`, unless it is null.
    explicit FunctionManager(StringRangeDetector& stringRangeDetector, CompletionCollector* hints = nullptr)
        : phraseDetector_(stringRangeDetector), hints_(hints) {}

    // Replaces an earlier function with the same id; its phrases stay. Without `offered` they are no completions.
    void add(std::u16string id, const std::vector<std::u16string>& phrases, std::shared_ptr<const Function> function,
             bool offered = true);
    const Function* function(std::u16string_view id) const;
    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }

private:
    PhraseDetector<std::u16string> phraseDetector_;
    CompletionCollector* hints_;
    TextMap<std::shared_ptr<const Function>> evaluators_;
};

}  // namespace vemo
