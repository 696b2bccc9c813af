// SPDX-License-Identifier: MIT
#include "online/rates_file.h"

#include <gtest/gtest.h>

namespace vemo::test {
namespace {

std::string problem(std::string_view json) {
    const auto parsed = parseRates(json);
    return parsed ? "none" : parsed.failure().message;
}

CurrencyRatesContainer rates(std::string_view json) {
    auto parsed = parseRates(json);
    return parsed ? *parsed : CurrencyRatesContainer();
}

TEST(RatesFile, takesWhatIsARate) {
    const auto container = rates(R"({"base":"USD","rates":{"EUR":0.92,"JPY":157,"BAD":"1","NEG":-1,"ZERO":0,
        "TINY":1e-13,"HUGE":1e16,"NULL":null,"LIST":[1],"OBJECT":{"EUR":5},"EUR":0.93},"EUR":7})");
    EXPECT_EQ(container.rates.size(), 2u);
    EXPECT_EQ(container.rates.at(u"EUR").toString(), "0.93");  // the last of two
    EXPECT_EQ(container.rates.at(u"JPY").toString(), "157");
    // One number beyond range costs its own rate; in a text it is none.
    const auto others = rates(R"({"rates":{"A\\\"":1e999,"EUR":0.5,"B":-1e999,"C":[1e999],"1e999":2}})");
    EXPECT_EQ(others.rates.size(), 2u);
    EXPECT_EQ(others.rates.at(u"1e999").toString(), "2");
    // Sixteen digits: a million dollars are not 920,000.02 euros.
    EXPECT_EQ(rates(R"({"rates":{"EUR":0.92}})").rates.at(u"EUR").toString(), "0.92");
}

TEST(RatesFile, refusesWhatIsNone) {
    for (const char* text : {"", "{", "garbage", R"({"rates":{"EUR":1})", R"({"rates":{"EUR":1e999})", "\xff\xfe"})
        EXPECT_EQ(problem(text), "not JSON") << text;
    for (const char* text : {"{}", "[]", "1", R"({"rates":[1]})", R"({"data":{"rates":{"EUR":1}}})",
                             R"([{"rates":{"EUR":1}}])", R"([{"rates":1},{"EUR":1}])"})
        EXPECT_EQ(problem(text), "has no object \"rates\"") << text;
    // No rates must not take the place of good ones.
    for (const char* text : {R"({"rates":{}})", R"({"rates":{"EUR":0}})", R"({"rates":{"EUR":1},"rates":{}})"})
        EXPECT_EQ(problem(text), "has no usable rates") << text;
}

TEST(RatesFile, isNotHarmedByHostileFiles) {
    const std::string deep =
        R"({"rates":{"EUR":1,"X":)" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}}";
    EXPECT_EQ(rates(deep).rates.size(), 1u);
    std::string many = R"({"rates":{"A":1)";
    for (int i = 0; i < 300'000; ++i) many += ",\"" + std::to_string(i) + "\":1";
    EXPECT_EQ(problem(many + "}}"), "has too many rates");
    EXPECT_EQ(rates(R"({"rates":{")" + std::string(5'000'000, 'A') + R"(":1,"EUR":2}})").rates.size(), 1u);
}

}  // namespace
}  // namespace vemo::test
