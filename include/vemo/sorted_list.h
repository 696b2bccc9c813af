// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vemo {

// Registered items in ascending order, ties in the order of registration. Nothing is replaced: two items may share a
// name. Not synchronised.
template <class Item>
class SortedList {
public:
    struct Entry {
        std::optional<std::u16string> name;
        std::int64_t order;
        Item item;
    };

    // A smaller order comes earlier.
    void add(Item item, std::int64_t order = 100, std::optional<std::u16string> name = std::nullopt) {
        const auto place = std::upper_bound(items_.begin(), items_.end(), order,
                                            [](std::int64_t o, const Sorted& sorted) { return o < sorted.order; });
        items_.insert(place, Sorted{order, entries_.size()});
        entries_.push_back(Entry{std::move(name), order, std::move(item)});
    }

    // True when an item has exactly this name.
    bool has(std::u16string_view name) const {
        return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.name && *e.name == name; });
    }

    std::size_t size() const { return entries_.size(); }
    // The item at a position of the order.
    const Item& operator[](std::size_t index) const { return entries_[items_[index].entry].item; }
    // Copies, in ascending order.
    std::vector<Item> items() const {
        std::vector<Item> result;
        result.reserve(size());
        for (const Sorted& sorted : items_) result.push_back(entries_[sorted.entry].item);
        return result;
    }
    // Copies, in the order of registration.
    std::vector<Item> itemsUnsorted() const {
        std::vector<Item> result;
        result.reserve(size());
        for (const Entry& entry : entries_) result.push_back(entry.item);
        return result;
    }
    // In the order of registration.
    const std::vector<Entry>& entries() const { return entries_; }

private:
    struct Sorted {
        std::int64_t order;
        std::size_t entry;
    };

    std::vector<Entry> entries_;
    std::vector<Sorted> items_;
};

}  // namespace vemo
