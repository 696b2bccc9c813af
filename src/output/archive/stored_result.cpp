// SPDX-License-Identifier: MIT
#include "output/archive/stored_result.h"

#include <algorithm>

#include "base/text.h"
#include "output/archive/keyed_archive.h"
#include "records/run_types.h"
#include "vemo/archive.h"

namespace vemo {

namespace {

using Id = KeyedArchiver::Id;
using Field = KeyedArchiver::Field;

template <class Item, class Encode>
Id encodeList(KeyedArchiver& archive, const std::vector<Item>& items, Encode&& encode) {
    std::vector<Id> ids;
    ids.reserve(items.size());
    for (const Item& item : items) ids.push_back(encode(archive, item));
    return archive.list(ids);
}

std::vector<Field> fieldsOfRun(KeyedArchiver& archive, std::u16string_view text, RunType type) {
    std::vector<Field> fields;
    if (type != RunType::none) fields.emplace_back(u"type", archive.text(runTypeCode(type)));
    fields.emplace_back(u"text", archive.text(text));
    return fields;
}

std::vector<Field> fieldsOfValue(KeyedArchiver& archive, const FormattedValue& value) {
    std::vector<Field> fields;
    if (value.regular) fields.emplace_back(u"regular", archive.text(*value.regular));
    if (value.shortText) fields.emplace_back(u"short", archive.text(*value.shortText));
    return fields;
}

// Documents repeat themselves: short runs that are equal become one object.
class TextEncoder {
public:
    Id operator()(KeyedArchiver& archive, const AttributedText& attributed) {
        const Field fields[] = {elements(archive, attributed)};
        return archive.object({u"AttributedText"}, fields);
    }
    Field elements(KeyedArchiver& archive, const AttributedText& attributed) {
        std::vector<Id> runs;
        runs.reserve(attributed.elementsCount());
        attributed.enumerate([&](std::u16string_view text, RunType type, std::size_t) {
            if (text.size() > longestShared) return runs.push_back(encodeRun(archive, text, type));
            const auto [known, made] = runs_.try_emplace(std::u16string(text) + static_cast<char16_t>(type), 0);
            if (made) known->second = encodeRun(archive, text, type);
            runs.push_back(known->second);
        });
        return {u"elements", archive.list(runs)};
    }

private:
    static constexpr std::size_t longestShared = 16;

    static Id encodeRun(KeyedArchiver& archive, std::u16string_view text, RunType type) {
        return archive.object({u"AttributedTextElement"}, fieldsOfRun(archive, text, type));
    }

    TextMap<Id> runs_;
};

Id encodeValue(KeyedArchiver& archive, const FormattedValue& value) {
    return archive.object({u"FormattedValue"}, fieldsOfValue(archive, value));
}

std::optional<std::u16string> decodeString(KeyedUnarchiver& archive, KeyedUnarchiver::Id object, std::string_view key) {
    const auto field = archive.field(object, key);
    return field ? archive.text(*field) : std::nullopt;
}

template <class Item, class Decode>
std::optional<std::vector<Item>> decodeList(KeyedUnarchiver& archive, KeyedUnarchiver::Id object, std::string_view key,
                                            Decode decode) {
    const auto field = archive.field(object, key);
    const auto ids = field ? archive.list(*field) : std::nullopt;
    if (!ids) return std::nullopt;
    std::vector<Item> items;
    for (const KeyedUnarchiver::Id id : *ids) {
        auto item = decode(archive, id);
        if (!item) return std::nullopt;
        items.push_back(*std::move(item));
    }
    return items;
}

std::optional<AttributedText> decodeRun(KeyedUnarchiver& archive, KeyedUnarchiver::Id object) {
    if (!archive.is(object, "AttributedTextElement")) return std::nullopt;
    const auto type = decodeString(archive, object, "type");
    const auto text = decodeString(archive, object, "text");
    if (!text) return std::nullopt;
    return AttributedText(*text, runTypeWithCode(type.value_or(u"")));
}

std::optional<AttributedText> decodeText(KeyedUnarchiver& archive, KeyedUnarchiver::Id object) {
    if (!archive.is(object, "AttributedText")) return std::nullopt;
    const auto runs = decodeList<AttributedText>(archive, object, "elements", decodeRun);
    if (!runs) return std::nullopt;
    AttributedText text;
    for (const AttributedText& run : *runs) text.append(run);
    return text;
}

std::optional<FormattedValue> decodeValue(KeyedUnarchiver& archive, KeyedUnarchiver::Id object) {
    if (!archive.is(object, "FormattedValue")) return std::nullopt;
    FormattedValue value;
    value.regular = decodeString(archive, object, "regular");
    value.shortText = decodeString(archive, object, "short");
    return value;
}

// The root object of an archive, read by `decode`.
template <class Decode>
auto unarchived(std::string bytes, Decode decode) -> decltype(decode(std::declval<KeyedUnarchiver&>(), 0)) {
    auto archive = KeyedUnarchiver::open(std::move(bytes));
    if (!archive || !archive->root()) return std::nullopt;
    auto record = decode(*archive, *archive->root());
    if (archive->isSpent()) return std::nullopt;
    return record;
}

}  // namespace

std::string archived(const AttributedTextElement& element) {
    KeyedArchiver archive;
    return archive.finish({u"AttributedTextElement"}, fieldsOfRun(archive, element.text, element.type));
}

std::string archived(const AttributedText& text) {
    KeyedArchiver archive;
    const Field fields[] = {TextEncoder().elements(archive, text)};
    return archive.finish({u"AttributedText"}, fields);
}

std::string archived(const FormattedValue& value) {
    KeyedArchiver archive;
    return archive.finish({u"FormattedValue"}, fieldsOfValue(archive, value));
}

std::optional<AttributedTextElement> unarchivedElement(std::string bytes) {
    const auto run = unarchived(std::move(bytes), decodeRun);
    return run ? std::optional(run->elementAt(0)) : std::nullopt;
}

std::optional<AttributedText> unarchivedText(std::string bytes) {
    return unarchived(std::move(bytes), decodeText);
}

std::optional<FormattedValue> unarchivedValue(std::string bytes) {
    return unarchived(std::move(bytes), decodeValue);
}

std::string VemoEngineResultSerializerResult::encode() const {
    KeyedArchiver archive;
    const Field fields[] = {{u"attributes", encodeList(archive, attributedText, TextEncoder())},
                            {u"format", encodeList(archive, formattedResult, encodeValue)}};
    return archive.finish({u"VemoEngineResultSerializerResult"}, fields);
}

std::optional<VemoEngineResultSerializerResult> VemoEngineResultSerializerResult::decode(std::string bytes) {
    auto archive = KeyedUnarchiver::open(std::move(bytes));
    if (!archive || !archive->root() || !archive->is(*archive->root(), "VemoEngineResultSerializerResult"))
        return std::nullopt;
    auto texts = decodeList<AttributedText>(*archive, *archive->root(), "attributes", decodeText);
    if (!texts) return std::nullopt;
    auto values = decodeList<FormattedValue>(*archive, *archive->root(), "format", decodeValue);
    if (!values || archive->isSpent()) return std::nullopt;
    return VemoEngineResultSerializerResult{*std::move(texts), *std::move(values)};
}

}  // namespace vemo
