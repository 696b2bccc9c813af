// SPDX-License-Identifier: MIT
// Values against plain maps of their attributes, and lists of elements against plain texts.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <numeric>
#include <variant>

#include "records/element.h"
#include "records/remarks.h"

namespace vemo {
namespace {

using Mark = std::variant<std::u16string, DecimalNumber, double>;
using Model = std::map<Attribute, Mark>;

// A value made of a mark, and the same in the model; keys of numbers and of dates take only those.
void set(Value& value, Model& model, Attribute key, int mark) {
    const DecimalNumber number = DecimalNumber::fromInt64(mark);
    const std::u16string text(static_cast<std::size_t>(mark), u'x');
    switch (key) {
        case Attribute::decimal:
        case Attribute::opPriority:
        case Attribute::assignment:
            value = value.with(number, key);
            model[key] = number;
            break;
        case Attribute::date:
            value = value.with(Date(std::chrono::duration<double>(mark)));
            model[key] = static_cast<double>(mark);
            break;
        case Attribute::timeZone:
            value = value.with(TimeZone{text});
            model[key] = text;
            break;
        default:
            value = value.with(text, key);
            model[key] = text;
    }
}

std::pair<Value, Model> anyValue() {
    std::pair<Value, Model> result;
    const int steps = *rc::gen::inRange(0, 8);
    for (int i = 0; i < steps; ++i) {
        const auto key = static_cast<Attribute>(*rc::gen::inRange(0, static_cast<int>(attributeCount)));
        if (*rc::gen::inRange(0, 4) == 0) {
            result.first = result.first.without(key);
            result.second.erase(key);
        } else {
            set(result.first, result.second, key, *rc::gen::inRange(0, 3));
        }
    }
    return result;
}

bool agree(const Value& value, const Model& model) {
    std::uint16_t mask = 0;
    for (std::size_t i = 0; i < attributeCount; ++i) {
        const auto key = static_cast<Attribute>(i);
        const auto found = model.find(key);
        if (value.has(key) != (found != model.end())) return false;
        if (found == model.end()) {
            if (value.string(key) || value.decimal(key)) return false;
            continue;
        }
        mask = static_cast<std::uint16_t>(mask | Value::bit(key));
        if (const auto* number = std::get_if<DecimalNumber>(&found->second)) {
            if (value.decimal(key) != *number || value.string(key)) return false;
        } else if (const auto* text = std::get_if<std::u16string>(&found->second)) {
            const bool zone = key == Attribute::timeZone;
            if (zone ? value.timeZone()->identifier != *text : value.string(key) != *text) return false;
            if (value.is(key, *text) == zone || value.is(key, *text + u"x") || value.decimal(key)) return false;
        } else if (value.date()->time_since_epoch().count() != std::get<double>(found->second)) {
            return false;
        }
    }
    return value.mask() == mask && value.isEmpty() == model.empty();
}

RC_GTEST_PROP(ValueLaws, areThoseOfAMap, ()) {
    const auto [value, model] = anyValue();
    const auto [other, otherModel] = anyValue();
    RC_ASSERT(agree(value, model));
    Model merged = otherModel;
    merged.insert(model.begin(), model.end());
    RC_ASSERT(agree(value.merging(other), merged));
    RC_ASSERT((agree(value, model) && agree(other, otherModel)));  // neither has changed
    RC_ASSERT((value == other) == (model == otherModel));
    if (value == other) RC_ASSERT(value.hash() == other.hash());
    const auto key = static_cast<Attribute>(*rc::gen::inRange(0, static_cast<int>(attributeCount)));
    Model rest = merged;
    rest.erase(key);
    RC_ASSERT(agree(value.merging(other).without(key), rest));
}

// The same attributes in another order are the same value, however it came about.
RC_GTEST_PROP(ValueLaws, knowNoOrder, ()) {
    const auto [value, model] = anyValue();
    Value again;
    for (auto mark = model.rbegin(); mark != model.rend(); ++mark) {
        Value single;
        Model unused;
        const auto* text = std::get_if<std::u16string>(&mark->second);
        const auto* number = std::get_if<DecimalNumber>(&mark->second);
        set(single, unused, mark->first,
            text     ? static_cast<int>(text->size())
            : number ? static_cast<int>(number->toInt64())
                     : static_cast<int>(std::get<double>(mark->second)));
        again = single.merging(again);
    }
    RC_ASSERT((again == value && again.hash() == value.hash()));
    RC_ASSERT((again.description() == value.description() && again.shortDescription() == value.shortDescription()));
}

AttributedText anyAttributed(std::size_t mostRuns) {
    AttributedText text;
    const auto runs = *rc::gen::inRange<std::size_t>(0, mostRuns + 1);
    for (std::size_t i = 0; i < runs; ++i)
        text.append(AttributedText(*rc::gen::element<std::u16string>(u"", u" ", u"\t ", u"a", u"12", u"\U0001f600"),
                                   static_cast<RunType>(*rc::gen::inRange(0, 11))));
    return text;
}

// Runs are kept as they come, few or many; two texts put together are their runs put together.
RC_GTEST_PROP(AttributedTextLaws, appendRunByRun, ()) {
    const AttributedText first = anyAttributed(4), second = anyAttributed(4);
    AttributedText both = first, byRun;
    both.append(second);
    RC_ASSERT(both.elementsCount() == first.elementsCount() + second.elementsCount());
    RC_ASSERT(both.compoundString() == first.compoundString() + second.compoundString());
    std::vector<RunType> types;
    std::size_t place = 0, index = 0;
    both.enumerate([&](std::u16string_view text, RunType type, std::size_t location) {
        RC_ASSERT(location == place);
        RC_ASSERT((both.elementAt(index++) == AttributedTextElement{std::u16string(text), type}));
        place += text.size();
        byRun.append(AttributedText(text, type));
        if (type != RunType::none && std::find(types.begin(), types.end(), type) == types.end()) types.push_back(type);
        RC_ASSERT(both.hasAttributeOf(type));
    });
    RC_ASSERT(place == both.compoundString().size());
    RC_ASSERT(byRun == both);
    RC_ASSERT(both.usedAttributes() == types);
}

// Ranges are those of the joined text, whatever was asked before, in slices, and after a replacement.
RC_GTEST_PROP(ElementListLaws, knowWhereTheirTextsAre, ()) {
    ElementList list;
    const auto count = *rc::gen::inRange<std::size_t>(0, 8);
    for (std::size_t i = 0; i < count; ++i) {
        Value value;
        Model unused;
        if (*rc::gen::arbitrary<bool>())
            set(value, unused, static_cast<Attribute>(*rc::gen::inRange(0, static_cast<int>(attributeCount))), 1);
        list.append(makeElement(value, anyAttributed(3)));
    }
    const auto start = *rc::gen::inRange<std::size_t>(0, 50);
    list.setLocation(start);
    for (int round = 0; round < 6; ++round) {
        const auto from = *rc::gen::inRange<std::size_t>(0, list.size() + 1);
        const auto to = *rc::gen::inRange<std::size_t>(from, list.size() + 1);
        std::u16string before, within;
        std::uint16_t mask = 0;
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (i < to) (i < from ? before : within) += list[i].text();
            mask = static_cast<std::uint16_t>(mask | list[i].value.mask());
        }
        RC_ASSERT(list.attributes() == mask);
        RC_ASSERT((list.rangeOf(from, to) == TextRange{start + before.size(), within.size()}));
        const ElementList part = list.slice(from, to);
        RC_ASSERT(part.location() == start + before.size());
        RC_ASSERT((part.text() == within && part.attributedText() == list.attributedText(from, to)));
        RC_ASSERT(part.rangeOf(0, part.size()) == list.rangeOf(from, to));
        const TextRange trimmedRange = list.trimmedRangeOf(from, to);
        RC_ASSERT(trimmedRange.in(std::u16string(start, u'-') + list.text()) == trimmed(within));
        if (round % 2 == 1) {
            list.rangeOf(list.size(), list.size());  // it remembers where it looked last
            list.replace(from, to - from, makeElement({}, AttributedText(u"new")));
            RC_ASSERT(list[from] == Element({}, AttributedText(u"new")));
        }
    }
}

TEST(Remarks, keepTheFirstOfAKind) {
    Remarks remarks;
    remarks.note(NoteKind::unusedValue, {2, 3}, u"first", Value(DecimalNumber::fromInt64(1)));
    remarks.note(NoteKind::unusedValue, {2, 3}, u"second");
    remarks.note(NoteKind::unknownWord, {2, 3}, u"another kind");
    remarks.note(NoteKind::unusedValue, {2, 4}, u"another range");
    ASSERT_EQ(remarks.notes().size(), 3u);
    EXPECT_EQ(remarks.notes()[0].first, u"first");
    EXPECT_FALSE(remarks.reason());
    remarks.reason(ReasonCode::noRate, u"cause");
    remarks.reason(ReasonCode::missingOperand, u"consequence");
    EXPECT_EQ(remarks.reason()->first, u"cause");
}

TEST(Remarks, knowWhatIsBesideAPrice) {
    Remarks remarks;
    EXPECT_FALSE(remarks.isBesidePrice({0, 5}));
    remarks.setPrice({{2, 10}, {{4, 3}, {9, 1}}});
    const std::pair<TextRange, bool> cases[] = {{{2, 2}, true},  {{1, 2}, false},  {{3, 2}, false},
                                                {{6, 1}, false}, {{7, 2}, true},   {{9, 1}, false},
                                                {{10, 2}, true}, {{10, 3}, false}, {{2, 10}, false}};
    for (const auto& [range, beside] : cases)
        EXPECT_EQ(remarks.isBesidePrice(range), beside) << range.location << " " << range.length;
}

}  // namespace
}  // namespace vemo
