// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "evaluation/structure_evaluators.h"
#include "quicktype/quick_type_collector.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

// A named operation on the values written after its name.
class Function {
public:
    virtual ~Function() = default;
    // Nothing when the arguments don't suit the function. Never fails: what can't be computed is not-a-number.
    virtual std::optional<Value> evaluate(const std::vector<Value>& values, Context& context) const = 0;
    // True when a sign between the name and a number belongs to the number: "abs -5", but not "sum -5".
    virtual bool takesSigns() const { return false; }
};

class FunctionOfNumbers : public Function {
public:
    bool takesSigns() const final { return true; }
};

class FunctionManager {
public:
    // The words of phrases are offered as completions to `hints`, unless it is null.
    explicit FunctionManager(StringRangeDetector& stringRangeDetector, QuickTypeCollector* hints = nullptr)
        : phraseDetector_(stringRangeDetector), hints_(hints) {}

    // Replaces an earlier function with the same id; its phrases stay.
    void add(std::u16string id, const std::vector<std::u16string>& phrases, std::shared_ptr<const Function> function);
    const Function* function(std::u16string_view id) const;
    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }

private:
    PhraseDetector<std::u16string> phraseDetector_;
    QuickTypeCollector* hints_;
    TextMap<std::shared_ptr<const Function>> evaluators_;
};

// Applies functions to the values behind their names.
class FunctionExpressionEvaluator : public Evaluator {
public:
    explicit FunctionExpressionEvaluator(const FunctionManager& functionManager)
        : functionManager_(functionManager), functionExpressionMatcher_(functionExpressionMatcher()) {}
    std::u16string_view name() const override { return u"FunctionExpressionEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    const FunctionManager& functionManager_;
    FinderMatcher functionExpressionMatcher_;
};

}  // namespace vemo
