// SPDX-License-Identifier: MIT
#include "vemo/cache.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "base/cache.h"

namespace vemo {
namespace {

RC_GTEST_PROP(CacheLaws, givesWhatWasStoredLastAndForgetsNothingRecent, ()) {
    constexpr std::size_t generation = 4;
    TextCache<int> cache(generation);
    std::map<std::u16string, int> stored;
    std::vector<std::u16string> latest;  // keys, the latest used first
    for (const int step : *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 1 << 16))) {
        const std::u16string key(1, static_cast<char16_t>(u'a' + step / 4 % 20));
        const auto place = std::find(latest.begin(), latest.end(), key);
        const bool recent = place - latest.begin() < static_cast<std::ptrdiff_t>(generation) && place != latest.end();
        int* found = step % 2 == 0 ? cache.obtain(key) : cache.find(key);
        RC_ASSERT(!recent || found);
        if (!found) continue;
        RC_ASSERT(*found == stored[key] || (step % 2 == 0 && *found == 0 && !recent));
        *found = stored[key] = step;
        if (place != latest.end()) latest.erase(place);
        latest.insert(latest.begin(), key);
    }
}

TEST(Cache, holdsNothingWhileDisabled) {
    TextCache<int> cache(4);
    *cache.obtain(u"a") = 1;
    cache.setEnabled(false);
    EXPECT_EQ(cache.find(u"a"), nullptr);
    EXPECT_EQ(cache.obtain(u"a"), nullptr);
    cache.setEnabled(true);
    EXPECT_EQ(cache.find(u"a"), nullptr);
    EXPECT_EQ(*cache.obtain(u"a"), 0);
}

TEST(PublicCache, holdsTheLatestWithinItsBounds) {
    Cache<std::string, std::string> cache(2, 100);
    for (const char* key : {"a", "b", "c"}) cache.set(key, key);
    EXPECT_TRUE(cache.hasEntry("a"));  // moves on
    for (const char* key : {"d", "e"}) cache.set(key, key);
    EXPECT_FALSE(cache.hasEntry("b"));
    EXPECT_EQ(*cache.find("a"), "a");
    cache.set("large", "1", 1000);
    EXPECT_TRUE(cache.hasEntry("large"));
    cache.set("f", "f");
    cache.set("large", std::nullopt);
    EXPECT_FALSE(cache.hasEntry("large"));
    EXPECT_TRUE(cache.hasEntry("f"));
}

TEST(PublicCache, keepsAPersistentCopyOnDemand) {
    Cache<int, int> cache(1);
    cache.set(0, 0);
    cache.enablePersistentCache();
    cache.add(std::map<int, int>{{1, 10}, {2, 20}, {3, 30}});
    cache.set(2, std::nullopt);
    cache.clear();
    EXPECT_FALSE(cache.hasEntry(3));
    EXPECT_EQ(cache.persistentCache(), (Cache<int, int>::Map{{1, 10}, {3, 30}}));
    cache.setEnabled(false);
    cache.set(4, 40);
    cache.setEnabled(true);
    EXPECT_FALSE(cache.hasEntry(4));
    cache.disablePersistentCache();
    EXPECT_TRUE(cache.persistentCache().empty());
}

}  // namespace
}  // namespace vemo
