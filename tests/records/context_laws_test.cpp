// SPDX-License-Identifier: MIT
// Contexts under any history of writes, copies and removals, against plain maps.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <set>

#include "records/context_parts.h"

namespace vemo {
namespace {

using Model = std::map<std::u16string, int>;

IsEquatable entryOf(int number) {
    return Value(DecimalNumber::fromInt64(number));
}

ContextEntries entriesOf(const Model& model) {
    ContextEntries entries;
    for (const auto& [key, number] : model) entries.emplace(key, entryOf(number));
    return entries;
}

// Variables with heads in common among them, and other entries.
std::u16string anyKey() {
    return *rc::gen::element<std::u16string>(u"var_a", u"var_a b", u"var_a b c", u"var_a2", u"var_a2 b",
                                             u"var_\u00e9 x", u"var_+", u"var_", u"precision", u"other", u"");
}

struct Modelled {
    Context context;
    Model data, updates, seen;
};

struct Counter : ContextDelegate {
    int calls = 0;
    void contextUpdated(Context&) override { ++calls; }
};

void write(Modelled& one, int step) {
    const std::u16string key = anyKey();
    const bool registered = *rc::gen::arbitrary<bool>();
    if (step % 4 == 0) {
        one.context.set(key, std::nullopt, registered);
        one.data.erase(key);
        if (registered) one.updates.erase(key);
        return;
    }
    const int number = *rc::gen::inRange(0, 3);
    one.context.set(key, entryOf(number), registered);
    one.data[key] = number;
    if (registered) one.updates[key] = number;
}

void depend(Modelled& one) {
    const std::u16string key = anyKey();
    const auto otherwise = *rc::gen::inRange(-1, 3);
    std::optional<IsEquatable> value;
    if (otherwise >= 0) value = entryOf(otherwise);
    one.context.addDependencyOn(key, std::nullopt, value);
    if (const auto found = one.data.find(key); found != one.data.end())
        one.seen[key] = found->second;
    else if (value)
        one.seen[key] = otherwise;
    else
        one.seen.erase(key);
}

void check(const Modelled& one) {
    RC_ASSERT(one.context.data() == entriesOf(one.data));
    RC_ASSERT(one.context.updates() == entriesOf(one.updates));
    RC_ASSERT(one.context.dependencies() == entriesOf(one.seen));
    for (const auto& [key, number] : one.data) {
        const IsEquatable* present = one.context.find(key);
        RC_ASSERT((present && *present == entryOf(number)));
        if (!key.starts_with(u"var_") || key.size() == 4) continue;
        const std::u16string name = key.substr(4);
        RC_ASSERT(one.context.getVariable(name));
        RC_ASSERT(one.context.mayNameVariable(name.front()));
        RC_ASSERT(one.context.longestVariableName() >= name.size());
    }
    bool changed = false;
    for (const auto& [key, number] : one.seen)
        changed = changed || (one.data.contains(key) && one.data.at(key) != number);
    RC_ASSERT(one.context.hasUpdatesFor(one.context.dependencies()) == changed);
}

RC_GTEST_PROP(ContextLaws, areThoseOfMapsThatAreCopied, ()) {
    std::vector<Modelled> all(1);
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 64));
    for (const int step : steps) {
        Modelled& one = all[*rc::gen::inRange<std::size_t>(0, all.size())];
        if (step < 40) {
            write(one, step);
        } else if (step < 50) {
            depend(one);
        } else if (step < 56) {
            Context copy = step % 2 == 0 ? one.context.copyContext() : ContextParts::layer(one.context);
            RC_ASSERT((copy.updates().empty() && copy.dependencies().empty()));
            all.push_back({std::move(copy), one.data, {}, {}});
        } else if (step < 60) {
            const Modelled& other = all[*rc::gen::inRange<std::size_t>(0, all.size())];
            ContextParts::add(one.context, ContextMap(ContextParts::data(other.context)));
            for (const auto& [key, number] : Model(other.data)) one.data[key] = number;
        } else if (all.size() > 1) {
            all.erase(all.begin());  // the one that others were copied from
        }
    }
    for (const Modelled& one : all) check(one);
}

// What a context notes of names depends on which there are, not on how it came to have them.
RC_GTEST_PROP(ContextLaws, noteNamesByWhatThereIs, ()) {
    const std::u16string names[] = {u"a", u"a b", u"a b c", u"a2 b", u"\u00e9 x", u"a-", u"+x"};
    Context context;
    std::set<std::u16string> present;
    for (const int step : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 14))) {
        const std::u16string& name = names[step / 2];
        std::optional<Value> value;
        if (step % 2 == 0) value = Value(DecimalNumber::fromInt64(step));
        context.setValue(value, name);
        if (value)
            present.insert(name);
        else
            present.erase(name);
    }
    Context again;
    for (auto name = present.rbegin(); name != present.rend(); ++name) again.setValue(Value(DecimalNumber()), *name);
    for (const std::u16string& name : names) {
        const std::u16string key = namesKey(nameHead(name));
        const IsEquatable *noted = context.find(key), *expected = again.find(key);
        RC_ASSERT((noted == nullptr) == (expected == nullptr));
        RC_ASSERT((!noted || *noted == *expected));
    }
    // Nobody else sees the notes.
    RC_ASSERT(context.data().size() == present.size());
}

TEST(Context, notifiesOnceForEveryWrite) {
    Counter counter;
    Context context, source;
    for (const char16_t* key : {u"a", u"b", u"c"}) source.set(key, entryOf(1));
    context.setDelegate(&counter);
    ContextParts::add(context, ContextParts::data(source));
    EXPECT_EQ(counter.calls, 3);
    context.add(source.data(), true);
    EXPECT_EQ(counter.calls, 6);
    context.syncUpdate([&] { context.add(source.data(), true); });
    EXPECT_EQ(counter.calls, 7);
    Context copy = context.copyContext();
    copy.set(u"a", std::nullopt);
    EXPECT_EQ(counter.calls, 7);
    context.setDelegate(nullptr);
    context.set(u"a", std::nullopt);
    EXPECT_EQ(counter.calls, 7);
}

// Lists that fork and shrink, each against a vector of its own.
RC_GTEST_PROP(ValuesListLaws, areThoseOfVectors, ()) {
    std::vector<std::pair<ValuesList, std::vector<int>>> lists(1);
    for (const int step : *rc::gen::resize(300, rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 600)))) {
        auto& [list, model] = lists[static_cast<std::size_t>(step) % lists.size()];
        const int kind = step / 8 % 10;
        if (kind == 0) {
            lists.emplace_back(ValuesList(list), std::vector<int>(model));
        } else if (kind == 1 && !list.empty()) {
            list.dropNewest();
            model.pop_back();
        } else {
            // Many at once, so that blocks fill.
            for (int i = 0; i < 1 + step % 40; ++i) {
                model.push_back(step % 3 + i);
                list = list.appending(Value(DecimalNumber::fromInt64(model.back())));
            }
        }
    }
    for (const auto& [list, model] : lists) {
        RC_ASSERT((list.size() == model.size() && list.empty() == model.empty()));
        ValuesList rest = list;
        for (auto value = model.rbegin(); value != model.rend(); ++value, rest.dropNewest())
            RC_ASSERT(rest.newest() == Value(DecimalNumber::fromInt64(*value)));
        RC_ASSERT(rest == ValuesList());
        // A list is equal to one that was made anew, whatever it went through.
        ValuesList anew;
        for (const int value : model) anew = anew.appending(Value(DecimalNumber::fromInt64(value)));
        RC_ASSERT(list == anew);
        for (const auto& [other, otherModel] : lists) RC_ASSERT((list == other) == (model == otherModel));
    }
}

}  // namespace
}  // namespace vemo
