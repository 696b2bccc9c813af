// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <map>
#include <unordered_map>

#include "engine/context_map.h"

namespace vemo {
namespace {

Value number(int n) { return Value(DecimalNumber::fromInt64(n)); }

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

TEST(Context, noticesNamesThatGoOnBehindTheirHead) {
    Context context;
    context.setValue(number(1), u"rate");
    EXPECT_EQ(context.find(namesKey(u"rate")), nullptr);
    context.setValue(number(1), u"rate two");
    const IsEquatable one = *context.find(namesKey(u"rate"));
    context.setValue(number(1), u"rate3");
    EXPECT_NE(*context.find(namesKey(u"rate")), one);
    context.setValue(number(2), u"rate3");  // a new value is no new name
    context.setValue(std::nullopt, u"rate3");
    EXPECT_EQ(*context.find(namesKey(u"rate")), one);
    context.setValue(std::nullopt, u"rate two");
    EXPECT_EQ(context.find(namesKey(u"rate")), nullptr);
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
    ValuesList rest = two;
    for (int i = 0; i < 41; ++i) rest.dropNewest();
    EXPECT_TRUE(rest.empty());
    EXPECT_EQ(rest, ValuesList());
}

// Colliding keys too: any sequence of changes gives what a plain map gives, and copies stay as they were.
RC_GTEST_PROP(PersistentMapLaws, isAMapWhoseCopiesStay, ()) {
    PersistentMap<int> map, before;
    std::map<std::u16string, int> model, modelBefore;
    const auto steps = *rc::gen::container<std::vector<std::pair<int, int>>>(
        rc::gen::pair(rc::gen::inRange(0, 400), rc::gen::inRange(0, 4)));
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const std::string text = std::to_string(steps[i].first);
        const std::u16string key(text.begin(), text.end());
        if (i == steps.size() / 2) {
            before = map;
            modelBefore = model;
        }
        if (steps[i].second == 0) {
            RC_ASSERT(map.erase(key) == (model.erase(key) > 0));
        } else {
            map.set(key, steps[i].second);
            model[key] = steps[i].second;
        }
    }
    for (const auto& [m, expected] : {std::pair(&map, &model), std::pair(&before, &modelBefore)}) {
        RC_ASSERT(m->size() == expected->size());
        for (const auto& [key, value] : *expected) RC_ASSERT(m->find(key) && *m->find(key) == value);
    }
}

}  // namespace
}  // namespace vemo
