// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "engine/context_map.h"

namespace vemo {

// What one line gave. Documents keep one for every line, so the texts are packed into one block.
class LineResult {
public:
    LineResult(Value value, ContextMap updates, ContextMap dependencies, const AttributedText& text,
               const FormattedValue& formatted, const QuickTypeData& quickType, std::u16string_view extensionsLog);

    const Value& value() const { return value_; }  // without attributes when the line yields nothing
    const ContextMap& updates() const { return updates_; }            // entries the line set
    const ContextMap& dependencies() const { return dependencies_; }  // entries the line read, with what it saw

    std::u16string_view text() const { return {texts_.get(), textLength_}; }
    AttributedText attributedText() const;
    FormattedValue formattedValue() const;
    QuickTypeData quickTypeData() const;
    std::u16string_view extensionsLog() const;

    // For many results to be looked at soon: brings the texts closer to the processor.
    void prefetchTexts() const { __builtin_prefetch(texts_.get()); }

private:
    class Reader;

    // What every look at a cached line reads comes first.
    std::unique_ptr<char16_t[]> texts_;  // the line, then its runs, results, tokens, expressions and log
    std::uint32_t textLength_;
    Value value_;
    ContextMap updates_;
    ContextMap dependencies_;
};

using LineResultPointer = std::shared_ptr<const LineResult>;

}  // namespace vemo
