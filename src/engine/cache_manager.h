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

    CacheManager() : cache_(cachedLines) {}

    void add(LineResultPointer entry);
    // The newest result whose dependencies all hold in the context; null without one.
    LineResultPointer lookup(std::u16string_view text, const Context& context);
    void clear() { cache_.clear(); }
    void setEnabled(bool enabled) { cache_.setEnabled(enabled); }

private:
    static constexpr std::size_t cachedLines = 1u << 17;  // of each of the cache's two generations

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
    };

    template <class Prepare>
    void prepare(std::size_t distance, Prepare&& prepare) const;
    void prepareNext(const Context& context) const;

    Cache<Results, KeyOfResults> cache_;
};

}  // namespace vemo
