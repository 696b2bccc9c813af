// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vemo {

// A map from text to Mapped whose copies share structure: copying is O(1), a change costs O(log size)
// and leaves other copies as they were (a hash array mapped trie). A map that shares nothing is changed in place.
template <class Mapped>
class PersistentMap {
public:
    struct Entry {
        Entry(std::u16string_view key, std::size_t keyHash, Mapped value)
            : first(key), second(std::move(value)), hash(keyHash) {}
        const std::u16string first;
        Mapped second;
        const std::size_t hash;
    };
    using EntryPointer = std::shared_ptr<Entry>;

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    bool sharesWith(const PersistentMap& other) const { return root_ == other.root_; }

    const Mapped* find(std::u16string_view key) const {
        const std::size_t hash = hashOf(key);
        const Node* node = root_.get();
        for (unsigned shift = 0; node; shift += bits) {
            if (shift >= hashBits) {
                for (const Slot& slot : node->slots) {
                    const auto& entry = std::get<EntryPointer>(slot);
                    if (entry->first == key) return &entry->second;
                }
                return nullptr;
            }
            const std::uint32_t bit = bitFor(hash, shift);
            if (!(node->bitmap & bit)) return nullptr;
            const Slot& slot = node->slots[node->indexOf(bit)];
            if (const auto* entry = std::get_if<EntryPointer>(&slot))
                return (*entry)->first == key ? &(*entry)->second : nullptr;
            node = std::get<NodePointer>(slot).get();
        }
        return nullptr;
    }

    // True when the key is new.
    bool set(std::u16string_view key, Mapped value) {
        const std::size_t hash = hashOf(key);
        Mapped* own = findOwn(key, hash);
        if (!own) return setEntry(std::make_shared<Entry>(key, hash, std::move(value)));
        *own = std::move(value);
        return false;
    }

    // Shares the entry with the map it comes from.
    bool setEntry(EntryPointer entry) {
        const bool added = insert(root_, std::move(entry), 0);
        if (added) ++size_;
        return added;
    }

    // True when the key was there.
    bool erase(std::u16string_view key) {
        if (!find(key)) return false;
        remove(root_, key, hashOf(key), 0);
        if (--size_ == 0) root_.reset();
        return true;
    }

    // Visits every entry in no particular order; stops when `visit` returns false.
    template <class Visit>
    bool all(Visit&& visit) const {
        return !root_ || visitNode(*root_, visit);
    }

    friend bool operator==(const PersistentMap& a, const PersistentMap& b) {
        if (a.root_ == b.root_) return true;
        return a.size_ == b.size_ && a.all([&](const EntryPointer& entry) {
            const Mapped* other = b.find(entry->first);
            return other && *other == entry->second;
        });
    }

private:
    static constexpr unsigned bits = 5;
    static constexpr unsigned hashBits = 60;  // twelve levels, then a list of colliding entries

    struct Node;
    using NodePointer = std::shared_ptr<Node>;
    using Slot = std::variant<EntryPointer, NodePointer>;
    struct Node {
        std::uint32_t bitmap = 0;
        std::vector<Slot> slots;
        std::size_t indexOf(std::uint32_t bit) const { return static_cast<std::size_t>(std::popcount(bitmap & (bit - 1))); }
    };

    static bool sameKey(const Entry& a, const Entry& b) { return a.hash == b.hash && a.first == b.first; }
    static std::size_t hashOf(std::u16string_view key) { return std::hash<std::u16string_view>{}(key); }
    static std::uint32_t bitFor(std::size_t hash, unsigned shift) { return 1u << ((hash >> shift) & 31u); }

    // The present entry when no other map shares it; null otherwise.
    Mapped* findOwn(std::u16string_view key, std::size_t hash) {
        NodePointer* pointer = &root_;
        for (unsigned shift = 0; *pointer && pointer->use_count() == 1 && shift < hashBits; shift += bits) {
            Node& node = **pointer;
            const std::uint32_t bit = bitFor(hash, shift);
            if (!(node.bitmap & bit)) return nullptr;
            Slot& slot = node.slots[node.indexOf(bit)];
            if (auto* entry = std::get_if<EntryPointer>(&slot))
                return entry->use_count() == 1 && (*entry)->first == key ? &(*entry)->second : nullptr;
            pointer = &std::get<NodePointer>(slot);
        }
        return nullptr;
    }

    // A node that may be changed: the given one when nobody else holds it, otherwise a copy.
    static Node& own(NodePointer& node) {
        if (!node) node = std::make_shared<Node>();
        else if (node.use_count() > 1) node = std::make_shared<Node>(*node);
        return *node;
    }

    static bool insert(NodePointer& pointer, EntryPointer entry, unsigned shift) {
        Node& node = own(pointer);
        if (shift >= hashBits) {
            for (Slot& slot : node.slots) {
                if (sameKey(*std::get<EntryPointer>(slot), *entry)) {
                    slot = std::move(entry);
                    return false;
                }
            }
            node.slots.emplace_back(std::move(entry));
            return true;
        }
        const std::uint32_t bit = bitFor(entry->hash, shift);
        const std::size_t index = node.indexOf(bit);
        if (!(node.bitmap & bit)) {
            node.slots.insert(node.slots.begin() + static_cast<std::ptrdiff_t>(index), Slot(std::move(entry)));
            node.bitmap |= bit;
            return true;
        }
        Slot& slot = node.slots[index];
        if (auto* child = std::get_if<NodePointer>(&slot)) return insert(*child, std::move(entry), shift + bits);
        EntryPointer present = std::get<EntryPointer>(slot);
        if (sameKey(*present, *entry)) {
            slot = std::move(entry);
            return false;
        }
        NodePointer child;
        insert(child, std::move(present), shift + bits);
        insert(child, std::move(entry), shift + bits);
        slot = std::move(child);
        return true;
    }

    // The key must be there.
    static void remove(NodePointer& pointer, std::u16string_view key, std::size_t hash, unsigned shift) {
        Node& node = own(pointer);
        if (shift >= hashBits) {
            std::erase_if(node.slots, [&](const Slot& s) { return std::get<EntryPointer>(s)->first == key; });
            return;
        }
        const std::uint32_t bit = bitFor(hash, shift);
        const std::size_t index = node.indexOf(bit);
        if (auto* child = std::get_if<NodePointer>(&node.slots[index])) {
            remove(*child, key, hash, shift + bits);
            if (!(*child)->slots.empty()) return;
        }
        node.slots.erase(node.slots.begin() + static_cast<std::ptrdiff_t>(index));
        node.bitmap &= ~bit;
    }

    template <class Visit>
    static bool visitNode(const Node& node, Visit& visit) {
        for (const Slot& slot : node.slots) {
            if (const auto* entry = std::get_if<EntryPointer>(&slot)) {
                if (!visit(*entry)) return false;
            } else if (!visitNode(*std::get<NodePointer>(slot), visit)) {
                return false;
            }
        }
        return true;
    }

    NodePointer root_;
    std::size_t size_ = 0;
};

}  // namespace vemo
