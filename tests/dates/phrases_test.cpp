// SPDX-License-Identifier: MIT
// Lines that people write, each with what it must be read as: see the heads of the files beside this one.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "platform/time_zones.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

constexpr char localZoneName[] = "Europe/Berlin";

struct Row {
    std::string where;
    std::string text;
    std::string expected;
    bool unread = false;  // a row with "=?"
};

std::string written(const CivilTime& civil, bool day) {
    char buffer[64];
    const auto second = static_cast<int>(std::floor(civil.second));
    std::snprintf(buffer, sizeof buffer, "%s%04d-%02u-%02u", civil.year < 0 ? "-" : "", std::abs(civil.year),
                  civil.month, civil.day);
    std::string text = buffer;
    if (day) return text;
    std::snprintf(buffer, sizeof buffer, second == 0 ? " %02d:%02d" : " %02d:%02d:%02d", civil.hour, civil.minute,
                  second);
    return text + buffer;
}

std::string written(const VemoEngine::Result& result) {
    const Value value = result.lines[0].value();
    const auto instant = result.instantOf(0);
    if (!value.has(Attribute::date) || !instant)
        return plainSpaces(utf8(result.lines[0].formattedResult().regular.value_or(u"")));
    const std::u16string local = utf16(localZoneName);
    const TimeZone* zone = value.timeZone();
    // What is shown is the day itself for some phrases, such as its weekday.
    if (value.is(Attribute::precision, u"weekday"))
        return utf8(result.lines[0].formattedResult().regular.value_or(u""));
    const bool day = value.is(Attribute::precision, u"day");
    const bool abroad = zone && zone->identifier != local;
    const std::string text = written(TimeZoneRules::find(abroad ? zone->identifier : local)->civil(*instant), day);
    return abroad && !day ? text + " " + utf8(zone->identifier) : text;
}

// Calls `use` with the engine of its locale for every row of a file.
void forRows(const std::string& file, const std::function<void(VemoEngine&, const Row&)>& use) {
    std::ifstream stream(std::string(VEMO_TEST_DATA_DIR "/dates/") + file);
    std::unique_ptr<VemoEngine> engine;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.empty() || line.starts_with("# ")) continue;
        if (line.starts_with("@locale ")) {
            Environment environment = fixedEnvironment();
            environment.locale = line.substr(8);
            environment.language = environment.locale.substr(0, 2);
            environment.timeZone = localZoneName;
            engine = std::make_unique<VemoEngine>(environment);
            VemoEngine::Config config;
            config.testMode = true;
            engine->buildVemoWorker(config);
            continue;
        }
        Row row{file + ":" + std::to_string(number) + ": ", line, {}};
        for (const std::string arrow : {" => ", " =? "}) {
            const std::size_t at = line.rfind(arrow);
            if (at == line.npos) continue;
            row.text = line.substr(0, at);
            row.expected = line.substr(at + arrow.size());
            row.unread = arrow == " =? ";
        }
        ASSERT_TRUE(engine) << row.where;
        use(*engine, row);
    }
}

// `context` is what the result points to.
VemoEngine::Result calculated(VemoEngine& engine, const std::string& text, Context& context) {
    return *engine.calculateSync(utf16(text), context);
}

TEST(DatePhrases, areReadAsPeopleMeanThem) {
    int rows = 0, unread = 0;
    for (const char* file : {"phrases_en.txt", "phrases_de.txt", "phrases_fr.txt", "phrases_es.txt", "phrases_ja.txt"})
        forRows(file, [&](VemoEngine& engine, const Row& row) {
            ++rows;
            Context context;
            const VemoEngine::Result result = calculated(engine, row.text, context);
            const std::string text = written(result);
            if (!row.unread) {
                if (text != row.expected)
                    ADD_FAILURE() << row.where << row.text << " is read as '" << text << "', not " << row.expected;
                return;
            }
            ++unread;
            EXPECT_NE(text, row.expected) << row.where << row.text << " is read now";
            const bool silent = result.lines[0].notes().empty() && !result.lines[0].reason();
            EXPECT_TRUE(text.empty() || !silent) << row.where << row.text << " is read as " << text;
        });
    EXPECT_GE(rows, 500);
    EXPECT_LE(unread * 100, rows * 8);
}

TEST(DatePhrases, areNotSeenInOtherText) {
    int rows = 0;
    forRows("non_dates.txt", [&](VemoEngine& engine, const Row& row) {
        ++rows;
        Context context;
        const VemoEngine::Result result = calculated(engine, row.text, context);
        EXPECT_FALSE(result.lines[0].value().has(Attribute::date)) << row.where << row.text << ": " << written(result);
        if (!row.expected.empty()) {
            EXPECT_EQ(written(result), row.expected) << row.where << row.text;
        }
    });
    EXPECT_GE(rows, 250);
}

}  // namespace
}  // namespace vemo::test
