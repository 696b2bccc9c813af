// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "base/hash.h"
#include "base/hash_index.h"

namespace vemo {

// A map from text to Mapped whose copies share structure. Its entries lie in layers, each a hash table in the order of
// their coming, which hides entries of the same keys in the layers below. Copying is O(1): the copies share all
// layers, and the first to write lays a new one over them. Where that would make too many, layers are put together:
// over a history of copies and writes each costs O(log size) on average. What no other map shares is changed in place.
// Copies may be used on different threads.
//
// Entries and layers are followed in memory by what they hold. (A standard hash table in each layer, with strings as
// keys, takes 58 ns more of the 476 that a known line costs in a document of 10,000, 120 bytes more a line, and three
// times as long at 100,000: measured over the look-ups and writes of such lines. What the lines cost altogether tells
// vemo_bench --benchmark_filter=changedDocument.)
template <class Mapped>
class LayeredMap {
    class Counted {
    public:
        void retain() const { references_.fetch_add(1, std::memory_order_relaxed); }
        bool isShared() const { return references_.load(std::memory_order_acquire) > 1; }
        // True when it was the last.
        bool dropReference() const { return references_.fetch_sub(1, std::memory_order_acq_rel) == 1; }

    private:
        mutable std::atomic<std::uint32_t> references_{1};
    };

public:
    // Followed in memory by its key.
    class Entry : public Counted {
    public:
        std::u16string_view key() const { return {reinterpret_cast<const char16_t*>(this + 1), keyLength_}; }
        std::size_t hash() const { return hash_; }
        const Mapped& value() const { return value_; }

    private:
        friend class LayeredMap;
        friend void intrusive_ptr_add_ref(const Entry* entry) { entry->retain(); }
        friend void intrusive_ptr_release(const Entry* entry) { entry->release(); }

        Entry(std::u16string_view key, std::size_t hash, Mapped&& value)
            : keyLength_(static_cast<std::uint32_t>(key.size())), hash_(hash), value_(std::move(value)) {
            std::copy(key.begin(), key.end(), reinterpret_cast<char16_t*>(this + 1));
        }
        bool is(std::u16string_view key, std::size_t hash) const { return hash_ == hash && this->key() == key; }
        void release() const {
            if (!this->dropReference()) return;
            this->~Entry();
            ::operator delete(const_cast<Entry*>(this));
        }

        std::uint32_t keyLength_;
        std::size_t hash_;
        Mapped value_;
    };

    using EntryPointer = boost::intrusive_ptr<const Entry>;

    LayeredMap() = default;
    LayeredMap(const LayeredMap& other) : top_(other.top_), size_(other.size_) { retain(top_); }
    LayeredMap(LayeredMap&& other) noexcept
        : top_(std::exchange(other.top_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    LayeredMap& operator=(LayeredMap other) noexcept {
        std::swap(top_, other.top_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~LayeredMap() { release(top_); }

    // A copy for a short life. It has a layer of its own at once, and layers are not put together for it.
    LayeredMap layer() const {
        LayeredMap map;
        retain(top_);
        map.top_ = newLayer(1, top_);
        map.size_ = size_;
        return map;
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    // Valid until the map changes.
    const Mapped* find(std::u16string_view key) const { return empty() ? nullptr : find(key, TextHash{}(key)); }
    const Mapped* find(std::u16string_view key, std::size_t hash) const {
        const Entry* entry = find(top_, key, hash);
        return entry ? &entry->value_ : nullptr;
    }

    // True when the key is new.
    bool set(std::u16string_view key, Mapped&& value) { return set(key, TextHash{}(key), std::move(value)); }
    bool set(std::u16string_view key, std::size_t hash, Mapped&& value) {
        if (top_ && !top_->isShared()) {
            const Item* own = top_->find(key, hash);
            if (own && !isRemoved(*own) && !entryOf(*own)->isShared()) {
                entryOf(*own)->value_ = std::move(value);
                return false;
            }
        }
        return put(itemOf(newEntry(key, hash, std::move(value))));
    }

    // Sets an entry of another map, which both share from then on. True when the key is new.
    bool setShared(const Entry& entry) {
        auto& shared = const_cast<Entry&>(entry);
        shared.retain();
        return put(itemOf(&shared));
    }

    // True when the key was there.
    bool erase(std::u16string_view key) {
        Entry* entry = find(top_, key, TextHash{}(key));
        if (!entry) return false;
        entry->retain();
        put(itemOf(entry) | removed);
        return true;
    }

    // Visits every entry in no particular order; stops when `visit` returns false.
    template <class Visit>
    bool all(Visit&& visit) const {
        for (const Layer* layer = top_; layer; layer = layer->below) {
            for (std::size_t i = 0; i < layer->count; ++i) {
                const Item item = layer->items()[i];
                if (!isRemoved(item) && !isHidden(*entryOf(item), top_, layer) && !visit(std::as_const(*entryOf(item))))
                    return false;
            }
        }
        return true;
    }

    friend bool operator==(const LayeredMap& a, const LayeredMap& b) {
        if (a.top_ == b.top_) return true;
        return a.size_ == b.size_ && a.all([&](const Entry& entry) {
            const Mapped* other = b.find(entry.key());
            return other && *other == entry.value();
        });
    }

private:
    // A pointer to an entry; with the lowest bit set, it only says that the key was removed.
    using Item = std::uintptr_t;
    static constexpr Item removed = 1;

    static constexpr std::size_t mostWithoutIndex = 8;
    static constexpr std::size_t usualCapacity = 4;

    // Followed in memory by its items, each with a key of its own.
    struct Layer : Counted {
        std::uint32_t count = 0;
        std::uint32_t capacity = 0;
        Layer* below = nullptr;
        std::unique_ptr<HashIndex> index;  // null in a short layer

        Item* items() { return reinterpret_cast<Item*>(this + 1); }
        const Item* items() const { return reinterpret_cast<const Item*>(this + 1); }

        Item* find(std::u16string_view key, std::size_t hash) {
            if (index) {
                const auto position =
                    index->find(hash, [&](std::size_t i) { return entryOf(items()[i])->is(key, hash); });
                return position ? items() + *position : nullptr;
            }
            Item* end = items() + count;
            Item* found = std::find_if(items(), end, [&](Item item) { return entryOf(item)->is(key, hash); });
            return found != end ? found : nullptr;
        }
    };

    static bool isRemoved(Item item) { return (item & removed) != 0; }
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the lowest bit of an item is a mark.
    static Entry* entryOf(Item item) { return reinterpret_cast<Entry*>(item & ~removed); }
    static Item itemOf(Entry* entry) { return reinterpret_cast<Item>(entry); }

    static void retain(const Layer* layer) {
        if (layer) layer->retain();
    }
    static void release(Layer* layer) {
        while (layer && layer->dropReference()) {
            for (std::size_t i = 0; i < layer->count; ++i) entryOf(layer->items()[i])->release();
            freeLayer(std::exchange(layer, layer->below));
        }
    }

    static Entry* newEntry(std::u16string_view key, std::size_t hash, Mapped&& value) {
        return new (::operator new(sizeof(Entry) + key.size() * sizeof(char16_t))) Entry(key, hash, std::move(value));
    }
    static Layer* newLayer(std::size_t capacity, Layer* below) {
        auto* layer = new (::operator new(sizeof(Layer) + capacity * sizeof(Item))) Layer;
        layer->capacity = static_cast<std::uint32_t>(capacity);
        layer->below = below;
        return layer;
    }
    static void freeLayer(Layer* layer) {
        layer->~Layer();
        ::operator delete(layer);
    }

    // From the layer down; null when the key is not there.
    static Entry* find(Layer* layer, std::u16string_view key, std::size_t hash) {
        for (; layer; layer = layer->below)
            if (const Item* item = layer->find(key, hash)) return isRemoved(*item) ? nullptr : entryOf(*item);
        return nullptr;
    }

    static bool isHidden(const Entry& entry, Layer* from, const Layer* to) {
        for (; from != to; from = from->below)
            if (from->find(entry.key(), entry.hash_)) return true;
        return false;
    }

    // Makes the top layer one that may be changed.
    void own() {
        if (top_ && !top_->isShared()) return;
        // A layer less than twice as long as those above it together becomes one with them, so that there are O(log
        // size) layers; a short one at the top is better copied than searched.
        std::size_t above = 0;
        Layer* rest = top_ && top_->count <= mostWithoutIndex ? top_->below : top_;
        for (Layer* layer = top_; layer; layer = layer->below) {
            if (layer->count < 2 * above) rest = layer->below;
            above += layer->count;
        }
        retain(rest);
        Layer* fresh = newLayer(usualCapacity, rest);
        for (Layer* layer = top_; layer != rest; layer = layer->below) {
            for (std::size_t i = 0; i < layer->count; ++i) {
                const Item item = layer->items()[i];
                if ((!rest && isRemoved(item)) || isHidden(*entryOf(item), top_, layer)) continue;
                entryOf(item)->retain();
                append(fresh, item);
            }
        }
        release(std::exchange(top_, fresh));
    }

    // Takes over the reference to the entry, of which the layer has no other with the same key.
    static void append(Layer*& layer, Item item) {
        if (layer->count == layer->capacity) grow(layer);
        layer->items()[layer->count] = item;
        if (layer->count >= mostWithoutIndex) {
            const auto addToIndex = [&](std::size_t i) { layer->index->add(entryOf(layer->items()[i])->hash_, i); };
            if (!layer->index) {
                layer->index = std::make_unique<HashIndex>();
                for (std::size_t i = 0; i < layer->count; ++i) addToIndex(i);
            }
            addToIndex(layer->count);
        }
        ++layer->count;
    }

    // Drops removed items when they hide nothing.
    static void grow(Layer*& layer) {
        const bool hides = layer->below != nullptr;
        Item* const end = layer->items() + layer->count;
        const bool tidy = hides || std::none_of(layer->items(), end, isRemoved);
        Layer* larger = newLayer(2 * static_cast<std::size_t>(layer->capacity), layer->below);
        if (tidy) {
            std::copy(layer->items(), end, larger->items());
            larger->count = layer->count;
            larger->index = std::move(layer->index);
        } else {
            for (Item* item = layer->items(); item != end; ++item) {
                if (isRemoved(*item))
                    entryOf(*item)->release();
                else
                    append(larger, *item);
            }
        }
        freeLayer(std::exchange(layer, larger));
    }

    // Takes over the reference to the entry. True when the key is new.
    bool put(Item item) {
        const Entry& entry = *entryOf(item);
        own();
        Item* present = top_->find(entry.key(), entry.hash_);
        const bool before = present ? !isRemoved(*present) : find(top_->below, entry.key(), entry.hash_) != nullptr;
        const bool after = !isRemoved(item);
        if (present)
            entryOf(std::exchange(*present, item))->release();
        else
            append(top_, item);
        size_ += static_cast<std::size_t>(after);
        size_ -= static_cast<std::size_t>(before);
        return after && !before;
    }

    Layer* top_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace vemo
