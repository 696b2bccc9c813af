// SPDX-License-Identifier: MIT
#include "engine/cache_manager.h"

#include <algorithm>

namespace vemo {

void CacheManager::add(LineResultPointer entry) {
    Part& part = partFor(entry->text());
    auto* results = part.obtain(entry->text());
    if (!results) return;
    part.charge(entry->bytes());
    if (results->newest) {
        if (!results->older) results->older = std::make_unique<std::array<LineResultPointer, cacheLevel - 1>>();
        std::rotate(results->older->begin(), results->older->end() - 1, results->older->end());
        results->older->front() = std::move(results->newest);
    }
    results->newest = std::move(entry);
}

LineResultPointer CacheManager::lookup(std::u16string_view text, const Context& context) {
    const auto* results = partFor(text).find(text);
    if (!results) return nullptr;
    LineResultPointer found;
    results->any([&](const LineResultPointer& result) {
        if (result->holdsIn(context)) found = result;
        return found != nullptr;
    });
    return found;
}

}  // namespace vemo
