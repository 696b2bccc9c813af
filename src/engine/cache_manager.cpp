// SPDX-License-Identifier: MIT
#include "engine/cache_manager.h"

#include <algorithm>

namespace vemo {

namespace {

// What was seen as present must be there unchanged; what was seen as absent must still be absent.
bool holds(const ContextMap& dependencies, const Context& context) {
    return dependencies.all([&](const auto& entry) {
        const IsEquatable* present = context.find(entry.key());
        return present ? present->isEqual(entry.value()) : entry.value().isEmptyValue();
    });
}

}  // namespace

void CacheManager::add(LineResultPointer entry) {
    auto* results = cache_.obtain(entry->text());
    if (!results) return;
    if (results->newest) {
        if (!results->older) results->older = std::make_unique<std::array<LineResultPointer, cacheLevel - 1>>();
        std::rotate(results->older->begin(), results->older->end() - 1, results->older->end());
        results->older->front() = std::move(results->newest);
    }
    results->newest = std::move(entry);
}

LineResultPointer CacheManager::lookup(std::u16string_view text, const Context& context) {
    const auto* results = cache_.find(text);
    if (!results) return nullptr;
    if (holds(results->newest->dependencies(), context)) return results->newest;
    if (!results->older) return nullptr;
    for (const LineResultPointer& entry : *results->older)
        if (entry && holds(entry->dependencies(), context)) return entry;
    return nullptr;
}

void CacheManager::prefetch(std::u16string_view document, std::span<const TextRange> lines,
                            const Context& context) const {
    std::array<std::size_t, mostPrefetched> hashes;
    std::array<const LineResult*, mostPrefetched> results;
    const std::size_t count = std::min(lines.size(), mostPrefetched);
    for (std::size_t i = 0; i < count; ++i) cache_.prefetch(hashes[i] = TextHash{}(lines[i].in(document)));
    std::size_t known = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Results* entry = cache_.probable(hashes[i]);
        if (!entry) continue;
        results[known++] = entry->newest.get();
        __builtin_prefetch(results[known - 1]);
    }
    const std::span found(results.data(), known);
    for (const LineResult* result : found) {
        result->prefetchTexts();
        result->updates().prefetchRoot();
        result->dependencies().prefetchRoot();
    }
    for (const LineResult* result : found) {
        result->updates().prefetchEntries();
        result->dependencies().prefetchEntries();
    }
    constexpr unsigned levels = 4;  // of a map of a million entries; the upper ones are at hand
    for (unsigned level = 1; level < levels; ++level)
        for (const LineResult* result : found) context.data().prefetchPlaces(result->updates(), level);
}

}  // namespace vemo
