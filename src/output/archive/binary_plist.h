// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/cache.h"

namespace vemo {

// Reads the strings, integers, UIDs, arrays and dictionaries of a binary property list in place. Nothing is expanded:
// objects are looked up one at a time, so that cycles, shared objects and deep nesting cost nothing, and every count is
// held against the bytes there are. (libplist makes a tree, in which a hundred bytes of shared references become
// millions of nodes; its strings end at a null character.)
class BinaryPlistReader {
public:
    using Object = std::uint64_t;  // a position in the object table

    // Nothing when the bytes have no sound header, trailer and offset table.
    static std::optional<BinaryPlistReader> open(std::string bytes);

    std::size_t size() const { return bytes_.size(); }
    Object root() const { return root_; }

    // Nothing when the object is of another type, or damaged.
    std::optional<std::u16string> string(Object object) const;
    std::optional<std::uint64_t> integer(Object object) const;
    std::optional<std::uint64_t> uid(Object object) const;
    std::optional<std::size_t> arraySize(Object object) const;
    std::optional<Object> element(Object array, std::size_t index) const;
    // The value under an ASCII key. Dictionaries of more than 32 keys are not searched.
    std::optional<Object> member(Object dictionary, std::string_view key) const;

private:
    struct Header {
        unsigned type;        // upper half of the marker
        std::uint64_t count;  // lower half, or the integer after it
        std::size_t content;  // offset of what follows
    };

    std::optional<std::uint64_t> number(std::size_t offset, std::size_t width) const;
    std::optional<Header> header(Object object) const;
    // The reference at a position of a container, which must have room for `total` of them.
    std::optional<Object> reference(const Header& container, std::uint64_t total, std::uint64_t position) const;
    bool equals(Object text, std::string_view ascii) const;

    std::string bytes_;
    std::size_t offsetWidth_ = 0;
    std::size_t referenceWidth_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t root_ = 0;
    std::size_t table_ = 0;  // offset of the offset table; objects lie before it
};

// Writes a binary property list, objects first made first.
class BinaryPlistWriter {
public:
    using Object = std::uint32_t;

    // Short texts and numbers are shared by all who use them.
    Object string(std::u16string_view text);
    Object integer(std::uint64_t value) { return scalar(0x1, value); }
    Object uid(std::uint64_t value) { return scalar(0x8, value); }
    Object array(std::span<const Object> elements);
    Object dictionary(std::span<const std::pair<Object, Object>> members);

    std::string finish(Object root) const;

private:
    struct Item {
        unsigned type;        // the marker's upper half
        std::uint64_t value;  // of a scalar; else where its content begins
        std::uint64_t count;
    };

    Object scalar(unsigned type, std::uint64_t value);
    Object add(Item item);

    std::vector<Item> items_;
    std::u16string texts_;
    std::vector<Object> references_;
    TextMap<Object> shared_;
    std::unordered_map<std::uint64_t, Object> scalars_;
};

}  // namespace vemo
