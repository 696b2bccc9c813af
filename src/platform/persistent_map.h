// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace vemo {

// A map from text to Mapped whose copies share structure: copying is O(1), a change costs O(log size) and leaves
// other copies as they were (a hash array mapped trie, Bagwell 2001). What no other map shares is changed in
// place. Copies may be used on different threads.
template <class Mapped>
class PersistentMap {
    struct Counted {
        std::atomic<std::uint32_t> references{1};
    };

public:
    // Followed in memory by its key.
    class Entry : public Counted {
    public:
        std::u16string_view key() const { return {reinterpret_cast<const char16_t*>(this + 1), keyLength_}; }
        const Mapped& value() const { return value_; }

    private:
        friend class PersistentMap;

        Entry(std::u16string_view key, std::size_t hash, Mapped value)
            : keyLength_(static_cast<std::uint32_t>(key.size())), hash_(hash), value_(std::move(value)) {
            std::copy(key.begin(), key.end(), reinterpret_cast<char16_t*>(this + 1));
        }

        std::uint32_t keyLength_;
        std::size_t hash_;
        Mapped value_;
    };

    PersistentMap() = default;
    PersistentMap(const PersistentMap& other) : root_(other.root_), size_(other.size_) { retain(root_); }
    PersistentMap(PersistentMap&& other) noexcept
        : root_(std::exchange(other.root_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    PersistentMap& operator=(PersistentMap other) noexcept {
        std::swap(root_, other.root_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~PersistentMap() { release(root_); }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    // For many maps to be read, or keys to be written, soon. Each of these steps leaves the next one less to wait for
    // when it is done for all of them first: the first node of a map, then the entries in it; the node in which
    // another map's entries will be placed, then what is there.
    void prefetchRoot() const {
        if (root_) __builtin_prefetch(root_);
    }
    void prefetchEntries() const {
        if (root_) prefetchBelow(*root_);
    }
    void prefetchPlaces(const PersistentMap& entries, unsigned levels) const {
        entries.all([&](const Entry& entry) {
            const Node* node = root_;
            unsigned level = 0;
            for (; node; ++level) {
                const std::uint32_t bit = bitFor(entry.hash_, level * bits);
                if (!(node->bitmap & bit)) break;
                const Slot& slot = node->slots()[node->indexOf(bit)];
                if (level == levels) {
                    __builtin_prefetch(isEntry(slot) ? static_cast<const void*>(entryOf(slot)) : nodeOf(slot));
                    break;
                }
                if (isEntry(slot)) break;
                node = nodeOf(slot);
            }
            return true;
        });
    }
    bool sharesWith(const PersistentMap& other) const { return root_ == other.root_; }

    // Valid until the map changes.
    const Mapped* find(std::u16string_view key) const {
        const Entry* entry = findEntry(key, hashOf(key), false);
        return entry ? &entry->value_ : nullptr;
    }

    // True when the key is new.
    bool set(std::u16string_view key, Mapped value) {
        const std::size_t hash = hashOf(key);
        if (Entry* own = findEntry(key, hash, true)) {
            own->value_ = std::move(value);
            return false;
        }
        return add(newEntry(key, hash, std::move(value)));
    }

    // The same with an entry of another map, which is shared.
    bool setShared(const Entry& entry) {
        auto& shared = const_cast<Entry&>(entry);
        retain(&shared);
        return add(&shared);
    }

    // True when the key was there.
    bool erase(std::u16string_view key) {
        const std::size_t hash = hashOf(key);
        if (!findEntry(key, hash, false)) return false;
        remove(root_, key, hash, 0);
        if (--size_ == 0) release(std::exchange(root_, nullptr));
        return true;
    }

    // Visits every entry in no particular order; stops when `visit` returns false.
    template <class Visit>
    bool all(Visit&& visit) const {
        return !root_ || visitNode(*root_, visit);
    }

    friend bool operator==(const PersistentMap& a, const PersistentMap& b) {
        if (a.root_ == b.root_) return true;
        return a.size_ == b.size_ && a.all([&](const Entry& entry) {
            const Mapped* other = b.find(entry.key());
            return other && *other == entry.value();
        });
    }

private:
    static constexpr unsigned bits = 5;
    static constexpr unsigned hashBits = 60;  // twelve levels, then a list of colliding entries

    // A pointer to an entry (the lowest bit set) or to a node.
    using Slot = std::uintptr_t;

    // Followed in memory by its slots.
    struct Node : Counted {
        std::uint32_t bitmap = 0;
        std::uint32_t count = 0;
        std::uint32_t capacity = 0;

        Slot* slots() { return reinterpret_cast<Slot*>(this + 1); }
        const Slot* slots() const { return reinterpret_cast<const Slot*>(this + 1); }
        std::size_t indexOf(std::uint32_t bit) const { return static_cast<std::size_t>(std::popcount(bitmap & (bit - 1))); }
    };

    static bool isEntry(Slot slot) { return (slot & 1) != 0; }
    static Entry* entryOf(Slot slot) { return reinterpret_cast<Entry*>(slot & ~Slot{1}); }
    static Node* nodeOf(Slot slot) { return reinterpret_cast<Node*>(slot); }
    static Slot slotOf(Entry* entry) { return reinterpret_cast<Slot>(entry) | 1; }
    static Slot slotOf(Node* node) { return reinterpret_cast<Slot>(node); }

    static void retain(Counted* counted) {
        if (counted) counted->references.fetch_add(1, std::memory_order_relaxed);
    }
    static bool isShared(const Counted* counted) { return counted->references.load(std::memory_order_acquire) > 1; }
    static bool dropReference(Counted* counted) {
        return counted->references.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }
    static void release(Slot slot) {
        if (!isEntry(slot)) return release(nodeOf(slot));
        if (dropReference(entryOf(slot))) freeEntry(entryOf(slot));
    }
    static void release(Node* node) {
        if (!node || !dropReference(node)) return;
        // What is below lies all over the memory: its accesses overlap when they are announced.
        prefetchBelow(*node);
        for (std::size_t i = 0; i < node->count; ++i)
            if (!isEntry(node->slots()[i])) prefetchBelow(*nodeOf(node->slots()[i]));
        for (std::size_t i = 0; i < node->count; ++i) release(node->slots()[i]);
        freeNode(node);
    }
    static void prefetchBelow(const Node& node) {
        std::for_each(node.slots(), node.slots() + node.count, [](Slot slot) {
            __builtin_prefetch(isEntry(slot) ? static_cast<const void*>(entryOf(slot)) : nodeOf(slot));
        });
    }

    static Entry* newEntry(std::u16string_view key, std::size_t hash, Mapped value) {
        return new (::operator new(sizeof(Entry) + key.size() * sizeof(char16_t))) Entry(key, hash, std::move(value));
    }
    static void freeEntry(Entry* entry) {
        entry->~Entry();
        ::operator delete(entry);
    }

    static Node* newNode(std::size_t capacity) {
        Node* node = new (::operator new(sizeof(Node) + capacity * sizeof(Slot))) Node;
        node->capacity = static_cast<std::uint32_t>(capacity);
        return node;
    }
    static void freeNode(Node* node) {
        node->~Node();
        ::operator delete(node);
    }

    static std::size_t hashOf(std::u16string_view key) { return std::hash<std::u16string_view>{}(key); }
    static std::uint32_t bitFor(std::size_t hash, unsigned shift) { return 1u << ((hash >> shift) & 31u); }

    // The entry or null; with `own`, null as well when another map shares it or the way to it.
    Entry* findEntry(std::u16string_view key, std::size_t hash, bool own) const {
        const Node* node = root_;
        for (unsigned shift = 0; node && !(own && isShared(node)); shift += bits) {
            Slot slot = 0;
            if (shift >= hashBits) {
                const Slot* end = node->slots() + node->count;
                const Slot* found = std::find_if(node->slots(), end, [&](Slot s) { return entryOf(s)->key() == key; });
                if (found != end) slot = *found;
            } else if (const std::uint32_t bit = bitFor(hash, shift); node->bitmap & bit) {
                slot = node->slots()[node->indexOf(bit)];
            }
            if (slot == 0) return nullptr;
            if (!isEntry(slot)) {
                node = nodeOf(slot);
                continue;
            }
            Entry* entry = entryOf(slot);
            return entry->hash_ == hash && entry->key() == key && !(own && isShared(entry)) ? entry : nullptr;
        }
        return nullptr;
    }

    // Makes the node one that may be changed.
    static void own(Node*& node) {
        if (!node) {
            node = newNode(2);
            return;
        }
        if (!isShared(node)) return;
        Node* copy = newNode(node->count + 1);
        copy->bitmap = node->bitmap;
        copy->count = node->count;
        std::copy_n(node->slots(), node->count, copy->slots());
        for (std::size_t i = 0; i < copy->count; ++i) {
            const Slot slot = copy->slots()[i];
            if (isEntry(slot)) retain(entryOf(slot));
            else retain(nodeOf(slot));
        }
        release(std::exchange(node, copy));
    }

    static void insertSlot(Node*& node, std::size_t index, Slot slot) {
        if (node->count == node->capacity) {
            Node* larger = newNode(2 * static_cast<std::size_t>(node->capacity));
            larger->bitmap = node->bitmap;
            larger->count = node->count;
            std::copy_n(node->slots(), node->count, larger->slots());
            freeNode(std::exchange(node, larger));
        }
        std::memmove(node->slots() + index + 1, node->slots() + index, (node->count - index) * sizeof(Slot));
        node->slots()[index] = slot;
        ++node->count;
    }

    static void removeSlot(Node* node, std::size_t index) {
        release(node->slots()[index]);
        --node->count;
        std::memmove(node->slots() + index, node->slots() + index + 1, (node->count - index) * sizeof(Slot));
    }

    bool add(Entry* entry) {
        const bool added = insert(root_, entry, 0);
        if (added) ++size_;
        return added;
    }

    // Takes over the reference to the entry.
    static bool insert(Node*& node, Entry* entry, unsigned shift) {
        own(node);
        std::size_t index = 0;
        if (shift >= hashBits) {
            while (index < node->count && entryOf(node->slots()[index])->key() != entry->key()) ++index;
            if (index == node->count) {
                insertSlot(node, index, slotOf(entry));
                return true;
            }
        } else {
            const std::uint32_t bit = bitFor(entry->hash_, shift);
            index = node->indexOf(bit);
            if (!(node->bitmap & bit)) {
                insertSlot(node, index, slotOf(entry));
                node->bitmap |= bit;
                return true;
            }
        }
        Slot& slot = node->slots()[index];
        if (!isEntry(slot)) {
            Node* child = nodeOf(slot);
            const bool added = insert(child, entry, shift + bits);
            slot = slotOf(child);
            return added;
        }
        Entry* present = entryOf(slot);
        if (present->hash_ == entry->hash_ && present->key() == entry->key()) {
            release(slot);
            slot = slotOf(entry);
            return false;
        }
        Node* child = nullptr;
        insert(child, present, shift + bits);
        insert(child, entry, shift + bits);
        slot = slotOf(child);
        return true;
    }

    // The key must be there.
    static void remove(Node*& node, std::u16string_view key, std::size_t hash, unsigned shift) {
        own(node);
        if (shift >= hashBits) {
            std::size_t index = 0;
            while (entryOf(node->slots()[index])->key() != key) ++index;
            return removeSlot(node, index);
        }
        const std::uint32_t bit = bitFor(hash, shift);
        const std::size_t index = node->indexOf(bit);
        Slot& slot = node->slots()[index];
        if (!isEntry(slot)) {
            Node* child = nodeOf(slot);
            remove(child, key, hash, shift + bits);
            slot = slotOf(child);
            if (child->count > 0) return;
        }
        removeSlot(node, index);
        node->bitmap &= ~bit;
    }

    template <class Visit>
    static bool visitNode(const Node& node, Visit& visit) {
        return std::all_of(node.slots(), node.slots() + node.count, [&](Slot slot) {
            return isEntry(slot) ? visit(static_cast<const Entry&>(*entryOf(slot))) : visitNode(*nodeOf(slot), visit);
        });
    }

    Node* root_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace vemo
