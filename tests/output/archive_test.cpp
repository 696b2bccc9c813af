// SPDX-License-Identifier: MIT
// Property lists and archives in them: trees that come back, and bytes that anybody may have written.

#include "vemo/archive.h"

#include <gtest/gtest.h>
#include <plist/plist.h>
#include <rapidcheck/gtest.h>

#include <map>

#include "base/text.h"
#include "output/archive/keyed_archive.h"

namespace vemo::test {
namespace {

using Object = BinaryPlistWriter::Object;

// A tree as it is written, to be compared with what is read.
struct Node {
    enum Kind { text, integer, uid, array, dictionary } kind = text;
    std::u16string string;
    std::uint64_t number = 0;
    std::vector<Node> children;
    std::vector<std::string> keys;
};

std::u16string anyText(std::size_t most) {
    std::u16string text(*rc::gen::inRange<std::size_t>(0, most), u'x');
    for (char16_t& c : text) c = *rc::gen::oneOf(rc::gen::inRange<char16_t>(0, 0x80), rc::gen::arbitrary<char16_t>());
    return text;
}

std::uint64_t anyNumber() {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>()) >> *rc::gen::inRange(0, 64);
}

Node anyNode(int depth) {
    Node node;
    node.kind = static_cast<Node::Kind>(*rc::gen::inRange(0, depth > 0 ? 5 : 3));
    switch (node.kind) {
        case Node::text:
            node.string = anyText(30);
            break;
        case Node::integer:
        case Node::uid:
            node.number = anyNumber();
            break;
        case Node::array:
        case Node::dictionary:
            // Past 14, a count takes a number of its own; past 32 keys, nobody looks.
            for (int i = *rc::gen::element(0, 1, 3, 14, 15, 16); i > 0; --i) {
                node.children.push_back(anyNode(depth - 1));
                node.keys.push_back("key " + std::to_string(i));
            }
    }
    return node;
}

Object written(BinaryPlistWriter& plist, const Node& node) {
    std::vector<Object> elements;
    std::vector<std::pair<Object, Object>> members;
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        elements.push_back(written(plist, node.children[i]));
        members.emplace_back(plist.string(toUtf16(node.keys[i])), elements.back());
    }
    switch (node.kind) {
        case Node::text:
            return plist.string(node.string);
        case Node::integer:
            return plist.integer(node.number);
        case Node::uid:
            return plist.uid(node.number);
        case Node::array:
            return plist.array(elements);
        case Node::dictionary:
            break;
    }
    return plist.dictionary(members);
}

void expectSame(const BinaryPlistReader& plist, BinaryPlistReader::Object object, const Node& node) {
    const bool isArray = node.kind == Node::array;
    RC_ASSERT(plist.string(object) == (node.kind == Node::text ? std::optional(node.string) : std::nullopt));
    RC_ASSERT(plist.integer(object) == (node.kind == Node::integer ? std::optional(node.number) : std::nullopt));
    RC_ASSERT(plist.uid(object) == (node.kind == Node::uid ? std::optional(node.number) : std::nullopt));
    RC_ASSERT(plist.arraySize(object) == (isArray ? std::optional(node.children.size()) : std::nullopt));
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const auto child = isArray ? plist.element(object, i) : plist.member(object, node.keys[i]);
        RC_ASSERT(child.has_value());
        expectSame(plist, *child, node.children[i]);
    }
    RC_ASSERT(!plist.element(object, node.children.size()));
    RC_ASSERT(!plist.member(object, "no key"));
}

RC_GTEST_PROP(BinaryPlistLaws, bringBackAnyTree, ()) {
    const Node tree = anyNode(3);
    BinaryPlistWriter writer;
    const Object root = written(writer, tree);
    const auto plist = BinaryPlistReader::open(writer.finish(root));
    RC_ASSERT(plist.has_value());
    expectSame(*plist, plist->root(), tree);
}

// So many objects that references and offsets take two and four bytes.
TEST(BinaryPlist, widensWithItsObjects) {
    for (const std::size_t count : {100u, 300u, 70'000u}) {
        BinaryPlistWriter writer;
        std::vector<Object> numbers;
        for (std::size_t i = 0; i < count; ++i) numbers.push_back(writer.integer(i));
        EXPECT_EQ(writer.integer(count - 1), numbers.back());  // equal ones are shared
        const std::string bytes = writer.finish(writer.array(numbers));
        const auto plist = BinaryPlistReader::open(bytes);
        ASSERT_TRUE(plist && plist->arraySize(plist->root()) == count);
        for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(plist->integer(*plist->element(plist->root(), i)), i);
        plist_t other = nullptr;
        plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &other);
        EXPECT_EQ(plist_array_get_size(other), count);
        plist_free(other);
    }
}

TEST(BinaryPlist, looksThroughFewKeys) {
    for (const std::size_t count : {32u, 33u}) {
        BinaryPlistWriter writer;
        std::vector<std::pair<Object, Object>> members;
        for (std::size_t i = 0; i < count; ++i) {
            const Object key = writer.string(toUtf16(std::to_string(i)));
            members.emplace_back(key, key);
        }
        const auto plist = BinaryPlistReader::open(writer.finish(writer.dictionary(members)));
        EXPECT_EQ(plist->member(plist->root(), "7").has_value(), count == 32);
    }
}

// Whatever a position of the table leads to, and however its bytes were changed: an answer or nothing, within the file.
void readAll(const std::string& bytes) {
    const auto plist = BinaryPlistReader::open(bytes);
    if (!plist) return;
    for (const std::uint64_t object : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{2}, std::uint64_t{3},
                                       plist->root(), std::uint64_t{1} << 40, UINT64_MAX}) {
        EXPECT_LE(plist->string(object).value_or(u"").size(), bytes.size());
        plist->integer(object);
        plist->uid(object);
        plist->member(object, "key 1");
        const auto size = plist->arraySize(object).value_or(0);
        EXPECT_LE(size, bytes.size());
        for (const std::size_t index : {std::size_t{0}, size / 2, size, SIZE_MAX}) plist->element(object, index);
    }
}

TEST(BinaryPlist, standsAnyByte) {
    BinaryPlistWriter writer;
    const std::vector<Object> elements(20, writer.string(u"a text of more than one length: \u20ac"));
    const std::pair<Object, Object> members[] = {{writer.string(u"key 1"), writer.array(elements)},
                                                 {writer.string(u"key 2"), writer.uid(1u << 30)}};
    const std::string bytes = writer.finish(writer.dictionary(members));
    ASSERT_TRUE(BinaryPlistReader::open(bytes));
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        readAll(bytes.substr(0, length));
        readAll(bytes.substr(length));
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string damaged = bytes;
            damaged[i] = static_cast<char>(byte);
            readAll(damaged);
        }
    }
}

RC_GTEST_PROP(BinaryPlistLaws, standAnyBytesBeforeASoundEnd, ()) {
    const auto noise = *rc::gen::container<std::string>(rc::gen::oneOf(
        rc::gen::arbitrary<char>(), rc::gen::element('\x5f', '\x6f', '\xaf', '\xdf', '\x13', '\x8f', '\x00', '\xff')));
    std::string bytes = "bplist00" + noise;
    const std::size_t table = bytes.size();
    const auto count = *rc::gen::inRange<std::size_t>(1, 5);
    for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(*rc::gen::inRange<std::size_t>(0, table + 3));
    bytes += std::string(6, '\0') + '\x01' + static_cast<char>(*rc::gen::inRange(0, 10));
    for (const std::size_t number : {count, std::size_t{0}, table})
        for (int shift = 56; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift & 0xff);
    readAll(bytes);
}

TEST(KeyedArchive, readsWhatHasItsNamesAlone) {
    KeyedArchiver archive;
    const KeyedArchiver::Id long_ = archive.text(u"a text of more than sixteen units");
    EXPECT_EQ(archive.text(u"short"), archive.text(u"short"));
    const KeyedArchiver::Id both[] = {archive.text(u"short"), long_, 0};
    const KeyedArchiver::Field fields[] = {{u"list", archive.list(both)}, {u"none", 0}, {u"text", long_}};
    const std::string bytes = archive.finish({u"Sub", u"Super"}, fields);
    auto read = KeyedUnarchiver::open(bytes);
    ASSERT_TRUE(read && read->root());
    const auto root = *read->root();
    EXPECT_TRUE(read->is(root, "Sub") && read->is(root, "Super") && read->is(root, "NSObject"));
    EXPECT_FALSE(read->is(root, "sub") || read->is(0, "NSObject") || read->is(root + 1000, "Sub"));
    EXPECT_EQ(read->field(root, "none"), std::nullopt);
    EXPECT_EQ(read->text(*read->field(root, "text")), u"a text of more than sixteen units");
    EXPECT_EQ(read->text(root), std::nullopt);
    const auto list = read->list(*read->field(root, "list"));
    ASSERT_TRUE(list && list->size() == 3);
    EXPECT_EQ(read->text((*list)[0]), u"short");
    EXPECT_EQ(read->text((*list)[2]), std::nullopt);
    EXPECT_EQ(read->list(root), std::nullopt);
    EXPECT_FALSE(read->isSpent());
    // Questions cost work, of which a small file has little.
    for (int i = 0; i < 100'000 && !read->isSpent(); ++i) read->text(*list->begin());
    EXPECT_TRUE(read->isSpent());
    EXPECT_EQ(read->text(long_), std::nullopt);
    // Another name of the archiver, or another version, is another format.
    for (const char* name : {"NSKeyedArchiver", "$archiver", "$objects", "$top", "$version"}) {
        std::string other = bytes;
        other[other.find(name) + 2] = '_';
        EXPECT_FALSE(KeyedUnarchiver::open(other)) << name;
    }
}

RC_GTEST_PROP(ArchiveLaws, bringBackSingleRecords, ()) {
    const AttributedTextElement run{anyText(40), static_cast<RunType>(*rc::gen::inRange(0, 11))};
    RC_ASSERT(unarchivedElement(archived(run)) == run);
    AttributedText text;
    for (int i = *rc::gen::inRange(0, 6); i > 0; --i)
        text.append(AttributedText(anyText(20), static_cast<RunType>(*rc::gen::inRange(0, 11))));
    RC_ASSERT(unarchivedText(archived(text)) == text);
    FormattedValue value;
    if (*rc::gen::arbitrary<bool>()) value.regular = anyText(40);
    if (*rc::gen::arbitrary<bool>()) value.shortText = anyText(20);
    RC_ASSERT(unarchivedValue(archived(value)) == value);
    // One record is not another.
    RC_ASSERT(!unarchivedText(archived(run)));
    RC_ASSERT(!unarchivedValue(archived(text)));
    RC_ASSERT(!unarchivedElement(archived(value)));
}

TEST(Archive, standsAnyBit) {
    AttributedText text(u"5 inch", RunType::number);
    text.append(AttributedText(u" \u20ac", RunType::unit));
    const std::string bytes[] = {archived(text), archived(AttributedTextElement{u"5", RunType::number}),
                                 archived(FormattedValue{u"12.7 cm", u"12.7"})};
    for (const std::string& whole : bytes) {
        for (std::size_t i = 0; i < whole.size(); ++i) {
            for (int bit = 0; bit < 8; ++bit) {
                std::string damaged = whole;
                damaged[i] = static_cast<char>(damaged[i] ^ (1 << bit));
                const auto read = unarchivedText(damaged);
                EXPECT_TRUE(!read || read->compoundString().size() <= 2 * whole.size());
                unarchivedElement(damaged);
                unarchivedValue(damaged);
            }
            EXPECT_FALSE(unarchivedText(whole.substr(0, i)));
        }
    }
}

}  // namespace
}  // namespace vemo::test
