// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "base/cache.h"
#include "online/geo_names_service.h"
#include "online/pending_work.h"

namespace vemo {

// Looks places up in the background, of each asker those of the latest calculation only, and remembers the answers.
// Thread-safe.
class GeoNamesManager : public std::enable_shared_from_this<GeoNamesManager> {
public:
    using Completion = std::function<void(std::optional<std::u16string> zone)>;

    // That a place has no zone is believed for so long: the server may have been out of reach. `pending` counts the
    // look-ups under way, until their completion has run.
    GeoNamesManager(Scheduler scheduler, std::shared_ptr<GeoNamesService> service, PendingWork pending = {},
                    std::chrono::steady_clock::duration believedFor = std::chrono::minutes(5));

    // A new calculation has begun: look-ups of the asker's earlier ones that have not started are dropped. An asker is
    // a document, by any number.
    void beginBatch(std::uint64_t asker = 0);
    // What is known of a place: nothing, or its zone, empty for a place that has none.
    std::optional<std::u16string> known(std::u16string_view name);
    // The completion runs on another thread; never, when the place is being asked for already, or in vain because a
    // newer calculation began.
    void lookup(const std::u16string& name, Completion completion);

private:
    struct Answer {
        std::u16string zone;  // empty: none
        std::chrono::steady_clock::time_point time;
    };

    static constexpr std::size_t rememberedPlaces = 4096;
    static constexpr std::size_t longestPlace = 100;  // nobody is asked for a longer one

    Scheduler scheduler_;
    std::shared_ptr<GeoNamesService> service_;
    PendingWork pending_;
    std::chrono::steady_clock::duration believedFor_;
    std::mutex mutex_;
    TextCache<Answer> cache_{rememberedPlaces};
    // The places without an answer yet, each with the batch that wants it.
    struct Question {
        std::uint64_t asker;
        std::uint64_t batch;
        bool sent;
    };
    bool isLatest(const Question& question) const;

    std::map<std::u16string, Question> asked_;
    static constexpr std::size_t rememberedAskers = 256;
    std::map<std::uint64_t, std::uint64_t> latest_;  // batches by their askers
    std::uint64_t asker_ = 0;                        // whose calculation is under way
    std::uint64_t batchCounter_ = 0;
};

}  // namespace vemo
