// SPDX-License-Identifier: MIT
#include "base/cache.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>

namespace vemo {
namespace {

RC_GTEST_PROP(CacheLaws, givesWhatWasStoredLastAndForgetsNothingRecent, ()) {
    constexpr std::size_t generation = 4;
    Cache<int> cache(generation);
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
    Cache<int> cache(4);
    *cache.obtain(u"a") = 1;
    cache.setEnabled(false);
    EXPECT_EQ(cache.find(u"a"), nullptr);
    EXPECT_EQ(cache.obtain(u"a"), nullptr);
    cache.setEnabled(true);
    EXPECT_EQ(cache.find(u"a"), nullptr);
    EXPECT_EQ(*cache.obtain(u"a"), 0);
}

}  // namespace
}  // namespace vemo
