// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <string>

#include "engine/context_map.h"
#include "platform/cache.h"

namespace vemo {

// What one line gave.
struct LineResult {
    // What every look at a cached line reads comes first, close together.
    Value value;              // without attributes when the line yields nothing
    ContextMap updates;       // entries the line set
    ContextMap dependencies;  // entries the line read, with what it saw
    AttributedText formattedString;
    FormattedValue formattedValue;
    QuickTypeData quickTypeData;
    std::u16string extensionsLog;
};

using LineResultPointer = std::shared_ptr<const LineResult>;

// Remembers the latest results of lines by their text, several per text for different contexts.
class CacheManager {
public:
    static constexpr std::size_t cacheLevel = 3;

    CacheManager() : cache_(cachedLines) {}

    void add(LineResultPointer entry);
    // The newest result whose dependencies all hold in the context; null without one.
    LineResultPointer lookup(std::u16string_view text, const Context& context);
    void setEnabled(bool enabled) { cache_.setEnabled(enabled); }

private:
    static constexpr std::size_t cachedLines = 1u << 17;  // of each of the cache's two generations

    Cache<std::array<LineResultPointer, cacheLevel>> cache_;
};

}  // namespace vemo
