// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "online/geo_names_service.h"
#include "platform/cache.h"

namespace vemo {

// Looks places up in the background, those of the latest calculation only, and remembers the answers. Thread-safe.
class GeoNamesManager : public std::enable_shared_from_this<GeoNamesManager> {
public:
    using Completion = std::function<void(std::optional<std::u16string> zone)>;

    GeoNamesManager(Scheduler& scheduler, std::shared_ptr<GeoNamesService> service);

    // A new calculation has begun: look-ups of earlier ones that have not started are dropped.
    void beginBatch();
    // What is known of a place: nothing, or its zone, empty for a place that has none.
    std::optional<std::u16string> known(std::u16string_view name);
    // The completion runs on another thread.
    void lookup(const std::u16string& name, Completion completion);

private:
    static constexpr std::size_t rememberedPlaces = 4096;

    Scheduler& scheduler_;
    std::shared_ptr<GeoNamesService> service_;
    std::mutex mutex_;
    Cache<std::u16string> cache_{rememberedPlaces};
    std::uint64_t batchCounter_ = 0;
};

}  // namespace vemo
