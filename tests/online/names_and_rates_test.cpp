// SPDX-License-Identifier: MIT
// Every place that is offered is found, in every language; and files of rates in any order, whole or cut.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <thread>

#include "base/text.h"
#include "online/place_names.h"
#include "online/rates_file.h"
#include "platform/time_zones.h"
#include "scanning/words/localizer.h"

namespace vemo::test {
namespace {

// As it is written, in other cases, and with other signs between its words.
TEST(PlaceNames, areFoundAsTheyAreOffered) {
    for (const char* language : {"en", "de", "fr", "es", "ja"}) {
        const Localizer localizer(language);
        const PlaceNames places(localizer, language);
        const std::vector<std::u16string> names = places.names();
        EXPECT_GT(names.size(), 400u) << language;
        for (const std::u16string& name : names) {
            const auto zone = places.zoneOf(name);
            ASSERT_TRUE(zone) << language << " " << toUtf8(name);
            EXPECT_TRUE(TimeZoneRules::find(*zone)) << toUtf8(*zone);
            std::u16string other = lowercased(name);
            std::replace(other.begin(), other.end(), u' ', u'-');
            EXPECT_EQ(places.zoneOf(u" " + other + u"."), zone) << language << " " << toUtf8(name);
        }
        const auto& text = names.front();
        EXPECT_EQ(places.zoneOf(text + std::u16string(100, u' ')), std::nullopt);  // too long for a place
    }
}

// The first look-ups may come from several threads at once.
TEST(PlaceNames, areBuiltOnce) {
    const Localizer localizer("en");
    const PlaceNames places(localizer, "en");
    std::vector<std::thread> threads;
    std::array<std::optional<std::u16string>, 4> zones;
    for (auto& zone : zones) threads.emplace_back([&] { zone = places.zoneOf(u"tokyo"); });
    for (std::thread& thread : threads) thread.join();
    for (const auto& zone : zones) EXPECT_EQ(zone, u"Asia/Tokyo");
}

// What is a rate comes out, whatever stands around it; of a file that is cut, nothing does.
RC_GTEST_PROP(RatesFileLaws, giveTheirRatesWholeOrNone, ()) {
    using Json = nlohmann::ordered_json;
    std::map<std::string, double> expected;
    Json rates = Json::object();
    const auto count = *rc::gen::inRange(1, 8);
    for (int i = 0; i < count; ++i) {
        const std::string code =
            *rc::gen::element<std::string>("EUR", "JPY", "G\"P", "\xc3\xa9", "", "A LONG CODE NOBODY HAS");
        const double rate = *rc::gen::element(0.92, 157.0, 1e-12, 1e15, 0.0, -3.0, 1e16, 0.30000000000000004);
        const bool usable = rate >= 1e-12 && rate <= 1e15 && !code.empty() && code.size() <= 16;
        if (rates.contains(code)) continue;
        rates[code] = rate;
        if (usable) expected[code] = rate;
    }
    Json document = Json::object();
    const bool before = *rc::gen::arbitrary<bool>();
    const Json other = {{"rates", Json::array({1, 2})}, {"EUR", 5}};
    if (before) document["data"] = other;
    document["rates"] = rates;
    if (!before) document["data"] = other;
    const std::string json = document.dump(*rc::gen::element(-1, 2));
    const auto parsed = parseRates(json);
    RC_ASSERT(static_cast<bool>(parsed) == !expected.empty());
    if (parsed) {
        RC_ASSERT(parsed->rates.size() == expected.size());
        for (const auto& [code, rate] : expected)
            RC_ASSERT(parsed->rates.at(toUtf16(code)) == DecimalNumber::fromDouble(rate));
    }
    RC_ASSERT(!parseRates(std::string_view(json).substr(0, *rc::gen::inRange<std::size_t>(0, json.size()))));
}

}  // namespace
}  // namespace vemo::test
