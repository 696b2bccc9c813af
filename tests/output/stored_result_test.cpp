// SPDX-License-Identifier: MIT
#include "output/archive/stored_result.h"

#include <gtest/gtest.h>
#include <plist/plist.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>

#include "output/archive/keyed_archive.h"
#include "platform/file_io.h"
#include "support/calculators.h"
#include "support/temporary_folder.h"
#include "vemo/result_serializer.h"

namespace vemo::test {
namespace {

using namespace std::string_view_literals;

using Stored = VemoEngineResultSerializerResult;

class StoredResult : public testing::Test {
protected:
    StoredResult() { std::filesystem::create_directories(folder); }

    VemoEngine::Result calculated(std::string_view text) {
        engine.buildVemoWorker();
        return *engine.calculateSync(utf16(text), context);
    }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path() / "vemo_stored_result";
    const std::filesystem::path path = folder / "result";
    VemoEngine engine{fixedEnvironment()};
    Context context;
    VemoEngineResultSerializer serializer;
};

TEST_F(StoredResult, comesBackForDisplay) {
    // The astral characters, the null character and the empty line are what a file format may stumble over.
    const std::string_view text = "x = 5 inch in cm\n\n2 \xf0\x9f\x98\x80 + \0 1 // \xc3\xa9\nsum"sv;
    const auto result = calculated(text);
    ASSERT_EQ(result.lines.size(), 4u);
    serializer.serialize(result, path);
    const auto restored = serializer.deserialize(path);
    ASSERT_TRUE(restored);
    ASSERT_EQ(restored->lines.size(), result.lines.size());
    for (std::size_t i = 0; i < result.lines.size(); ++i) {
        EXPECT_EQ(restored->lines[i].attributedText(), result.lines[i].attributedText());
        EXPECT_EQ(restored->lines[i].formattedResult(), result.lines[i].formattedResult());
        EXPECT_EQ(restored->lines[i].quickTypeData(), QuickTypeData());
    }
    EXPECT_TRUE(restored->context->isEqual(Context()));
    EXPECT_FALSE(result.lines[0].quickTypeData().tokens.empty());
}

TEST_F(StoredResult, replacesTheFileAsAWhole) {
    std::ofstream(path) << "old";
    ::chmod(path.c_str(), 0640);
    serializer.serialize(calculated("1 + 1"), path);
    EXPECT_EQ(serializer.deserialize(path)->lines.size(), 1u);
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
    serializer.serialize(calculated("1\n2"), folder / "no such folder" / "result");
    serializer.serialize(calculated("1\n2"), folder);  // a folder can't be replaced
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
    EXPECT_EQ(files, std::vector{path});
}

TEST_F(StoredResult, givesNothingForOtherFiles) {
    EXPECT_FALSE(serializer.deserialize(path));
    EXPECT_FALSE(serializer.deserialize(folder));
    serializer.serialize(calculated(""), path);
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_FALSE(serializer.deserialize(path));  // no lines
    replaceFile(path, Stored{{AttributedText(u"1"), AttributedText(u"2")}, {FormattedValue()}}.encode());
    EXPECT_FALSE(serializer.deserialize(path));  // lists that don't go together

    KeyedArchiver archive;
    const KeyedArchiver::Field fields[] = {{u"attributes", archive.list({})}, {u"format", archive.list({})}};
    const std::string other = archive.finish({u"SomethingElse"}, fields);
    EXPECT_TRUE(KeyedUnarchiver::open(other));
    EXPECT_FALSE(Stored::decode(other));
}

TEST_F(StoredResult, survivesEveryTruncationAndFlippedByte) {
    const Stored stored{{AttributedText(u"5 inch in cm", RunType::number)}, {{u"12.7 cm", std::nullopt}}};
    const std::string bytes = stored.encode();
    ASSERT_TRUE(Stored::decode(bytes));
    for (std::size_t length = 0; length < bytes.size(); ++length) EXPECT_FALSE(Stored::decode(bytes.substr(0, length)));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const int mask : {0x01, 0x10, 0x80, 0xff}) {
            std::string damaged = bytes;
            damaged[i] = static_cast<char>(damaged[i] ^ mask);
            Stored::decode(damaged);  // whatever it gives
        }
    }
}

// Another reader of property lists finds the names and shapes of the format in what is written here.
TEST_F(StoredResult, isAKeyedArchiveToOthers) {
    const std::string bytes =
        Stored{{AttributedText(u"5 \u00b0C", RunType::unit)}, {{u"5 \u00b0C", std::nullopt}}}.encode();
    plist_t archive = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &archive);
    ASSERT_NE(archive, nullptr);
    const plist_t objects = plist_dict_get_item(archive, "$objects");
    const auto text = [](plist_t node) { return std::string(node ? plist_get_string_ptr(node, nullptr) : "(none)"); };
    const auto object = [&](plist_t record, const char* key) {
        std::uint64_t id = 0;
        plist_get_uid_val(plist_dict_get_item(record, key), &id);
        return plist_array_get_item(objects, static_cast<std::uint32_t>(id));
    };
    const auto className = [&](plist_t record) {
        return text(plist_dict_get_item(object(record, "$class"), "$classname"));
    };
    const auto only = [&](plist_t record) {
        std::uint64_t id = 0;
        const plist_t list = plist_dict_get_item(record, "NS.objects");
        EXPECT_EQ(plist_array_get_size(list), 1u);
        plist_get_uid_val(plist_array_get_item(list, 0), &id);
        return plist_array_get_item(objects, static_cast<std::uint32_t>(id));
    };

    std::uint64_t version = 0;
    plist_get_uint_val(plist_dict_get_item(archive, "$version"), &version);
    EXPECT_EQ(version, 100000u);
    EXPECT_EQ(text(plist_dict_get_item(archive, "$archiver")), "NSKeyedArchiver");
    EXPECT_EQ(text(plist_array_get_item(objects, 0)), "$null");
    const plist_t root = object(plist_dict_get_item(archive, "$top"), "root");
    EXPECT_EQ(className(root), "VemoEngineResultSerializerResult");
    const plist_t classes = plist_dict_get_item(object(root, "$class"), "$classes");
    EXPECT_EQ(text(plist_array_get_item(classes, plist_array_get_size(classes) - 1)), "NSObject");
    EXPECT_EQ(className(object(root, "attributes")), "NSArray");
    const plist_t attributed = only(object(root, "attributes"));
    EXPECT_EQ(className(attributed), "AttributedText");
    const plist_t run = only(object(attributed, "elements"));
    EXPECT_EQ(className(run), "AttributedTextElement");
    EXPECT_EQ(text(object(run, "type")), "unit");
    EXPECT_EQ(text(object(run, "text")),
              "5 \xc2\xb0"
              "C");
    const plist_t value = only(object(root, "format"));
    EXPECT_EQ(className(value), "FormattedValue");
    EXPECT_EQ(text(object(value, "regular")),
              "5 \xc2\xb0"
              "C");
    EXPECT_EQ(plist_dict_get_item(value, "short"), nullptr);

    // And what it writes is read here: the same tree, in an order and with widths of its own.
    char* copy = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(archive, &copy, &length);
    const auto restored = Stored::decode(std::string(copy, length));
    plist_to_bin_free(copy);
    plist_free(archive);
    ASSERT_TRUE(restored);
    EXPECT_EQ(restored->attributedText[0], AttributedText(u"5 \u00b0C", RunType::unit));
    EXPECT_EQ(restored->formattedResult[0].regular, u"5 \u00b0C");
}

TEST_F(StoredResult, takesTheOrdersOfOtherWriters) {
    KeyedArchiver archive;
    const KeyedArchiver::Field plain[] = {
        {u"text", archive.text(u"a")}, {u"type", archive.text(u"new code")}, {u"more", 0}};
    const KeyedArchiver::Id runs[] = {archive.object({u"Vemo.AttributedTextElement"}, plain)};
    const KeyedArchiver::Field elements[] = {{u"elements", archive.list(runs)}};
    const KeyedArchiver::Id texts[] = {archive.object({u"MutableAttributedText", u"AttributedText"}, elements)};
    const KeyedArchiver::Field value[] = {{u"regular", 0}, {u"short", archive.list({})}};  // no texts
    const KeyedArchiver::Id values[] = {archive.object({u"FormattedValue"}, value)};
    const KeyedArchiver::Field fields[] = {{u"format", archive.list(values)}, {u"attributes", archive.list(texts)}};
    const auto stored = Stored::decode(archive.finish({u"VemoEngineResultSerializerResult"}, fields));
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->attributedText[0], AttributedText(u"a"));
    EXPECT_EQ(stored->formattedResult[0], FormattedValue());
}

// A list of a text, a thousand times over, in a text that is there a thousand times: a billion runs from a few bytes.
TEST_F(StoredResult, limitsWhatAHostileFileCosts) {
    KeyedArchiver archive;
    const KeyedArchiver::Field text[] = {{u"text", archive.text(std::u16string(1000, u'x'))}};
    const std::vector<KeyedArchiver::Id> runs(1000, archive.object({u"AttributedTextElement"}, text));
    const KeyedArchiver::Field elements[] = {{u"elements", archive.list(runs)}};
    const std::vector<KeyedArchiver::Id> lines(1000, archive.object({u"AttributedText"}, elements));
    const KeyedArchiver::Field fields[] = {{u"attributes", archive.list(lines)}, {u"format", archive.list({})}};
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Stored::decode(archive.finish({u"VemoEngineResultSerializerResult"}, fields)));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));

    KeyedArchiver cycle;  // the list of lines is the root itself
    const KeyedArchiver::Field loop[] = {{u"attributes", 1}, {u"format", 1}, {u"elements", 1}, {u"NS.objects", 1}};
    EXPECT_FALSE(Stored::decode(cycle.finish({u"VemoEngineResultSerializerResult", u"NSArray"}, loop)));
}

RC_GTEST_PROP(StoredResultProperty, anyResultComesBackEqual, ()) {
    Stored stored;
    const auto arbitraryText = [] {
        return *rc::gen::container<std::u16string>(
            rc::gen::oneOf(rc::gen::inRange<char16_t>(0, 0x80), rc::gen::arbitrary<char16_t>()));
    };
    const auto lines = *rc::gen::inRange(0, 40);
    for (int i = 0; i < lines; ++i) {
        AttributedText text;
        const auto runs = *rc::gen::inRange(0, 20);
        for (int k = 0; k < runs; ++k)
            text.append(AttributedText(arbitraryText(), static_cast<RunType>(*rc::gen::inRange(0, 11))));
        stored.attributedText.push_back(text);
        FormattedValue value;
        if (*rc::gen::arbitrary<bool>()) value.regular = arbitraryText();
        if (*rc::gen::arbitrary<bool>()) value.shortText = arbitraryText();
        stored.formattedResult.push_back(value);
    }
    const auto restored = Stored::decode(stored.encode());
    RC_ASSERT(restored.has_value());
    RC_ASSERT(restored->attributedText == stored.attributedText);
    RC_ASSERT(restored->formattedResult == stored.formattedResult);
}

}  // namespace
}  // namespace vemo::test
