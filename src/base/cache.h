// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/hash.h"
#include "base/hash_index.h"

namespace vemo {

template <class Mapped>
using TextMap = std::unordered_map<std::u16string, Mapped, TextHash, std::equal_to<>>;

// A key kept beside what is stored under it.
class StoredKey {
public:
    explicit StoredKey(std::u16string_view key) : key_(key) {}
    template <class Mapped>
    bool is(std::u16string_view key, const Mapped&) const {
        return key_ == key;
    }
    // How many bytes an entry holds outside of the cache.
    template <class Mapped>
    static std::size_t bytes(const Mapped&) {
        return 0;
    }

private:
    std::u16string key_;
};

// A bounded memory of results by text: at most 2 × `generationSize` entries, which hold about 2 × `generationBytes`;
// the longest unused go first. A miss is always safe. Not synchronised. `Key` is where an entry's key is kept, and
// tells how much an entry holds.
// (With std::unordered_map in its place, and the ranges of words unpacked, a known line of a document of 10,000 takes
// 682 ns instead of 437, and a new one 14 % more: built with -O1; vemo_bench --benchmark_filter=Document tells.)
template <class Mapped, class Key = StoredKey>
class TextCache {
public:
    explicit TextCache(std::size_t generationSize, std::size_t generationBytes = static_cast<std::size_t>(-1))
        : generationSize_(generationSize), generationBytes_(generationBytes) {}

    void setEnabled(bool enabled) {
        enabled_ = enabled;
        if (!enabled) clear();
    }

    // The entry or null. Valid until the next call, as a search may drop other entries.
    Mapped* find(std::u16string_view key) {
        if (Mapped* next = young_.findNext(key)) return next;
        return findHashed(key, TextHash{}(key));
    }

    // The entry, which is made when it is missing; null when the cache is disabled.
    Mapped* obtain(std::u16string_view key) {
        if (Mapped* latest = young_.findLatest(key)) return latest;
        const std::size_t hash = TextHash{}(key);
        Mapped* present = findHashed(key, hash);
        return present || !enabled_ ? present : &add(key, hash);
    }

    // Tells that an entry that was obtained holds so many bytes more than before.
    void charge(std::size_t bytes) { young_.bytes += bytes; }

    void clear() {
        young_ = {};
        old_ = {};
    }

private:
    // Entries in the order of their coming. Lines of a document are looked up in that order too: most are found where
    // they are expected, and memory accesses lie close together.
    struct Generation {
        struct Entry {
            std::size_t hash;
            [[no_unique_address]] Key key;
            Mapped value;
        };

        Mapped* find(std::u16string_view key, std::size_t hash) {
            const auto position = index.find(hash, [&](std::size_t i) {
                return entries[i].hash == hash && entries[i].key.is(key, entries[i].value);
            });
            if (!position) return nullptr;
            next = *position + 1;
            return &entries[*position].value;
        }

        // Most keys are that of the entry found latest, or of the one after it.
        Mapped* findLatest(std::u16string_view key) { return isAt(next - 1, key) ? &entries[next - 1].value : nullptr; }
        Mapped* findNext(std::u16string_view key) { return isAt(next, key) ? &entries[next++].value : nullptr; }

        Mapped& add(std::u16string_view key, std::size_t hash) {
            index.add(hash, entries.size());
            entries.push_back({hash, Key(key), Mapped()});
            return entries.back().value;
        }

        bool isAt(std::size_t position, std::u16string_view key) const {
            return position < entries.size() && entries[position].key.is(key, entries[position].value);
        }

        HashIndex index;
        std::deque<Entry> entries;
        std::size_t next = 0;   // position after the entry found latest
        std::size_t bytes = 0;  // held by the entries
    };

    Mapped* findHashed(std::u16string_view key, std::size_t hash) {
        if (!enabled_) return nullptr;
        if (Mapped* young = young_.find(key, hash)) return young;
        Mapped* old = old_.find(key, hash);
        if (!old) return nullptr;
        // It was used again, so it becomes a young one. What is left of it is never reached, for young ones are found
        // first.
        Mapped kept = std::move(*old);
        const std::size_t bytes = Key::bytes(kept);
        Mapped& added = add(key, hash) = std::move(kept);
        charge(bytes);
        return &added;
    }

    Mapped& add(std::u16string_view key, std::size_t hash) {
        if (young_.entries.size() >= generationSize_ || young_.bytes >= generationBytes_) {
            old_ = std::move(young_);
            young_ = {};
        }
        return young_.add(key, hash);
    }

    std::size_t generationSize_;
    std::size_t generationBytes_;
    bool enabled_ = true;
    Generation young_;
    Generation old_;
};

}  // namespace vemo
