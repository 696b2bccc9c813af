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
    prepareNext(context);
    LineResultPointer found;
    results->any([&](const LineResultPointer& result) {
        if (result->holdsIn(context)) found = result;
        return found != nullptr;
    });
    return found;
}

template <class Prepare>
void CacheManager::prepare(std::size_t distance, Prepare&& prepare) const {
    const Results* results = cache_.ahead(distance);
    if (!results) return;
    results->any([&](const LineResultPointer& result) {
        prepare(*result);
        return false;
    });
}

// Asks for the memory that the look-ups of the lines behind this one will probably read. In a large document a line
// waits for its result, and then for what that leads to: so the one is asked for some lines before the other.
void CacheManager::prepareNext(const Context& context) const {
    constexpr std::size_t step = 3;
    prepare(2 * step, [](const LineResult& result) { result.prefetchResult(); });
    prepare(step, [&](const LineResult& result) { result.prefetchParts(context.data()); });
}

}  // namespace vemo
