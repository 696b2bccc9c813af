// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "output/archive/binary_plist.h"

namespace vemo {

// An archive of objects with named fields: a property list that holds one flat table of objects, in which they refer to
// each other by UID. Each object refers to a record of its class and that one's superclasses.
class KeyedArchiver {
public:
    using Id = std::uint32_t;
    using Field = std::pair<std::u16string_view, Id>;
    // A class and its superclasses, without the topmost one that all have.
    using ClassNames = std::initializer_list<std::u16string_view>;

    KeyedArchiver();

    Id text(std::u16string_view text);
    Id list(std::span<const Id> elements);
    Id object(ClassNames names, std::span<const Field> fields);
    // Archives the root object and gives the bytes. Once.
    std::string finish(ClassNames names, std::span<const Field> fields);

private:
    using Record = BinaryPlistWriter::Object;

    Id add(Record record);
    Record reference(Id id) { return plist_.uid(id); }
    Id classRecord(ClassNames names);
    Record record(ClassNames names, std::span<const Field> fields);

    BinaryPlistWriter plist_;
    std::vector<Record> objects_;
    TextMap<Id> classes_;
    std::unordered_map<Record, Id> texts_;
};

// Reads such an archive, whoever wrote it. The work that one archive can cause is limited in proportion to its size;
// once that much is spent, it reads as if nothing more were in it.
class KeyedUnarchiver {
public:
    using Id = std::uint64_t;

    // Nothing when the bytes are no such archive.
    static std::optional<KeyedUnarchiver> open(std::string bytes);

    std::optional<Id> root() const { return root_; }
    // True once something was left out because it is too much.
    bool isSpent() const { return work_ == 0; }
    // True for an object of the class or of a subclass. Names may be qualified by a module: "Module.Name".
    bool is(Id object, std::string_view className);
    // The object that a field refers to; nothing when there is no such field or it refers to nothing.
    std::optional<Id> field(Id object, std::string_view key);
    std::optional<std::u16string> text(Id object);
    std::optional<std::vector<Id>> list(Id object);

private:
    using Record = BinaryPlistReader::Object;

    explicit KeyedUnarchiver(BinaryPlistReader plist);
    bool spend(std::size_t work);
    std::optional<Record> record(Id object);
    const std::vector<std::string>* classNames(Id object);

    BinaryPlistReader plist_;
    Record objects_ = 0;
    std::optional<Id> root_;
    std::size_t work_;
    std::unordered_map<Id, std::vector<std::string>> classes_;
};

}  // namespace vemo
