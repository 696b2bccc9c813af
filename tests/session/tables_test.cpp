// SPDX-License-Identifier: MIT
// Tables, read by readers of the formats as their definitions have them.

#include "session/tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "session/printable.h"
#include "session/rows.h"
#include "support/calculators.h"

namespace vemo::session {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Table = std::vector<std::vector<std::string>>;

// RFC 4180: quotes around a cell, doubled within.
Table readCsv(const std::string& text) {
    Table table(1, {""});
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        std::string& cell = table.back().back();
        if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
            cell += text[++i];
        else if (c == '"' && (quoted || cell.empty()))
            quoted = !quoted;
        else if (!quoted && c == ',')
            table.back().emplace_back();
        else if (!quoted && c == '\n')
            table.emplace_back(1, "");
        else
            cell += c;
    }
    table.pop_back();  // after the last line feed
    return table;
}

Table readTsv(const std::string& text) {
    Table table(1, {""});
    for (const char c : text) {
        if (c == '\t')
            table.back().emplace_back();
        else if (c == '\n')
            table.emplace_back(1, "");
        else
            table.back().back() += c;
    }
    table.pop_back();
    return table;
}

std::string anyCell() {
    std::string cell;
    for (const std::string& piece : *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
             "a", "5", " ", ",", ";", "\"", "\t", "\n", "=", "-", "+", "@", "|", "<", "&", "\xe2\x82\xac", "\\", "*")))
        cell += piece;
    return cell;
}

std::vector<Row> anyRows() {
    std::vector<Row> rows(static_cast<std::size_t>(*rc::gen::inRange(0, 4)));
    for (Row& row : rows) row = {anyCell(), anyCell(), anyCell(), anyCell(), anyCell()};
    return rows;
}

// What a spreadsheet must not take for a formula has an apostrophe before it; the cell is the same otherwise.
void expectCell(const std::string& read, const std::string& given) {
    const std::string plain = printable(given);
    const std::size_t first = plain.find_first_not_of(' ');
    const bool sign = first != plain.npos && std::string_view("=+-@").find(plain[first]) != std::string_view::npos;
    RC_ASSERT((read == plain || (sign && read == "'" + plain)));
    if (!sign) return;
    const bool number = plain[first] == '-' && plain.size() > first + 1 &&
                        plain.find_first_not_of("0123456789.", first + 1) == plain.npos;
    RC_ASSERT(number == (read == plain));
}

RC_GTEST_PROP(TableLaws, giveOtherProgramsTheSameCells, ()) {
    const std::vector<Row> rows = anyRows();
    for (const Table& table : {readCsv(csvText(rows)), readTsv(tsvText(rows))}) {
        RC_ASSERT(table.size() == rows.size() + 1);
        RC_ASSERT((table[0] == std::vector<std::string>{"line", "result", "number", "unit", "remark"}));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            RC_ASSERT(table[i + 1].size() == 5u);
            const std::string* cells[] = {&rows[i].text, &rows[i].result, &rows[i].number, &rows[i].unit,
                                          &rows[i].remark};
            for (std::size_t k = 0; k < 5; ++k) expectCell(table[i + 1][k], *cells[k]);
        }
    }
}

std::size_t countOf(const std::string& text, std::string_view what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + what.size())) ++count;
    return count;
}

// Whatever lines hold, a table of Markdown has as many bars as its columns need, and a page no elements but its own.
RC_GTEST_PROP(TableLaws, letNoTextBecomeMarkup, ()) {
    const std::vector<Row> rows = anyRows();
    const Total total{"total", anyCell()};
    const bool remarks = std::any_of(rows.begin(), rows.end(), [](const Row& row) { return !row.remark.empty(); });
    const std::size_t columns = remarks ? 3 : 2;
    std::size_t bars = 0, lines = 0;
    const std::string markdown = markdownText(rows, std::nullopt);
    for (std::size_t i = 0; i < markdown.size(); ++i) {
        if (markdown[i] == '\\')
            ++i;  // takes the meaning of the next
        else
            bars += markdown[i] == '|' ? 1 : 0;
        lines += markdown[i] == '\n' ? 1 : 0;
    }
    RC_ASSERT(lines == rows.size() + 2);
    RC_ASSERT(bars == lines * (columns + 1));
    const std::string page = htmlText(rows, total, anyCell());
    RC_ASSERT(countOf(page, "<") ==
              countOf(htmlText(std::vector<Row>(rows.size()), Total{"total", ""}, ""), "<") +
                  2 * static_cast<std::size_t>(
                          std::count_if(rows.begin(), rows.end(), [](auto& row) { return !row.remark.empty(); })));
    for (std::size_t at = page.find('&'); at != page.npos; at = page.find('&', at + 1))
        RC_ASSERT((page.compare(at, 5, "&amp;") == 0 || page.compare(at, 4, "&lt;") == 0 ||
                   page.compare(at, 4, "&gt;") == 0 || page.compare(at, 6, "&quot;") == 0));
}

class Rows : public testing::Test {
protected:
    VemoEngine::Result calculated(std::string_view text, std::string_view locale = "en_US") {
        Environment environment = test::fixedEnvironment();
        environment.locale = locale;
        engine = std::make_unique<VemoEngine>(environment);
        engine->buildVemoWorker();
        context = std::make_unique<Context>();
        return *engine->calculateSync(utf16(text), *context);
    }

    std::unique_ptr<VemoEngine> engine;
    std::unique_ptr<Context> context;
};

TEST_F(Rows, holdExactNumbersWithTheirUnits) {
    const char* document =
        "1/3\n$1234.5\n-2.5 km\n6 ft 2 in\n25%\n1,234,567 * 10\n0xff\nMarch 4, 2027 10:00\nnote\n60 km/h";
    Writing plain;
    plain.plain = true;
    std::vector<std::string> results;
    for (const Row& row : rowsOf(calculated(document), plain)) results.push_back(row.result);
    EXPECT_THAT(results, ElementsAre("0.3333333333333333333333333333333333", "1234.5 USD", "-2.5 km", "74 in", "25 %",
                                     "12345670", "255", "2027-03-04T10:00:00Z", "", "60 km/h"));
    plain.precision = 1;
    EXPECT_EQ(rowOf(calculated("2/3 km"), 0, plain).result, "0.7 km");
    // The locale's signs are for people.
    plain.precision.reset();
    for (const char* locale : {"de_DE", "sv_SE", "de_CH", "fr_FR"})
        EXPECT_EQ(rowOf(calculated("0 - 1234567 * 2 km", locale), 0, plain).result, "-2469134 km") << locale;
}

TEST_F(Rows, tellInstantsOfAnyYear) {
    const auto at = [](double seconds) { return instantText(Date(std::chrono::duration<double>(seconds))); };
    EXPECT_EQ(at(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(at(-0.5), "1969-12-31T23:59:59Z");
    EXPECT_EQ(at(951782399.9), "2000-02-28T23:59:59Z");
    EXPECT_EQ(at(-62135596800), "0001-01-01T00:00:00Z");
}

TEST_F(Rows, callATotalWhatItIs) {
    const auto label = [&](std::string_view text) {
        const auto total = totalOf(calculated(text), false);
        return total ? total->label + ": " + total->text : "none";
    };
    EXPECT_EQ(label("5"), "none");
    EXPECT_EQ(label("5\n7"), "total: 12");
    EXPECT_EQ(label("a\nb"), "none");
    EXPECT_THAT(label("5\n1/0\n7"), HasSubstr("of some lines"));
    EXPECT_THAT(label("March 4, 2027\n2 days"), testing::StartsWith("total: "));
    EXPECT_THAT(label("2 days\nMarch 4, 2027"), HasSubstr("of some lines"));
}

}  // namespace
}  // namespace vemo::session
