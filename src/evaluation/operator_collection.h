// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/cache.h"
#include "scanning/words/completion_collector.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

// A binary operation's name: how it is written and how tightly it binds (higher binds tighter).
struct Operator {
    std::u16string id;
    std::vector<std::u16string> phrases;
    std::vector<std::u16string> symbols;
    int priority = 0;
};

class OperatorCollection {
public:
    // Phrases are offered as completions to `hints`, unless it is null.
    explicit OperatorCollection(StringRangeDetector& stringRangeDetector, CompletionCollector* hints = nullptr)
        : phraseDetector_(stringRangeDetector), hints_(hints) {}

    void add(Operator op);
    const std::vector<std::shared_ptr<const Operator>>& operators() const { return operators_; }
    // 0 when the id is not registered.
    int priority(std::u16string_view id) const;
    // The operator that is written so; null without one.
    const Operator* withSymbol(std::u16string_view symbol) const;
    bool isSymbol(std::u16string_view symbol) const { return withSymbol(symbol) != nullptr; }
    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }

private:
    PhraseDetector<std::u16string> phraseDetector_;
    CompletionCollector* hints_;
    std::vector<std::shared_ptr<const Operator>> operators_;
    TextMap<std::shared_ptr<const Operator>> operatorById_;
    TextMap<std::shared_ptr<const Operator>> operatorBySymbol_;
};

}  // namespace vemo
