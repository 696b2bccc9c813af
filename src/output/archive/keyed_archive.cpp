// SPDX-License-Identifier: MIT
#include "output/archive/keyed_archive.h"

#include <algorithm>

#include "base/text.h"

namespace vemo {

namespace {

constexpr std::string_view archiverName = "NSKeyedArchiver";
constexpr std::uint64_t archiveVersion = 100000;
constexpr std::u16string_view topmostClass = u"NSObject";
constexpr std::u16string_view nullObject = u"$null";
constexpr KeyedArchiver::Id rootId = 1;  // after the null object

constexpr std::size_t workPerByte = 16;  // what is written here takes less
constexpr std::size_t mostSuperclasses = 16;

}  // namespace

KeyedArchiver::KeyedArchiver() {
    add(plist_.string(nullObject));
    add(0);
}

KeyedArchiver::Id KeyedArchiver::add(Record record) {
    objects_.push_back(record);
    return static_cast<Id>(objects_.size() - 1);
}

KeyedArchiver::Id KeyedArchiver::text(std::u16string_view text) {
    const Record string = plist_.string(text);
    const auto [known, made] = texts_.try_emplace(string, 0);
    if (made) known->second = add(string);
    return known->second;
}

KeyedArchiver::Id KeyedArchiver::classRecord(ClassNames names) {
    const auto [known, made] = classes_.try_emplace(std::u16string(*names.begin()), 0);
    if (!made) return known->second;
    std::vector<Record> all;
    for (const std::u16string_view name : names) all.push_back(plist_.string(name));
    all.push_back(plist_.string(topmostClass));
    const std::pair<Record, Record> members[] = {{plist_.string(u"$classes"), plist_.array(all)},
                                                 {plist_.string(u"$classname"), all.front()}};
    return known->second = add(plist_.dictionary(members));
}

KeyedArchiver::Record KeyedArchiver::record(ClassNames names, std::span<const Field> fields) {
    std::vector<std::pair<Record, Record>> members;
    members.reserve(fields.size() + 1);
    for (const auto& [key, id] : fields) members.emplace_back(plist_.string(key), reference(id));
    members.emplace_back(plist_.string(u"$class"), reference(classRecord(names)));
    return plist_.dictionary(members);
}

KeyedArchiver::Id KeyedArchiver::list(std::span<const Id> elements) {
    std::vector<Record> references;
    references.reserve(elements.size());
    for (const Id element : elements) references.push_back(reference(element));
    const std::pair<Record, Record> members[] = {{plist_.string(u"NS.objects"), plist_.array(references)},
                                                 {plist_.string(u"$class"), reference(classRecord({u"NSArray"}))}};
    return add(plist_.dictionary(members));
}

KeyedArchiver::Id KeyedArchiver::object(ClassNames names, std::span<const Field> fields) {
    return add(record(names, fields));
}

std::string KeyedArchiver::finish(ClassNames names, std::span<const Field> fields) {
    objects_[rootId] = record(names, fields);
    const std::pair<Record, Record> top[] = {{plist_.string(u"root"), reference(rootId)}};
    const std::pair<Record, Record> archive[] = {{plist_.string(u"$version"), plist_.integer(archiveVersion)},
                                                 {plist_.string(u"$archiver"), plist_.string(toUtf16(archiverName))},
                                                 {plist_.string(u"$top"), plist_.dictionary(top)},
                                                 {plist_.string(u"$objects"), plist_.array(objects_)}};
    return plist_.finish(plist_.dictionary(archive));
}

KeyedUnarchiver::KeyedUnarchiver(BinaryPlistReader plist)
    : plist_(std::move(plist)), work_(plist_.size() * workPerByte) {}

std::optional<KeyedUnarchiver> KeyedUnarchiver::open(std::string bytes) {
    auto plist = BinaryPlistReader::open(std::move(bytes));
    if (!plist) return std::nullopt;
    KeyedUnarchiver archive(*std::move(plist));
    const BinaryPlistReader& reader = archive.plist_;
    const auto member = [&](std::string_view key) { return reader.member(reader.root(), key); };
    const auto archiver = member("$archiver"), version = member("$version"), top = member("$top"),
               objects = member("$objects");
    if (!archiver || !version || !top || !objects || !reader.arraySize(*objects)) return std::nullopt;
    if (reader.integer(*version) != archiveVersion || reader.string(*archiver) != toUtf16(archiverName))
        return std::nullopt;
    archive.objects_ = *objects;
    if (const auto root = reader.member(*top, "root")) archive.root_ = reader.uid(*root);
    return archive;
}

bool KeyedUnarchiver::spend(std::size_t work) {
    const bool affordable = work <= work_;
    work_ = affordable ? work_ - work : 0;
    return affordable;
}

std::optional<KeyedUnarchiver::Record> KeyedUnarchiver::record(Id object) {
    if (object == 0 || !spend(1)) return std::nullopt;
    return plist_.element(objects_, static_cast<std::size_t>(object));
}

std::optional<KeyedUnarchiver::Id> KeyedUnarchiver::field(Id object, std::string_view key) {
    const auto dictionary = record(object);
    const auto value = dictionary ? plist_.member(*dictionary, key) : std::nullopt;
    const auto id = value ? plist_.uid(*value) : std::nullopt;
    return id && *id != 0 ? id : std::nullopt;
}

const std::vector<std::string>* KeyedUnarchiver::classNames(Id object) {
    const auto id = field(object, "$class");
    if (!id) return nullptr;
    const auto [known, made] = classes_.try_emplace(*id);
    if (!made) return &known->second;
    const auto record = this->record(*id);
    const auto names = record ? plist_.member(*record, "$classes") : std::nullopt;
    const auto count = names ? plist_.arraySize(*names) : std::nullopt;
    if (!count || *count > mostSuperclasses) return &known->second;
    for (std::size_t i = 0; i < *count; ++i) {
        const auto element = plist_.element(*names, i);
        const auto name = element ? plist_.string(*element) : std::nullopt;
        if (!name || !spend(name->size())) break;
        known->second.push_back(toUtf8(std::u16string_view(*name).substr(name->rfind(u'.') + 1)));
    }
    return &known->second;
}

bool KeyedUnarchiver::is(Id object, std::string_view className) {
    const auto* names = classNames(object);
    return names && std::find(names->begin(), names->end(), className) != names->end();
}

std::optional<std::u16string> KeyedUnarchiver::text(Id object) {
    const auto string = record(object);
    auto text = string ? plist_.string(*string) : std::nullopt;
    return text && spend(text->size()) ? text : std::nullopt;
}

std::optional<std::vector<KeyedUnarchiver::Id>> KeyedUnarchiver::list(Id object) {
    if (!is(object, "NSArray")) return std::nullopt;
    const auto dictionary = record(object);
    const auto array = dictionary ? plist_.member(*dictionary, "NS.objects") : std::nullopt;
    const auto count = array ? plist_.arraySize(*array) : std::nullopt;
    if (!count || !spend(*count)) return std::nullopt;
    std::vector<Id> elements(*count);
    for (std::size_t i = 0; i < *count; ++i) {
        const auto element = plist_.element(*array, i);
        const auto id = element ? plist_.uid(*element) : std::nullopt;
        if (!id) return std::nullopt;
        elements[i] = *id;
    }
    return elements;
}

}  // namespace vemo
