// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vemo {

// Finds things that lie in a row by their hash (open addressing, linear probing). It holds at most 2^31 positions; the
// caller compares what is looked for.
class HashIndex {
public:
    // The first position with this hash for which `is(position)` holds.
    template <class Is>
    std::optional<std::size_t> find(std::size_t hash, Is&& is) const {
        if (slots_.empty()) return std::nullopt;
        for (std::size_t i = hash & mask(); slots_[i].next != 0; i = (i + 1) & mask())
            if (slots_[i].tag == tagOf(hash) && is(slots_[i].next - 1)) return slots_[i].next - 1;
        return std::nullopt;
    }

    // Adds the position after all others. Positions count up from 0.
    void add(std::size_t hash, std::size_t position) {
        if (2 * (position + 1) > slots_.size()) {
            const std::vector<Slot> before =
                std::exchange(slots_, std::vector<Slot>(std::max<std::size_t>(64, slots_.size() * 4)));
            for (const Slot& slot : before)
                if (slot.next != 0) place(slot);
        }
        place({tagOf(hash), static_cast<std::uint32_t>(position + 1)});
    }

private:
    struct Slot {
        std::uint32_t tag = 0;   // part of the hash: enough to place it, too
        std::uint32_t next = 0;  // the position plus one; 0 for a free slot
    };

    static std::uint32_t tagOf(std::size_t hash) { return static_cast<std::uint32_t>(hash); }
    std::size_t mask() const { return slots_.size() - 1; }
    void place(const Slot& slot) {
        std::size_t i = slot.tag & mask();
        while (slots_[i].next != 0) i = (i + 1) & mask();
        slots_[i] = slot;
    }

    std::vector<Slot> slots_;
};

}  // namespace vemo
