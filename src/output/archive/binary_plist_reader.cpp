// SPDX-License-Identifier: MIT
#include <algorithm>

#include "output/archive/binary_plist.h"

namespace vemo {

namespace {

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;
constexpr std::uint64_t mostKeys = 32;

enum Type : unsigned {
    integerType = 0x1,
    asciiType = 0x5,
    utf16Type = 0x6,
    uidType = 0x8,
    arrayType = 0xa,
    dictionaryType = 0xd
};

}  // namespace

std::optional<BinaryPlistReader> BinaryPlistReader::open(std::string bytes) {
    if (bytes.size() < magic.size() + trailerSize || !bytes.starts_with(magic)) return std::nullopt;
    BinaryPlistReader reader;
    reader.bytes_ = std::move(bytes);
    const std::size_t trailer = reader.bytes_.size() - trailerSize;
    const auto field = [&](std::size_t offset, std::size_t width) { return *reader.number(trailer + offset, width); };
    reader.offsetWidth_ = field(6, 1);
    reader.referenceWidth_ = field(7, 1);
    reader.count_ = field(8, 8);
    reader.root_ = field(16, 8);
    const std::uint64_t table = field(24, 8);
    const auto isWidth = [](std::size_t width) { return width >= 1 && width <= 8; };
    if (!isWidth(reader.offsetWidth_) || !isWidth(reader.referenceWidth_)) return std::nullopt;
    if (table < magic.size() || table > trailer || reader.root_ >= reader.count_) return std::nullopt;
    if (reader.count_ > (trailer - table) / reader.offsetWidth_) return std::nullopt;
    reader.table_ = table;
    return reader;
}

std::optional<std::uint64_t> BinaryPlistReader::number(std::size_t offset, std::size_t width) const {
    if (width > 8 || offset > bytes_.size() || width > bytes_.size() - offset) return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = (value << 8) | static_cast<unsigned char>(bytes_[offset + i]);
    return value;
}

std::optional<BinaryPlistReader::Header> BinaryPlistReader::header(Object object) const {
    if (object >= count_) return std::nullopt;
    const std::uint64_t offset = *number(table_ + static_cast<std::size_t>(object) * offsetWidth_, offsetWidth_);
    if (offset < magic.size() || offset >= table_) return std::nullopt;
    const auto marker = static_cast<unsigned char>(bytes_[offset]);
    Header header{static_cast<unsigned>(marker >> 4), static_cast<std::uint64_t>(marker & 0xf),
                  static_cast<std::size_t>(offset) + 1};
    if (header.count != 0xf || header.type == integerType || header.type == uidType) return header;
    const auto sized = number(header.content, 1);
    if (!sized || (*sized >> 4) != integerType || (*sized & 0xf) > 3) return std::nullopt;
    const std::size_t width = std::size_t(1) << (*sized & 0xf);
    const auto count = number(header.content + 1, width);
    if (!count) return std::nullopt;
    header.count = *count;
    header.content += 1 + width;
    return header;
}

std::optional<BinaryPlistReader::Object> BinaryPlistReader::reference(const Header& container, std::uint64_t total,
                                                                      std::uint64_t position) const {
    if (position >= total || container.content > table_) return std::nullopt;
    if (total > (table_ - container.content) / referenceWidth_) return std::nullopt;
    return number(container.content + static_cast<std::size_t>(position) * referenceWidth_, referenceWidth_);
}

std::optional<std::u16string> BinaryPlistReader::string(Object object) const {
    const auto found = header(object);
    if (!found || (found->type != asciiType && found->type != utf16Type)) return std::nullopt;
    const std::size_t width = found->type == asciiType ? 1 : 2;
    if (found->content > table_ || found->count > (table_ - found->content) / width) return std::nullopt;
    std::u16string text(static_cast<std::size_t>(found->count), u'\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char16_t>(*number(found->content + i * width, width));
    return text;
}

bool BinaryPlistReader::equals(Object text, std::string_view ascii) const {
    const auto found = header(text);
    if (!found || found->type != asciiType || found->count != ascii.size()) return false;
    return found->content <= table_ && ascii.size() <= table_ - found->content &&
           bytes_.compare(found->content, ascii.size(), ascii) == 0;
}

std::optional<std::uint64_t> BinaryPlistReader::integer(Object object) const {
    const auto found = header(object);
    if (!found || found->type != integerType || found->count > 3) return std::nullopt;
    return number(found->content, std::size_t(1) << found->count);
}

std::optional<std::uint64_t> BinaryPlistReader::uid(Object object) const {
    const auto found = header(object);
    if (!found || found->type != uidType) return std::nullopt;
    return number(found->content, static_cast<std::size_t>(found->count) + 1);
}

std::optional<std::size_t> BinaryPlistReader::arraySize(Object object) const {
    const auto found = header(object);
    if (!found || found->type != arrayType) return std::nullopt;
    if (found->content > table_ || found->count > (table_ - found->content) / referenceWidth_) return std::nullopt;
    return static_cast<std::size_t>(found->count);
}

std::optional<BinaryPlistReader::Object> BinaryPlistReader::element(Object array, std::size_t index) const {
    const auto found = header(array);
    if (!found || found->type != arrayType) return std::nullopt;
    return reference(*found, found->count, index);
}

std::optional<BinaryPlistReader::Object> BinaryPlistReader::member(Object dictionary, std::string_view key) const {
    const auto found = header(dictionary);
    if (!found || found->type != dictionaryType || found->count > mostKeys) return std::nullopt;
    for (std::uint64_t i = 0; i < found->count; ++i) {
        const auto name = reference(*found, 2 * found->count, i);
        if (!name) return std::nullopt;
        if (equals(*name, key)) return reference(*found, 2 * found->count, found->count + i);
    }
    return std::nullopt;
}

}  // namespace vemo
