// SPDX-License-Identifier: MIT
// Documents that people wrote who knew nothing of the rules, each with its language and what its last line must show:
// "-" for prose, which gives and tells nothing, "?" where only what is told counts. Nothing is told of the others.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "support/calculators.h"
#include "vemo/engine.h"

namespace vemo::test {
namespace {

constexpr std::string_view lineBreak = " \u23ce ";

std::unique_ptr<VemoEngine> engineFor(const std::string& language) {
    const std::map<std::string, std::string> locales{{"en", "en_US"}, {"en_GB", "en_GB"}, {"de", "de_DE"},
                                                     {"fr", "fr_FR"}, {"es", "es_ES"},    {"ja", "ja_JP"}};
    Environment environment = fixedEnvironment();
    environment.language = language.substr(0, 2);
    environment.locale = locales.at(language);
    environment.clock = [] { return Date(std::chrono::duration<double>(1795694400)); };  // noon of November 26, 2026
    auto engine = std::make_unique<VemoEngine>(environment);
    VemoEngine::Config config;
    config.testMode = true;
    engine->buildVemoWorker(config);
    EXPECT_EQ(engine->takeRates(VemoEngine::RatesFile::currency,
                                R"({"rates":{"EUR":0.8,"GBP":0.6666666666666666,"JPY":100,"CHF":0.8333333333333334}})"),
              "");
    return engine;
}

TEST(LinesOfUsers, showWhatTheyExpect) {
    std::map<std::string, std::unique_ptr<VemoEngine>> engines;
    std::ifstream file(std::filesystem::path(VEMO_TEST_DATA_DIR) / "engine/lines_of_users.txt");
    std::size_t count = 0;
    for (std::string row; std::getline(file, row); ++count) {
        const std::size_t first = row.find('\t'), last = row.rfind('\t');
        const std::string expected = row.substr(last + 1);
        std::string text = row.substr(first + 1, last - first - 1);
        for (std::size_t i; (i = text.find(lineBreak)) != text.npos;) text.replace(i, lineBreak.size(), "\n");
        auto& engine = engines[row.substr(0, first)];
        if (!engine) engine = engineFor(row.substr(0, first));
        Context context;
        const auto line = engine->calculateSync(utf16(text), context)->lines.back();
        const std::string shown = plainSpaces(utf8(line.formattedResult().regular.value_or(u"")));
        const bool told = !line.notes().empty() || line.reason();
        if (expected != "?") {
            EXPECT_EQ(shown, expected == "-" ? "" : expected) << row;
        }
        EXPECT_EQ(told, expected == "?") << row;
    }
    EXPECT_GT(count, 1000u);
}

}  // namespace
}  // namespace vemo::test
