// SPDX-License-Identifier: MIT
// A line's result is one packed block: whatever went in comes out, and it tells whether it would still hold.

#include "records/line_result.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "records/context_parts.h"

namespace vemo {
namespace {

using Entries = std::map<std::u16string, IsEquatable>;

std::u16string anyText() {
    return *rc::gen::container<std::u16string>(
        rc::gen::oneOf(rc::gen::inRange<char16_t>(0, 0x80), rc::gen::arbitrary<char16_t>()));
}

std::vector<std::u16string> anyTexts() {
    std::vector<std::u16string> texts(static_cast<std::size_t>(*rc::gen::inRange(0, 4)));
    for (std::u16string& text : texts) text = anyText();
    return texts;
}

// Under few keys, so that they meet; one in three was seen to be absent.
ContextMap anyEntries(bool absent) {
    ContextMap map;
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
        const std::u16string key = u"k" + std::u16string(1, static_cast<char16_t>(u'a' + *rc::gen::inRange(0, 9)));
        const int kind = *rc::gen::inRange(0, 3);
        const DecimalNumber number = DecimalNumber::fromInt64(*rc::gen::inRange(0, 3));
        if (kind == 0 && absent)
            map.set(key, IsEquatable(Value()));
        else if (kind == 1)
            map.set(key, IsEquatable(std::u16string(u"text")));
        else
            map.set(key, IsEquatable(Value(number)));
    }
    return map;
}

struct Parts {
    Value value;
    ContextMap updates, dependencies;
    AttributedText text;
    FormattedValue formatted;
    QuickTypeData quickType;
    std::u16string log;
    LineRemarks remarks;
    bool repeats = false;

    LineResultPointer made() const {
        return LineResult::make(value, updates, dependencies, text, formatted, quickType, log, remarks, repeats);
    }
};

Parts anyParts() {
    Parts parts;
    if (*rc::gen::arbitrary<bool>()) parts.value = Value(DecimalNumber::fromInt64(*rc::gen::inRange(0, 9)));
    parts.updates = anyEntries(false);
    parts.dependencies = anyEntries(true);
    const int runs = *rc::gen::inRange(0, 6);
    for (int i = 0; i < runs; ++i)
        parts.text.append(AttributedText(anyText(), static_cast<RunType>(*rc::gen::inRange(0, 11))));
    if (*rc::gen::arbitrary<bool>()) parts.formatted.regular = anyText();
    if (*rc::gen::arbitrary<bool>()) parts.formatted.shortText = anyText();
    if (*rc::gen::inRange(0, 3) == 0) parts.formatted.shortText = parts.formatted.regular;
    parts.quickType = {anyTexts(), anyTexts()};
    parts.log = anyText();
    for (const std::u16string& message : anyTexts()) {
        Note note;
        note.kind = static_cast<NoteKind>(*rc::gen::inRange(0, static_cast<int>(NoteKind::dashedRange) + 1));
        note.start = *rc::gen::arbitrary<std::uint32_t>();
        note.length = *rc::gen::arbitrary<std::uint32_t>();
        note.message = message;
        parts.remarks.notes.push_back(note);
    }
    if (*rc::gen::arbitrary<bool>()) {
        Reason& reason = parts.remarks.reason.emplace();
        reason.code = static_cast<ReasonCode>(*rc::gen::inRange(0, static_cast<int>(ReasonCode::notUnderstood) + 1));
        reason.message = anyText();
    }
    parts.repeats = *rc::gen::arbitrary<bool>();
    return parts;
}

Entries entriesOf(const ContextMap& map) {
    Entries entries;
    map.all([&](const auto& entry) { return entries.emplace(entry.key(), entry.value()).second; });
    return entries;
}

RC_GTEST_PROP(LineResultLaws, giveBackAllThatWasPutIn, ()) {
    const Parts parts = anyParts();
    const LineResultPointer line = parts.made();
    RC_ASSERT(line->value() == parts.value);
    RC_ASSERT(line->repeatsLines() == parts.repeats);
    RC_ASSERT(line->text() == parts.text.compoundString());
    RC_ASSERT(line->attributedText() == parts.text);
    RC_ASSERT(line->formattedValue() == parts.formatted);
    RC_ASSERT(line->quickTypeData() == parts.quickType);
    RC_ASSERT(line->extensionsLog() == parts.log);
    RC_ASSERT(line->remarks().notes == parts.remarks.notes);
    RC_ASSERT(line->remarks().reason == parts.remarks.reason);
    Entries written;
    for (const auto& entry : line->updates()) written.emplace(entry->key(), entry->value());
    RC_ASSERT(written == entriesOf(parts.updates));
    ContextMap dependencies;
    line->addDependenciesTo(dependencies);
    RC_ASSERT(entriesOf(dependencies) == entriesOf(parts.dependencies));
    std::set<std::u16string> absent;
    line->absentKeys([&](std::u16string_view key) { RC_ASSERT(absent.emplace(key).second); });
    for (const auto& [key, value] : entriesOf(parts.dependencies))
        RC_ASSERT(absent.contains(key) == value.isEmptyValue());
}

// It holds where each entry is what it saw, and what was absent still is.
RC_GTEST_PROP(LineResultLaws, holdWhereTheyWouldReadTheSame, ()) {
    Parts parts;
    parts.dependencies = anyEntries(true);
    const LineResultPointer line = parts.made();
    Context context;
    const bool same = *rc::gen::arbitrary<bool>();
    for (const auto& [key, value] : entriesOf(same ? parts.dependencies : anyEntries(true)))
        if (!same || !value.isEmptyValue() || *rc::gen::arbitrary<bool>()) context.set(key, value, false);
    if (same) context.set(u"other", true);
    bool expected = true;
    for (const auto& [key, value] : entriesOf(parts.dependencies)) {
        const IsEquatable* present = context.find(key);
        const bool none = !present || present->isEmptyValue();
        expected = expected && (value.isEmptyValue() ? none : present && *present == value);
    }
    RC_ASSERT((!same || expected));
    RC_ASSERT(line->holdsIn(context) == expected);
}

// Applications are told of everything but what a line read and wrote.
TEST(LineResult, tellsApartWhatAnApplicationSees) {
    Parts parts;
    parts.value = Value(DecimalNumber::fromInt64(1));
    parts.text = AttributedText(u"1", RunType::number);
    parts.formatted = {u"1", u"1"};
    const auto changes = std::vector<std::function<void(Parts&)>>{
        [](Parts& p) { p.value = Value(DecimalNumber::fromInt64(2)); },
        [](Parts& p) { p.text = AttributedText(u"2", RunType::number); },
        [](Parts& p) { p.text = AttributedText(u"1", RunType::unit); },
        [](Parts& p) { p.formatted.shortText = u"one"; },
        [](Parts& p) { p.formatted.shortText.reset(); },
        [](Parts& p) { p.quickType.tokens = {u"1"}; },
        [](Parts& p) { p.quickType.expressions = {u"1"}; },
        [](Parts& p) { p.log = u"said"; },
        [](Parts& p) { p.remarks.notes.push_back({}); },
        [](Parts& p) { p.remarks.reason.emplace(); },
    };
    const LineResultPointer line = parts.made();
    Parts read = parts;
    read.dependencies.set(u"absent", IsEquatable(Value()));
    read.dependencies.set(u"seen", IsEquatable(true));
    read.updates.set(u"written", IsEquatable(true));
    EXPECT_TRUE(line->tellsSameAs(*line) && line->tellsSameAs(*parts.made()) && line->tellsSameAs(*read.made()));
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Parts other = read;
        changes[i](other);
        EXPECT_FALSE(line->tellsSameAs(*other.made())) << i;
        EXPECT_FALSE(other.made()->tellsSameAs(*line)) << i;
        EXPECT_TRUE(other.made()->tellsSameAs(*other.made())) << i;
    }
}

// What it holds outlives the maps it came from, and is counted.
TEST(LineResult, keepsItsEntriesAlive) {
    LineResultPointer line;
    std::size_t without = 0;
    {
        Parts parts;
        without = parts.made()->bytes();
        parts.updates.set(u"long", IsEquatable(std::u16string(1000, u'x')));
        parts.dependencies.set(u"seen", IsEquatable(true));
        line = parts.made();
        parts.updates.set(u"long", IsEquatable(false));
    }
    ASSERT_EQ(line->updates().size(), 1u);
    EXPECT_EQ(line->updates()[0]->value(), IsEquatable(std::u16string(1000, u'x')));
    EXPECT_EQ(line->seen()[0]->key(), u"seen");
    EXPECT_GT(line->bytes(), without);
}

}  // namespace
}  // namespace vemo
