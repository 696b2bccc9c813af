// SPDX-License-Identifier: MIT
#include "engine/cache_manager.h"

#include <algorithm>

namespace vemo {

namespace {

// What was seen as present must be there unchanged; what was seen as absent must still be absent.
bool holds(const ContextMap& dependencies, const Context& context) {
    return dependencies.all([&](const auto& entry) {
        const IsEquatable* present = context.find(entry.first);
        return present ? present->isEqual(entry.second) : entry.second.isEmptyValue();
    });
}

}  // namespace

void CacheManager::add(LineResultPointer entry) {
    auto* entries = cache_.obtain(entry->formattedString.compoundString());
    if (!entries) return;
    std::rotate(entries->begin(), entries->end() - 1, entries->end());
    entries->front() = std::move(entry);
}

LineResultPointer CacheManager::lookup(std::u16string_view text, const Context& context) {
    if (const auto* entries = cache_.find(text)) {
        for (const LineResultPointer& entry : *entries)
            if (entry && holds(entry->dependencies, context)) return entry;
    }
    return nullptr;
}

}  // namespace vemo
