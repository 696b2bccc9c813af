// SPDX-License-Identifier: MIT
// What lines tell beside their results: the lists beside this file are everyday lines and prose, which are silent, and
// mistakes, each with the kind of note or the code of the reason that must be told.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/calculators.h"
#include "vemo/engine.h"

namespace vemo::test {
namespace {

std::vector<std::string> linesOf(const char* name) {
    std::vector<std::string> lines;
    std::ifstream file(std::filesystem::path(VEMO_TEST_DATA_DIR) / "engine" / name);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    EXPECT_GT(lines.size(), 50u) << name;
    return lines;
}

// The kinds of the line's notes, then the code of its reason, with blanks between.
std::string told(const VemoEngine::Result::Line& line) {
    std::string text;
    for (const Note& note : line.notes()) text += (text.empty() ? "" : " ") + utf8(noteKindName(note.kind));
    if (const auto reason = line.reason()) text += (text.empty() ? "" : " ") + utf8(reasonCodeName(reason->code));
    return text;
}

class RemarksTest : public testing::Test {
protected:
    RemarksTest() : engine_(fixedEnvironment()) {
        VemoEngine::Config config;
        config.testMode = true;
        engine_.buildVemoWorker(config);
    }

    VemoEngine::Result::Line line(const std::string& text) {
        Context context;
        return engine_.calculateSync(utf16(text), context)->lines.back();
    }

    VemoEngine engine_;
};

TEST_F(RemarksTest, everydayLinesAndProseAreSilent) {
    for (const std::string& text : linesOf("silent_lines.txt")) EXPECT_EQ(told(line(text)), "") << text;
}

TEST_F(RemarksTest, mistakesAreTold) {
    for (const std::string& row : linesOf("told_lines.txt")) {
        const std::size_t tab = row.find('\t');
        EXPECT_EQ(told(line(row.substr(0, tab))).find(row.substr(tab + 1)), 0u) << row;
    }
}

TEST_F(RemarksTest, productsOfLengthsTellTheArea) {
    const auto notes = line("12 ft x 96 in").notes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(utf8(notes[0].message),
              "a product of two lengths: only the unit of one is kept; as an area: 96 ft\u00b2");
}

TEST_F(RemarksTest, notesTellTheirPlaceInTheUsersWords) {
    const auto notes = line("total: 3 + Rent * 12").notes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].start, 11u);
    EXPECT_EQ(notes[0].length, 4u);
    EXPECT_EQ(utf8(notes[0].message), "\u201cRent\u201d has no value and was left out");

    const auto inBrackets = line("2 * (5 m * 4 m)").notes();
    ASSERT_EQ(inBrackets.size(), 1u);
    EXPECT_EQ(inBrackets[0].start, 5u);
    EXPECT_EQ(inBrackets[0].length, 9u);

    EXPECT_EQ(utf8(line("1 km / 500 m").notes().at(0).message), "divided as numbers, without converting; converted: 2");
    EXPECT_EQ(utf8(line("5 kilograms + 3 feet").reason()->message), "“kg” and “ft” do not convert into each other");

    EXPECT_NE(utf8(line("log 100").reason()->message).find("log10 100"), std::string::npos);
    EXPECT_EQ(utf8(line("2 + 1/2 pi").notes().at(0).message), "read as (1/2) × pi");

    for (const char* language : {"de", "fr", "es", "ja"}) {
        Environment environment = fixedEnvironment();
        environment.language = language;
        VemoEngine engine(environment);
        engine.buildVemoWorker();
        Context context;
        const auto reason = engine.calculateSync(u"1/0", context)->lines[0].reason();
        ASSERT_TRUE(reason) << language;
        EXPECT_NE(utf8(reason->message), "division by zero") << language;
        EXPECT_EQ(utf8(reason->message).find("reason."), std::string::npos) << language;
    }
}

TEST_F(RemarksTest, aRememberedLineTellsTheSame) {
    const auto cold = line("Rent * 12 / 0"), warm = line("Rent * 12 / 0");
    EXPECT_EQ(cold.notes(), warm.notes());
    EXPECT_EQ(cold.reason(), warm.reason());
    EXPECT_EQ(told(warm), "unknown_word division_by_zero");
}

TEST_F(RemarksTest, namesAreFoundWhereTheyStand) {
    Context context;
    const auto result = *engine_.calculateSync(u"hourly rate = $40\n  Hourly Rate * 3 h\nx += hourly rate\nx", context);
    using Uses = std::vector<VemoEngine::NameUse>;
    EXPECT_EQ(result.lines[0].names(), (Uses{{u"hourly rate", 0, 11, true}}));
    EXPECT_EQ(result.lines[1].names(), (Uses{{u"hourly rate", 2, 11, false}}));
    EXPECT_EQ(result.lines[2].names(), (Uses{{u"x", 0, 1, true}, {u"hourly rate", 5, 11, false}}));
    EXPECT_EQ(result.definitionOf(u"Hourly rate", 2), 0u);
    EXPECT_EQ(result.definitionOf(u"x", 3), 2u);
    EXPECT_EQ(result.definitionOf(u"x", 2), std::nullopt);
}

TEST_F(RemarksTest, instantsAreTrue) {
    Context context;
    const auto result = *engine_.calculateSync(u"10:30\n10:30 in Tokyo\ntime in New York\n5", context);
    const auto local = result.instantOf(0);
    ASSERT_TRUE(local);
    EXPECT_EQ(result.instantOf(1), local);
    EXPECT_EQ(result.instantOf(2)->time_since_epoch().count(), 1795525200);
    EXPECT_FALSE(result.instantOf(3));
}

TEST_F(RemarksTest, valuesAreExact) {
    const Value value = line("1/3 kg").value();
    EXPECT_EQ(line("5 inch in cm").value().decimal()->toString(), "12.7");
    EXPECT_EQ(*line("5 inch in cm").value().string(Attribute::unit), u"cm");
    EXPECT_TRUE(line("no value here").value().isEmpty());
    EXPECT_FALSE(value.isEmpty());
}

}  // namespace
}  // namespace vemo::test
