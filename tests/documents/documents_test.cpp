// SPDX-License-Identifier: MIT
// Runs the documents of this folder, and the examples, through the public interface.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

#include "platform/time_zones.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

struct Document {
    Environment environment = fixedEnvironment();
    std::shared_ptr<CurrencyRatesContainer> rates;
    std::filesystem::path extensions;
    std::u16string text;
    std::vector<std::pair<int, std::string>> expected;  // by line of the file
};

// "2026-11-24T13:00:00Z"
Date instant(const std::string& text) {
    CivilTime civil;
    EXPECT_EQ(std::sscanf(text.c_str(), "%d-%u-%uT%d:%d:%lfZ", &civil.year, &civil.month, &civil.day, &civil.hour,
                          &civil.minute, &civil.second),
              6)
        << text;
    const auto result = TimeZoneRules::find(u"UTC")->instant(civil);
    EXPECT_TRUE(result) << text;
    return result.value_or(Date());
}

// A header line: "@locale de_DE", "@language de", "@timezone UTC", "@now 2026-11-24T13:00:00Z",
// "@rates EUR=0.9 JPY=150", and "@extensions FOLDER" of scripts, below the project's.
void readHeader(const std::string& line, Document& document) {
    std::istringstream words(line);
    std::string key, word;
    words >> key;
    if (key == "@rates") {
        document.rates = std::make_shared<CurrencyRatesContainer>();
        while (words >> word) {
            const std::size_t equals = word.find('=');
            document.rates->rates[utf16(word.substr(0, equals))] = DecimalNumber::parse(word.substr(equals + 1));
        }
        return;
    }
    words >> word;
    if (key == "@locale")
        document.environment.locale = word;
    else if (key == "@language")
        document.environment.language = word;
    else if (key == "@timezone")
        document.environment.timeZone = word;
    else if (key == "@now")
        document.environment.clock = [now = instant(word)] { return now; };
    else if (key == "@extensions")
        document.extensions = std::filesystem::path(VEMO_TEST_DATA_DIR) / ".." / word;
    else
        FAIL() << "unknown header " << line;
}

Document read(const std::filesystem::path& path) {
    Document document;
    std::ifstream file(path);
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.starts_with("@")) {
            readHeader(line, document);
            continue;
        }
        const std::size_t arrow = line.rfind("=>");
        std::string expected;
        if (arrow != line.npos) {
            expected = line.substr(std::min(arrow + 3, line.size()));
            line.resize(arrow == 0 ? 0 : arrow - 1);
        }
        document.text += utf16(line) + u"\n";
        document.expected.emplace_back(number, expected);
    }
    return document;
}

void check(const std::filesystem::path& path) {
    const Document document = read(path);
    VemoEngine engine(document.environment);
    VemoEngine::Config config;
    config.testMode = true;
    config.extensions = document.extensions;
    engine.buildVemoWorker(config);
    for (const Extension& extension : engine.extensions()) EXPECT_EQ(extension.log, "") << extension.file;
    for (const char* run : {"cold", "cached"}) {
        Context context;
        if (document.rates) {
            context.set(u"currency_rates", std::shared_ptr<const CurrencyRatesContainer>(document.rates));
            context.set(u"currency_rates_update_time", 1.0);
        }
        const auto result = engine.calculateSync(document.text, context);
        ASSERT_EQ(result->lines.size(), document.expected.size());
        for (std::size_t i = 0; i < result->lines.size(); ++i) {
            const auto& line = result->lines[i];
            EXPECT_EQ(plainSpaces(utf8(line.formattedResult().regular.value_or(u""))),
                      plainSpaces(document.expected[i].second))
                << path.filename().string() << ":" << document.expected[i].first << " (" << run
                << "): " << utf8(line.attributedText().compoundString());
        }
    }
}

TEST(Documents, showWhatTheySay) {
    int documents = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VEMO_TEST_DATA_DIR "/documents")) {
        if (entry.path().extension() != ".vemo") continue;
        check(entry.path());
        ++documents;
    }
    EXPECT_GE(documents, 10);
}

// Every example has a checked document of the same name that begins with its lines.
TEST(Documents, coverTheExamples) {
    for (const auto& entry : std::filesystem::directory_iterator(VEMO_TEST_DATA_DIR "/../examples")) {
        if (entry.path().extension() != ".vemo") continue;
        std::ifstream file(entry.path());
        const std::string example((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        const auto twin = std::filesystem::path(VEMO_TEST_DATA_DIR "/documents") / entry.path().filename();
        ASSERT_TRUE(std::filesystem::exists(twin)) << twin.filename();
        EXPECT_EQ(utf8(read(twin).text), example) << entry.path().filename();
    }
}

}  // namespace
}  // namespace vemo::test
