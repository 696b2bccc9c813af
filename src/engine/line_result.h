// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "engine/context_map.h"
#include "platform/function_ref.h"

namespace vemo {

// What one line gave. Documents keep one for every line, so what can be is packed into one block of text.
class LineResult {
public:
    // `dependencies` are the entries that the line read, with what it saw.
    LineResult(Value value, ContextMap updates, const ContextMap& dependencies, const AttributedText& text,
               const FormattedValue& formatted, const QuickTypeData& quickType, std::u16string_view extensionsLog);

    const Value& value() const { return value_; }           // without attributes when the line yields nothing
    const ContextMap& updates() const { return updates_; }  // entries the line set

    // True when the line would read the same there: what it saw must be unchanged, and what was absent still be so.
    bool holdsIn(const Context& context) const;
    void addDependenciesTo(ContextMap& dependencies) const;
    // The entries it saw, and the keys under which it saw none.
    const ContextMap& seen() const { return seen_; }
    void absentKeys(FunctionRef<void(std::u16string_view)> visit) const;

    std::u16string_view text() const { return {texts_.get(), textLength_}; }
    AttributedText attributedText() const;
    FormattedValue formattedValue() const;
    QuickTypeData quickTypeData() const;
    std::u16string_view extensionsLog() const;

    // For a look at the result, and at `data` for it, soon: three steps, each some time after the one before.
    void prefetchResult() const {
        constexpr std::size_t counters = 16;  // of the shared pointer, in front
        prefetch(reinterpret_cast<const char*>(this) - counters, counters + sizeof(LineResult));
    }
    void prefetchParts() const {
        prefetch(texts_.get(), 64);
        updates_.prefetchTop();
        seen_.prefetchTop();
    }
    void prefetchPlaces(const ContextMap& data) const;

private:
    class Reader;

    // What every look at a cached line reads comes first.
    std::unique_ptr<char16_t[]> texts_;  // the line, then the absent keys, log, runs, results, tokens and expressions
    std::uint32_t textLength_;
    Value value_;
    ContextMap updates_;
    ContextMap seen_;
};

using LineResultPointer = std::shared_ptr<const LineResult>;

}  // namespace vemo
