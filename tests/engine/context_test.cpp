// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <map>
#include <unordered_map>
#include <vector>

#include "records/context_parts.h"

namespace vemo {
namespace {

Value number(int n) {
    return Value(DecimalNumber::fromInt64(n));
}

struct Counter : ContextDelegate {
    int calls = 0;
    void contextUpdated(Context&) override { ++calls; }
};

TEST(Context, tellsItsDelegateOfEveryWriteUnlessPaused) {
    Context context;
    Counter counter;
    context.setDelegate(&counter);
    context.set(u"missing", std::nullopt);
    context.set(u"a", number(1));
    EXPECT_EQ(counter.calls, 2);
    context.beginUpdates();
    context.set(u"a", number(2));
    context.endUpdates(false);
    EXPECT_EQ(counter.calls, 2);
    context.syncUpdate([&] { context.set(u"b", number(3)); });
    EXPECT_EQ(counter.calls, 3);
}

TEST(Context, recordsUpdatesOnlyWhenAsked) {
    Context source;
    source.set(u"a", number(1));
    source.set(u"b", number(2), false);
    EXPECT_EQ(source.updates().size(), 1u);
    Context target;
    target.add(source.data(), false);
    EXPECT_TRUE(target.updates().empty());
    target.add(source.data(), true);
    EXPECT_TRUE(target.updates() == source.data());
}

TEST(Context, recordsWhatReadersSaw) {
    Context context;
    context.addDependencyOn(u"k", std::nullopt, Value());
    EXPECT_TRUE(context.dependencyFor(u"k")->isEmptyValue());
    context.set(u"k", number(1));
    context.addDependencyOn(u"k", std::nullopt, Value());
    EXPECT_EQ(*context.dependencyFor(u"k"), IsEquatable(number(1)));
    context.set(u"k", number(2));
    EXPECT_TRUE(context.hasUpdatesFor(context.dependencies()));
    context.set(u"k", std::nullopt);
    EXPECT_FALSE(context.hasUpdatesFor(context.dependencies()));
    context.addDependencyOn(u"k");
    EXPECT_FALSE(context.hasDependencyOn(u"k"));
}

TEST(Context, comparesByContentAndType) {
    Context a, b;
    a.set(u"t", std::u16string(u"\u00e9"));
    b.set(u"t", std::u16string(u"e\u0301"));
    EXPECT_TRUE(a.isEqual(b));
    b.set(u"n", number(1), false);
    EXPECT_FALSE(a.isEqual(b));
    EXPECT_NE(IsEquatable(true), IsEquatable(std::int64_t{1}));
    const IsEquatable nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nan.isEqual(nan));
}

TEST(Context, copiesShareNothingThatChanges) {
    Context original;
    original.setValue(number(1), u"a");
    Context copy = original.copyContext();
    copy.setValue(number(2), u"a");
    copy.setValue(number(3), u"b");
    EXPECT_EQ(*original.getVariable(u"a"), number(1));
    EXPECT_EQ(original.getVariable(u"b"), nullptr);
    EXPECT_TRUE(copy.mayNameVariable(u'b'));
    EXPECT_FALSE(original.mayNameVariable(u'b'));
}

TEST(Context, noticesNamesThatGoOnAfterTheirHead) {
    Context context;
    context.setValue(number(1), u"rate");
    EXPECT_EQ(context.find(namesKey(u"rate")), nullptr);
    context.setValue(number(1), u"rate two");
    const IsEquatable one = *context.find(namesKey(u"rate"));
    context.setValue(number(1), u"rate3");  // all of this is its head, and the line depends on the variable itself
    EXPECT_EQ(*context.find(namesKey(u"rate")), one);
    EXPECT_EQ(context.find(namesKey(u"rate3")), nullptr);
    context.setValue(number(1), u"rate of tax");
    EXPECT_NE(*context.find(namesKey(u"rate")), one);
    context.setValue(number(2), u"rate of tax");  // a new value is no new name
    context.setValue(std::nullopt, u"rate of tax");
    EXPECT_EQ(*context.find(namesKey(u"rate")), one);
    context.setValue(std::nullopt, u"rate two");
    EXPECT_EQ(context.find(namesKey(u"rate")), nullptr);
    Context other;
    other.setValue(number(1), u"rate four");
    context.setValue(number(1), u"rate five");
    const IsEquatable before = *context.find(namesKey(u"rate"));
    context.add(other.data(), false);
    EXPECT_NE(*context.find(namesKey(u"rate")), before);
    EXPECT_NE(*context.find(namesKey(u"rate")), *other.find(namesKey(u"rate")));  // there are two now
    context.set(namesKey(u"rate"), std::u16string(u"a host's own"));
    context.setValue(number(1), u"rate six");
    EXPECT_NE(context.find(namesKey(u"rate"))->get<std::int64_t>(), nullptr);
}

TEST(ValuesList, comparesAndReleasesLongLists) {
    ValuesList a, b;
    for (int i = 0; i < 300000; ++i) {
        a = a.appending(number(i));
        b = b.appending(number(i));
    }
    EXPECT_EQ(a, b);
    EXPECT_NE(a.appending(number(1)), b.appending(number(2)));
    EXPECT_NE(a.appending(number(1)), b);
}

TEST(ValuesList, forksKeepTheirOwnValues) {
    ValuesList base;
    for (int i = 0; i < 40; ++i) base = base.appending(number(i));
    const ValuesList one = base.appending(number(100)).appending(number(101));
    const ValuesList two = base.appending(number(200));
    EXPECT_EQ(one.newest(), number(101));
    EXPECT_EQ(two.newest(), number(200));
    EXPECT_TRUE(base.appending(number(100)).appending(number(101)).isSameAs(one));  // the same values again share
    EXPECT_EQ(base.size(), 40u);
    ValuesList back = one;
    back.dropNewest();
    back.dropNewest();
    EXPECT_EQ(back, base);
    EXPECT_EQ(back.appending(number(300)), base.appending(number(300)));
    ValuesList rest = two;
    for (int i = 0; i < 41; ++i) rest.dropNewest();
    EXPECT_TRUE(rest.empty());
    EXPECT_EQ(rest, ValuesList());
}

// Any history of changes and of copies, some of which are let go, gives what plain maps give.
RC_GTEST_PROP(LayeredMapLaws, isAMapWhoseCopiesStay, ()) {
    using Model = std::map<std::u16string, int>;
    std::vector<std::pair<LayeredMap<int>, Model>> maps(1);
    for (const int step : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 1 << 20))) {
        const std::string text = std::to_string(step / 16 % 60);
        const std::u16string key(text.begin(), text.end());
        auto& [chosenMap, chosenModel] = maps[static_cast<std::size_t>(step) / 1024 % maps.size()];
        LayeredMap<int>& map = chosenMap;
        Model& model = chosenModel;
        switch (step % 16) {
            case 0:
                maps.push_back(maps[static_cast<std::size_t>(step) / 1024 % maps.size()]);
                break;
            case 1:
                maps.emplace_back(map.layer(), model);
                break;
            case 2:
                if (maps.size() > 1) maps.pop_back();
                break;
            case 3:
            case 4:
            case 5:
                RC_ASSERT(map.erase(key) == (model.erase(key) > 0));
                break;
            case 6: {
                LayeredMap<int> other;
                other.set(key, int{step});
                other.all([&](const auto& entry) { return map.setShared(entry) || true; });
                model[key] = step;
                break;
            }
            default:
                RC_ASSERT(map.set(key, int{step}) == model.insert_or_assign(key, step).second);
        }
    }
    for (const auto& [map, expected] : maps) {
        Model seen;
        map.all([&](const auto& entry) { return seen.emplace(entry.key(), entry.value()).second; });
        RC_ASSERT(seen == expected);
        RC_ASSERT(map.size() == expected.size());
        for (const auto& [key, value] : expected) RC_ASSERT(map.find(key) && *map.find(key) == value);
    }
}

// A chain of copies, each of which writes a little, as a host makes that keeps a context from line to line.
TEST(LayeredMap, staysFlatOverManyCopies) {
    LayeredMap<int> map;
    std::vector<LayeredMap<int>> history;
    const auto key = [](int number) {
        const std::string text = std::to_string(number);
        return std::u16string(text.begin(), text.end());
    };
    for (int i = 0; i < 20000; ++i) {
        history.push_back(map);
        map.set(key(i), int{i});
        map.erase(key(i / 2));
    }
    for (const std::size_t at : {3u, 999u, 19999u}) {
        EXPECT_EQ(history[at].size(), at - (at + 1) / 2) << at;
        EXPECT_NE(history[at].find(key(static_cast<int>(at) - 1)), nullptr) << at;
    }
}

TEST(Context, hasTheDependenciesOfItsLines) {
    Context line;
    line.setValue(number(5), u"a");
    line.addDependencyOn(variableKey(u"a"));
    line.addDependencyOn(variableKey(u"b"), std::nullopt, Value());
    Context document;
    document.addDependencyOn(variableKey(u"a"), number(4));
    ContextParts::addDependenciesOf(
        document, LineResult::make(Value(), ContextParts::updates(line), ContextParts::dependencies(line),
                                   AttributedText(), FormattedValue(), QuickTypeData(), u""));
    EXPECT_EQ(document.dependencies(), line.dependencies());
    document.addDependencyOn(variableKey(u"a"), number(6));
    EXPECT_EQ(*document.dependencyFor(variableKey(u"a")), IsEquatable(number(6)));
}

}  // namespace
}  // namespace vemo
