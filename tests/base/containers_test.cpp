// SPDX-License-Identifier: MIT
// Hash indexes, bounded memories and sorted lists against the plain containers they stand for.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <list>
#include <map>

#include "base/cache.h"
#include "base/function_ref.h"
#include "vemo/cache.h"
#include "vemo/sorted_list.h"

namespace vemo {
namespace {

std::u16string keyOf(std::size_t number) {
    const std::string text = std::to_string(number);
    return std::u16string(text.begin(), text.end());
}

// Hashes that collide wholly, in the tag, or in the slot alone.
RC_GTEST_PROP(HashIndexLaws, findEveryPositionInOrder, ()) {
    const auto spread = *rc::gen::element<std::size_t>(1, 3, 64, 1u << 20);
    const auto highBits = *rc::gen::arbitrary<bool>();
    const auto hashes = *rc::gen::container<std::vector<std::size_t>>(
        rc::gen::map(rc::gen::inRange<std::size_t>(0, 40),
                     [&](std::size_t n) { return n % 5 * spread + (highBits ? n << 40 : std::size_t{0}); }));
    HashIndex index;
    RC_ASSERT(!index.find(0, [](std::size_t) { return true; }));
    for (std::size_t i = 0; i < hashes.size(); ++i) index.add(hashes[i], i);
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        RC_ASSERT(index.find(hashes[i], [&](std::size_t position) { return position == i; }) == i);
        const auto first = std::find(hashes.begin(), hashes.end(), hashes[i]) - hashes.begin();
        RC_ASSERT(index.find(hashes[i], [&](std::size_t at) { return hashes[at] == hashes[i]; }) ==
                  static_cast<std::size_t>(first));
    }
    RC_ASSERT(!index.find(hashes.empty() ? 7 : hashes[0], [](std::size_t) { return false; }));
}

TEST(HashIndex, growsPastAnySize) {
    HashIndex index;
    constexpr std::size_t count = 5000;
    for (std::size_t i = 0; i < count; ++i) index.add(TextHash{}(keyOf(i)), i);
    for (std::size_t i = 0; i < count; ++i)
        ASSERT_EQ(index.find(TextHash{}(keyOf(i)), [&](std::size_t at) { return at == i; }), i);
    EXPECT_FALSE(index.find(TextHash{}(keyOf(count)), [](std::size_t at) { return keyOf(at) == keyOf(count); }));
}

// An entry that says what it holds.
struct Weight {
    std::size_t bytes = 0;
};
class WeighedKey : public StoredKey {
public:
    using StoredKey::StoredKey;
    static std::size_t bytes(const Weight& weight) { return weight.bytes; }
};

// At most twice the bound in entries and bytes, and never less than the latest of either: whatever is asked for.
RC_GTEST_PROP(TextCacheLaws, keepWithinTheirBounds, ()) {
    const bool byBytes = *rc::gen::arbitrary<bool>();
    const std::size_t entries = byBytes ? 1000 : 5, bytes = byBytes ? 40 : 1'000'000, keys = byBytes ? 12 : 30;
    TextCache<Weight, WeighedKey> cache(entries, bytes);
    std::map<std::u16string, std::size_t> weights;
    std::list<std::u16string> latest;  // the latest used first
    for (const std::size_t step :
         *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, 999))) {
        const std::u16string key = keyOf(step % keys);
        if (Weight* present = cache.find(key)) {
            RC_ASSERT(present->bytes == weights[key]);
        } else {
            // What was forgotten was not among the latest that fit.
            std::size_t used = 0, sum = 0;
            for (const std::u16string& other : latest) {
                if (other == key) break;
                ++used;
                sum += weights[other];
            }
            const bool known = std::find(latest.begin(), latest.end(), key) != latest.end();
            RC_ASSERT((!known || used >= entries || sum >= bytes));
            Weight* added = cache.obtain(key);
            RC_ASSERT((added && added->bytes == 0));
            added->bytes = weights[key] = step / 30;
            cache.charge(added->bytes);
        }
        latest.remove(key);
        latest.push_front(key);
    }
    std::size_t found = 0, held = 0;
    for (std::size_t number = 0; number < keys; ++number) {
        auto untouched = cache;  // to look for an entry moves it
        if (const Weight* weight = untouched.find(keyOf(number))) {
            ++found;
            held += weight->bytes;
        }
    }
    RC_ASSERT(found <= 2 * entries);
    RC_ASSERT(held <= 2 * (bytes + 999 / 30));
}

TEST(TextCache, findsAllOfADocumentInAnyOrder) {
    TextCache<std::size_t> cache(100);
    for (std::size_t i = 0; i < 100; ++i) *cache.obtain(keyOf(i)) = i;
    for (std::size_t round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < 100; ++i) ASSERT_EQ(*cache.find(keyOf(i * 37 % 100)), i * 37 % 100);
        for (std::size_t i = 0; i < 100; ++i) ASSERT_EQ(*cache.find(keyOf(i)), i);
        ASSERT_EQ(cache.find(u"other"), nullptr);
    }
    cache.clear();
    EXPECT_EQ(cache.find(keyOf(0)), nullptr);
    EXPECT_EQ(*cache.obtain(keyOf(0)), 0u);
}

// The cache of applications: what is found is what was set last, and the latest `size` keys that were used are there.
RC_GTEST_PROP(CacheModel, keepsTheLatestAndAllInItsCopy, ()) {
    constexpr std::size_t size = 2;
    Cache<int, int> cache(size);
    cache.enablePersistentCache();
    std::map<int, int> model;
    std::list<int> latest;
    for (const int step : *rc::gen::resize(300, rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 840)))) {
        const int key = step % 12;
        const auto place = std::find(latest.begin(), latest.end(), key);
        const bool recent =
            place != latest.end() && static_cast<std::size_t>(std::distance(latest.begin(), place)) < size;
        if (step % 7 == 0) {
            cache.set(key, std::nullopt);
            model.erase(key);
        } else if (step % 7 < 3) {
            cache.set(key, step);
            model[key] = step;
        }
        const int* found = cache.find(key);
        const auto known = model.find(key);
        RC_ASSERT((!found || (known != model.end() && *found == known->second)));
        RC_ASSERT((found || known == model.end() || !(recent || step % 7 < 3)));
        std::size_t held = 0;
        for (int each = 0; each < 12; ++each) held += Cache<int, int>(cache).hasEntry(each) ? 1 : 0;  // asking moves it
        RC_ASSERT(held <= 2 * size);
        if (!found && step % 7 != 0) continue;  // not used, for it was not there
        latest.remove(key);
        latest.push_front(key);
    }
    RC_ASSERT((std::map<int, int>(cache.persistentCache().begin(), cache.persistentCache().end()) == model));
}

RC_GTEST_PROP(SortedListLaws, sortStably, ()) {
    SortedList<std::size_t> list;
    std::vector<std::pair<int, std::size_t>> expected;
    const auto orders = *rc::gen::container<std::vector<int>>(rc::gen::inRange(-3, 3));
    for (std::size_t i = 0; i < orders.size(); ++i) {
        list.add(i, orders[i], i % 2 == 0 ? std::optional(keyOf(i)) : std::nullopt);
        expected.emplace_back(orders[i], i);
    }
    std::stable_sort(expected.begin(), expected.end(), [](auto& a, auto& b) { return a.first < b.first; });
    RC_ASSERT(list.size() == orders.size());
    for (std::size_t i = 0; i < orders.size(); ++i) {
        RC_ASSERT((list[i] == expected[i].second && list.items()[i] == list[i]));
        RC_ASSERT(list.itemsUnsorted()[i] == i);
        RC_ASSERT(list.has(keyOf(i)) == (i % 2 == 0));
    }
    RC_ASSERT(!list.has(u""));
}

TEST(FunctionRef, callsWhatItRefersTo) {
    int calls = 0;
    const auto count = [&calls](std::unique_ptr<int> by) { return calls += *by; };
    const auto none = [](std::unique_ptr<int>) { return 0; };
    FunctionRef<int(std::unique_ptr<int>)> reference = count;
    EXPECT_EQ(reference(std::make_unique<int>(2)), 2);
    const FunctionRef<int(std::unique_ptr<int>)> copy = reference;
    reference = none;
    EXPECT_EQ(copy(std::make_unique<int>(3)), 5);  // no reference to a reference
    EXPECT_EQ(reference(std::make_unique<int>(1)), 0);
}

}  // namespace
}  // namespace vemo
