// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "base/cache.h"
#include "records/line_result.h"

namespace vemo {

// Remembers the latest results of lines by their text, several per text for different contexts.
class CacheManager {
public:
    static constexpr std::size_t cacheLevel = 3;

    CacheManager() : cache_(cachedLines, cachedBytes), long_(cachedLines, cachedBytesOfLong) {}

    void add(LineResultPointer entry);
    // The newest result whose dependencies all hold in the context; null without one.
    LineResultPointer lookup(std::u16string_view text, const Context& context);
    void clear() {
        cache_.clear();
        long_.clear();
    }
    void setEnabled(bool enabled) {
        cache_.setEnabled(enabled);
        long_.setEnabled(enabled);
    }

private:
    // Of each of a cache's two generations.
    static constexpr std::size_t cachedLines = 1u << 17;
    static constexpr std::size_t cachedBytes = std::size_t(96) << 20;
    static constexpr std::size_t cachedBytesOfLong = std::size_t(16) << 20;
    static constexpr std::size_t longText = 128;  // UTF-16 units

    // Most texts have one result.
    struct Results {
        LineResultPointer newest;
        std::unique_ptr<std::array<LineResultPointer, cacheLevel - 1>> older;

        // The newest first; stops when `visit` returns true.
        template <class Visit>
        void any(Visit&& visit) const {
            if (visit(newest) || !older) return;
            for (const LineResultPointer& result : *older)
                if (result && visit(result)) return;
        }
    };
    struct KeyOfResults {
        explicit KeyOfResults(std::u16string_view) {}
        bool is(std::u16string_view key, const Results& results) const {
            return results.newest && results.newest->text() == key;
        }
        static std::size_t bytes(const Results& results) {
            std::size_t sum = 0;
            results.any([&](const LineResultPointer& result) {
                if (result) sum += result->bytes();
                return false;
            });
            return sum;
        }
    };

    using Part = TextCache<Results, KeyOfResults>;
    Part& partFor(std::u16string_view text) { return text.size() > longText ? long_ : cache_; }

    Part cache_;
    // Long lines hold much, and one that is typed leaves a result with each key: they push out no others.
    Part long_;
};

}  // namespace vemo
