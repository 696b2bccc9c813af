// SPDX-License-Identifier: MIT
#include <algorithm>

#include "output/archive/binary_plist.h"

namespace vemo {

namespace {

constexpr std::size_t longestShared = 16;

// The fewest bytes that hold the value, of those the format has.
std::size_t widthOf(std::uint64_t value) {
    return value < 0x100 ? 1 : value < 0x10000 ? 2 : value < 0x100000000 ? 4 : 8;
}

void append(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = width; i-- > 0;) bytes += static_cast<char>(value >> (8 * i) & 0xff);
}

void appendInteger(std::string& bytes, std::uint64_t value) {
    const std::size_t width = widthOf(value);
    bytes += static_cast<char>(0x10 | (width == 8 ? 3 : width == 4 ? 2 : width == 2 ? 1 : 0));
    append(bytes, value, width);
}

void appendMarker(std::string& bytes, unsigned type, std::uint64_t count) {
    bytes += static_cast<char>(type << 4 | std::min<std::uint64_t>(count, 0xf));
    if (count >= 0xf) appendInteger(bytes, count);
}

}  // namespace

BinaryPlistWriter::Object BinaryPlistWriter::add(Item item) {
    items_.push_back(item);
    return static_cast<Object>(items_.size() - 1);
}

BinaryPlistWriter::Object BinaryPlistWriter::scalar(unsigned type, std::uint64_t value) {
    if (value >> 60 != 0) return add({type, value, 0});
    const auto [place, made] = scalars_.try_emplace(value << 4 | type, 0);
    if (made) place->second = add({type, value, 0});
    return place->second;
}

BinaryPlistWriter::Object BinaryPlistWriter::string(std::u16string_view text) {
    if (text.size() <= longestShared) {
        const auto known = shared_.find(text);
        if (known != shared_.end()) return known->second;
    }
    const bool ascii = std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
    const Object object = add({ascii ? 0x5u : 0x6u, texts_.size(), text.size()});
    texts_ += text;
    if (text.size() <= longestShared) shared_.emplace(text, object);
    return object;
}

BinaryPlistWriter::Object BinaryPlistWriter::array(std::span<const Object> elements) {
    const Object object = add({0xa, references_.size(), elements.size()});
    references_.insert(references_.end(), elements.begin(), elements.end());
    return object;
}

BinaryPlistWriter::Object BinaryPlistWriter::dictionary(std::span<const std::pair<Object, Object>> members) {
    const Object object = add({0xd, references_.size(), members.size()});
    for (const auto& [key, value] : members) references_.push_back(key);
    for (const auto& [key, value] : members) references_.push_back(value);
    return object;
}

std::string BinaryPlistWriter::finish(Object root) const {
    std::string bytes = "bplist00";
    std::vector<std::uint64_t> offsets;
    offsets.reserve(items_.size());
    const std::size_t referenceWidth = widthOf(items_.size());
    for (const Item& item : items_) {
        offsets.push_back(bytes.size());
        const std::uint64_t references = item.type == 0xd ? 2 * item.count : item.count;
        switch (item.type) {
            case 0x1:
                appendInteger(bytes, item.value);
                break;
            case 0x8: {
                const std::size_t width = widthOf(item.value);
                bytes += static_cast<char>(0x80 | (width - 1));
                append(bytes, item.value, width);
                break;
            }
            case 0x5:
            case 0x6:
                appendMarker(bytes, item.type, item.count);
                for (std::uint64_t i = 0; i < item.count; ++i)
                    append(bytes, texts_[item.value + i], item.type == 0x5 ? 1 : 2);
                break;
            default:
                appendMarker(bytes, item.type, item.count);
                for (std::uint64_t i = 0; i < references; ++i)
                    append(bytes, references_[item.value + i], referenceWidth);
        }
    }
    const std::size_t table = bytes.size();
    const std::size_t offsetWidth = widthOf(table);
    for (const std::uint64_t offset : offsets) append(bytes, offset, offsetWidth);
    append(bytes, 0, 6);
    append(bytes, offsetWidth, 1);
    append(bytes, referenceWidth, 1);
    append(bytes, items_.size(), 8);
    append(bytes, root, 8);
    append(bytes, table, 8);
    return bytes;
}

}  // namespace vemo
