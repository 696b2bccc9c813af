// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace vemo {

// A bounded memory of values by key: it holds at least the `size` entries used latest, and at most twice as many; those
// unused for longest go first, so a miss is always safe. `bytes` bounds in the same way what the entries are said to
// take. Beside it, on demand, a persistent copy of what is set, which loses nothing. Not synchronised.
template <class Key, class Value, class Hash = std::hash<Key>, class Equal = std::equal_to<>>
class Cache {
public:
    using Map = std::unordered_map<Key, Value, Hash, Equal>;

    static constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max();

    explicit Cache(std::size_t size = 4096, std::size_t bytes = unbounded) : size_(size), bytes_(bytes) {}

    // A disabled cache is empty and takes nothing.
    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) {
        enabled_ = enabled;
        if (!enabled) clear();
    }

    // Disabling it empties the persistent copy.
    void enablePersistentCache() { persistentEnabled_ = true; }
    void disablePersistentCache() {
        persistentEnabled_ = false;
        persistent_.clear();
    }
    // What was set while the persistent copy was enabled. Values that can't be copied are not kept there.
    const Map& persistentCache() const { return persistent_; }

    // The value, or null. Valid until the next call of the cache, as a search may drop other entries. The key may be of
    // any type that `Hash` and `Equal` take.
    template <class Searched>
    Value* find(const Searched& key) {
        if (!enabled_) return nullptr;
        if (const auto young = young_.entries.find(key); young != young_.entries.end()) return &young->second.value;
        const auto old = old_.entries.find(key);
        if (old == old_.entries.end()) return nullptr;
        // It was used again, so it becomes one of the young ones.
        auto node = old_.entries.extract(old);
        makeRoom();
        young_.bytes += node.mapped().bytes;
        return &young_.entries.insert(std::move(node)).position->second.value;
    }
    template <class Searched>
    bool hasEntry(const Searched& key) {
        return find(key) != nullptr;
    }

    // Stores a value, which takes so many bytes beside the entry. Without a value, removes the entry.
    void set(const Key& key, std::optional<Value> value, std::size_t bytes = 0) {
        if (!enabled_) return;
        remove(young_, key);
        remove(old_, key);
        if constexpr (std::is_copy_constructible_v<Value>) {
            if (persistentEnabled_) {
                if (value)
                    persistent_.insert_or_assign(key, *value);
                else
                    persistent_.erase(key);
            }
        }
        if (!value) return;
        makeRoom();
        young_.bytes += bytes;
        young_.entries.emplace(key, Entry{std::move(*value), bytes});
    }
    // Sets every pair of a container of them.
    template <class Pairs>
    void add(const Pairs& data) {
        for (const auto& [key, value] : data) set(key, value);
    }

    // Empties the cache. The persistent copy stays.
    void clear() {
        young_ = {};
        old_ = {};
    }

private:
    struct Entry {
        Value value;
        std::size_t bytes;
    };
    struct Generation {
        std::unordered_map<Key, Entry, Hash, Equal> entries;
        std::size_t bytes = 0;
    };

    static void remove(Generation& generation, const Key& key) {
        const auto found = generation.entries.find(key);
        if (found == generation.entries.end()) return;
        generation.bytes -= found->second.bytes;
        generation.entries.erase(found);
    }

    void makeRoom() {
        if (young_.entries.size() < size_ && young_.bytes < bytes_) return;
        old_ = std::move(young_);
        young_ = {};
    }

    std::size_t size_;
    std::size_t bytes_;
    bool enabled_ = true;
    bool persistentEnabled_ = false;
    Generation young_;
    Generation old_;
    Map persistent_;
};

}  // namespace vemo
