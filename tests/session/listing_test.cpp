// SPDX-License-Identifier: MIT
// Results as they are listed for people and as JSON for programs.

#include "session/listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "session/json.h"
#include "session/online.h"
#include "support/calculators.h"

namespace vemo::session {
namespace {

using testing::HasSubstr;

class Listing : public testing::Test {
protected:
    Listing() : before_(std::setlocale(LC_CTYPE, nullptr)) {
        std::setlocale(LC_CTYPE, "C.UTF-8");  // widths are those of its characters
        engine_.buildVemoWorker();
    }
    ~Listing() override { std::setlocale(LC_CTYPE, before_.c_str()); }

    VemoEngine::Result calculated(std::string_view text) {
        context_ = std::make_unique<Context>();
        return *engine_.calculateSync(utf16(text), *context_);
    }
    std::string listed(std::string_view text, const Layout& layout) {
        std::ostringstream out;
        printResult(out, calculated(text), layout);
        return out.str();
    }

private:
    std::string before_;
    VemoEngine engine_{test::fixedEnvironment()};
    std::unique_ptr<Context> context_;
};

// Columns taken by a line's text, without the codes that change colors.
std::size_t columns(const std::string& line) {
    std::string plain;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\033')
            i = line.find('m', i);
        else
            plain += line[i];
    }
    return displayWidth(plain);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// Whatever the width: every result ends in one column, and none is cut.
TEST_F(Listing, endsResultsInOneColumn) {
    const std::string document =
        "\xe6\x96\x87\xe5\xad\x97 = 5 km\nrent: $1,200 * 12\n7\nlong " + std::string(60, 'x') + " 1 + 1";
    for (const std::size_t width : {30u, 80u, 200u}) {
        Layout layout;
        layout.width = width;
        layout.color = width == 80;
        layout.numbered = width == 200;
        const std::string text = listed(document, layout);
        const auto lines = linesOf(text);
        std::size_t column = 0;
        for (const std::string& line : lines) {
            if (!line.empty() && line.find_first_not_of('-') == line.npos) column = columns(line);
            EXPECT_TRUE(columns(line) <= width || line.find("xxx") != line.npos) << width << ": " << line;
        }
        EXPECT_GT(column, 0u) << text;
        for (const char* result : {"5 km", "$14,400", "7", "2"}) {
            const bool ends = std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
                const std::string shown = layout.color ? "\033[1m" + std::string(result) + "\033[0m" : result;
                return line.ends_with(shown) && columns(line) == column;
            });
            EXPECT_TRUE(ends) << width << ": " << result << "\n" << text;
        }
    }
}

// A color is turned off where its run ends, and the text is the line all the same.
TEST_F(Listing, colorsRunsAlone) {
    Layout plain, colored;
    colored.color = true;
    const std::string document = "# head\nlabel: x = 5 km + sqrt 4 // note\n\x1b[2J 3";
    const std::string text = listed(document, colored);
    std::string uncolored;
    bool on = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\033') {
            uncolored += text[i];
            EXPECT_FALSE(on && text[i] == '\n');
            continue;
        }
        const std::size_t end = text.find('m', i);
        const bool off = text.substr(i, end - i) == "\033[0";
        EXPECT_NE(on, !off) << "a color within another";
        on = !off;
        i = end;
    }
    EXPECT_FALSE(on);
    EXPECT_EQ(uncolored, listed(document, plain));
    EXPECT_THAT(text, HasSubstr("\033[1m# head\033[0m"));
}

TEST_F(Listing, tellsRemarksUnderTheirLines) {
    Layout layout;
    layout.remarks = true;
    layout.total = false;
    EXPECT_THAT(listed("1 + 1\n1/0\n2 + 2", layout), testing::MatchesRegex("1 . 1 +2\n1/0\n  [^\n]+\n2 . 2 +4\n"));
    std::ostringstream out;
    printRemarks(out, calculated("1 + 1\n5 kg + 3 m\n1/0"), "a\x1b.vemo");
    const auto lines = linesOf(out.str());
    ASSERT_EQ(lines.size(), 2u) << out.str();
    EXPECT_THAT(lines[0], testing::StartsWith("a\xef\xbf\xbd.vemo:2:1: "));
    EXPECT_THAT(lines[1], testing::StartsWith("a\xef\xbf\xbd.vemo:3:1: "));
    std::ostringstream results;
    printResults(results, calculated("x\n1 + 1\n\n5 km"), {});
    EXPECT_EQ(results.str(), "2\n5 km\n");
}

TEST_F(Listing, isJsonForPrograms) {
    const std::string text = "\xe2\x80\xaex = 5 km\nMarch 4, 2027 10:00\n10:00 UTC in Tokyo\n1/0\n0.1 + 0.2";
    const std::string json = jsonText(calculated(text), "log \x1b\xff", {"a problem"}, {"", "", "", "", "0.1 + 0.2"});
    EXPECT_EQ(json.find('\x1b'), json.npos);
    EXPECT_EQ(json.find("\xe2\x80\xae"), json.npos);
    const auto document = nlohmann::json::parse(json);
    const auto& lines = document["lines"];
    ASSERT_EQ(lines.size(), 5u);
    std::string joined;
    for (const auto& line : lines) {
        std::string runs;
        for (const auto& run : line["runs"]) runs += run["text"];
        EXPECT_EQ(runs, line["text"]);
        joined += (joined.empty() ? "" : "\n") + runs;
    }
    EXPECT_EQ(joined, text);
    EXPECT_EQ(lines[0]["value"], (nlohmann::json{{"number", "5"}, {"unit", "km"}}));
    EXPECT_EQ(lines[1]["value"]["instant"], "2027-03-04T10:00:00Z");
    EXPECT_EQ(lines[2]["value"], (nlohmann::json{{"instant", "2026-11-24T10:00:00Z"}, {"zone", "Asia/Tokyo"}}));
    EXPECT_EQ(lines[3]["reason"]["code"], "division_by_zero");
    EXPECT_FALSE(lines[3].contains("value") || lines[3].contains("regular") || lines[3].contains("reading"));
    EXPECT_EQ(lines[4]["value"]["number"], "0.3");
    EXPECT_EQ(lines[4]["reading"], "0.1 + 0.2");
    EXPECT_EQ(document["log"], "log \x1b\xef\xbf\xbd");
    EXPECT_EQ(document["problems"], nlohmann::json::array({"a problem"}));
    EXPECT_FALSE(nlohmann::json::parse(jsonText(calculated("1"), "", {})).contains("problems"));
}

TEST(OnlineTexts, tellProblemsForPeople) {
    using Kind = OnlineProblem::Kind;
    std::vector<std::string> texts;
    for (const Kind kind : {Kind::ratesNotFetched, Kind::ratesNotKept, Kind::copyUnusable, Kind::placeNotFetched}) {
        texts.push_back(problemText({kind, "https://a.example", "why"}));
        EXPECT_FALSE(texts.back().empty());
        EXPECT_EQ(texts.back().find("why") == std::string::npos, kind == Kind::ratesNotKept);
    }
    EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), texts.size());
    EXPECT_TRUE(isUrl("http://a") && isUrl("https://a"));
    for (const char* other : {"", "file:///a", "HTTP", "a/http://b", "httpx://a"}) EXPECT_FALSE(isUrl(other)) << other;
}

}  // namespace
}  // namespace vemo::session
