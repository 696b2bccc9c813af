// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace vemo {

// Hash that lets maps keyed by text be searched with a view.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>{}(text); }
};

template <class Mapped>
using TextMap = std::unordered_map<std::u16string, Mapped, TextHash, std::equal_to<>>;

// A bounded memory of results by text: at most 2 × `generationSize` entries, the longest unused go first.
// A miss is always safe. Not synchronised.
template <class Mapped>
class Cache {
public:
    explicit Cache(std::size_t generationSize) : generationSize_(generationSize) {}

    bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) {
        enabled_ = enabled;
        if (!enabled) clear();
    }

    // The entry or null; valid until the next change.
    Mapped* find(std::u16string_view key) {
        if (!enabled_) return nullptr;
        if (auto found = young_.find(key); found != young_.end()) return &found->second;
        auto found = old_.find(key);
        if (found == old_.end()) return nullptr;
        auto node = old_.extract(found);
        makeRoom();
        return &young_.insert(std::move(node)).position->second;
    }

    // The entry, made when missing; null when the cache is disabled.
    Mapped* obtain(std::u16string_view key) {
        Mapped* present = find(key);
        if (present || !enabled_) return present;
        makeRoom();
        return &young_.try_emplace(std::u16string(key)).first->second;
    }

    void clear() {
        young_.clear();
        old_.clear();
    }

private:
    // Two generations: entries used since the last turn survive it.
    void makeRoom() {
        if (young_.size() < generationSize_) return;
        old_ = std::move(young_);
        young_.clear();
    }

    std::size_t generationSize_;
    bool enabled_ = true;
    TextMap<Mapped> young_;
    TextMap<Mapped> old_;
};

}  // namespace vemo
