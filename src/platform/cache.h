// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vemo {

// Hash that lets maps keyed by text be searched with a view.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>{}(text); }
};

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

private:
    std::u16string key_;
};

// A bounded memory of results by text: at most 2 × `generationSize` entries, the longest unused go first.
// A miss is always safe. Not synchronised. `Key` is where an entry's key is kept.
template <class Mapped, class Key = StoredKey>
class Cache {
public:
    explicit Cache(std::size_t generationSize) : generationSize_(generationSize) {}

    void setEnabled(bool enabled) {
        enabled_ = enabled;
        if (!enabled) clear();
    }

    // The entry or null; valid until the next change.
    Mapped* find(std::u16string_view key) { return findHashed(key, TextHash{}(key)); }

    // The entry, made when missing; null when the cache is disabled.
    Mapped* obtain(std::u16string_view key) {
        const std::size_t hash = TextHash{}(key);
        Mapped* present = findHashed(key, hash);
        return present || !enabled_ ? present : &add(key, hash);
    }

    // For looking many keys up soon: the two steps before `find`, each of which leaves the next one less to wait for
    // when it is done for all keys first. The second gives the entry that probably has the key, or null.
    void prefetch(std::size_t hash) const {
        for (const Generation* generation : {&young_, &old_})
            if (!generation->slots.empty()) __builtin_prefetch(&generation->slotFor(hash));
    }
    const Mapped* probable(std::size_t hash) const {
        const Mapped* young = young_.probable(hash);
        return young ? young : old_.probable(hash);
    }

    void clear() {
        young_ = {};
        old_ = {};
    }

private:
    // An open-addressing table of positions over entries in the order of their coming: lines of a document are
    // looked up in that order too, which keeps memory accesses close together.
    struct Generation {
        struct Entry {
            std::size_t hash;
            [[no_unique_address]] Key key;
            Mapped value;
        };
        struct Slot {
            std::uint32_t tag = 0;
            std::uint32_t position = 0;  // of the entry, plus one; 0 for a free slot
        };

        Mapped* find(std::u16string_view key, std::size_t hash) {
            if (slots.empty()) return nullptr;
            for (std::size_t i = hash & (slots.size() - 1); slots[i].position != 0; i = (i + 1) & (slots.size() - 1)) {
                if (slots[i].tag != tagOf(hash)) continue;
                Entry& entry = entries[slots[i].position - 1];
                if (entry.hash == hash && entry.key.is(key, entry.value)) return &entry.value;
            }
            return nullptr;
        }

        const Slot& slotFor(std::size_t hash) const { return slots[hash & (slots.size() - 1)]; }

        const Mapped* probable(std::size_t hash) const {
            if (slots.empty() || slotFor(hash).position == 0 || slotFor(hash).tag != tagOf(hash)) return nullptr;
            return &entries[slotFor(hash).position - 1].value;
        }

        Mapped& add(std::u16string_view key, std::size_t hash) {
            if (2 * (entries.size() + 1) > slots.size()) grow();
            entries.push_back({hash, Key(key), Mapped()});
            place(hash, entries.size());
            return entries.back().value;
        }

        void grow() {
            slots.assign(std::max<std::size_t>(64, slots.size() * 4), Slot());
            for (std::size_t i = 0; i < entries.size(); ++i) place(entries[i].hash, i + 1);
        }

        void place(std::size_t hash, std::size_t position) {
            std::size_t i = hash & (slots.size() - 1);
            while (slots[i].position != 0) i = (i + 1) & (slots.size() - 1);
            slots[i] = {tagOf(hash), static_cast<std::uint32_t>(position)};
        }

        static std::uint32_t tagOf(std::size_t hash) { return static_cast<std::uint32_t>(hash >> 32); }

        std::vector<Slot> slots;
        std::deque<Entry> entries;
    };

    Mapped* findHashed(std::u16string_view key, std::size_t hash) {
        if (!enabled_) return nullptr;
        if (Mapped* young = young_.find(key, hash)) return young;
        Mapped* old = old_.find(key, hash);
        if (!old) return nullptr;
        // Used again, so it moves on; what it leaves behind is never reached, the young one being found first.
        Mapped kept = std::move(*old);
        return &(add(key, hash) = std::move(kept));
    }

    Mapped& add(std::u16string_view key, std::size_t hash) {
        if (young_.entries.size() >= generationSize_) {
            old_ = std::move(young_);
            young_ = {};
        }
        return young_.add(key, hash);
    }

    std::size_t generationSize_;
    bool enabled_ = true;
    Generation young_;
    Generation old_;
};

}  // namespace vemo
