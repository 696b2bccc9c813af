// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

// Registered items in ascending order, ties in the order of registration.
template <class Item>
class SortedList {
public:
    void add(Item item, std::int64_t order = 100, std::optional<std::u16string> name = std::nullopt) {
        const auto place = std::upper_bound(entries_.begin(), entries_.end(), order,
                                            [](std::int64_t o, const Entry& entry) { return o < entry.order; });
        entries_.insert(place, Entry{std::move(name), order, std::move(item)});
    }

    bool has(std::u16string_view name) const {
        return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.name && *e.name == name; });
    }

    std::size_t size() const { return entries_.size(); }
    const Item& operator[](std::size_t index) const { return entries_[index].item; }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    struct Entry {
        std::optional<std::u16string> name;
        std::int64_t order;
        Item item;
    };

private:
    std::vector<Entry> entries_;
};

}  // namespace vemo
