// SPDX-License-Identifier: MIT
// Documents: lines that do not mention each other give what each gives alone, totals don't depend on the order, and the
// names of variables don't matter.

#include <algorithm>

#include "support/lines.h"

namespace vemo::test {
namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string document;
    for (const std::string& line : lines) document += (document.empty() ? "" : "\n") + line;
    return document;
}

std::vector<std::string> anyLines(const Tongue& tongue, int most) {
    std::vector<std::string> lines;
    for (int i = anyOf(1, most); i > 0; --i) lines.push_back(anyLine(tongue).text);
    return lines;
}

TEST(DocumentLaws, linesThatMentionNoOtherStandAlone) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const std::vector<std::string> lines = anyLines(tongue, 8);
            const std::vector<Told> told = Notepad::in(tongue).lines(joined(lines));
            for (std::size_t i = 0; i < lines.size(); ++i) {
                const Told alone = Notepad::in(tongue).last(lines[i]);
                if (told[i].shown != alone.shown || told[i].value != alone.value || told[i].remarks != alone.remarks)
                    RC_FAIL(joined(lines) + "\n  gives " + told[i].shown + " in line " + std::to_string(i + 1) +
                            ", alone " + alone.shown);
            }
        });
}

// Lines of amounts that add up, whatever their order.
std::vector<std::string> summands(const Tongue& tongue) {
    constexpr const char* kinds[][4] = {{"{n}", "{n} * {w}", "food: {n}", "{p}% of {n}"},
                                        {"{m}", "{m} + {m}", "rent: {m}", "{w} x {m}"},
                                        {"{n} m", "{n} cm in m", "way: {n} m", "{n} m * {w}"},
                                        {"{w} h", "{w} h + {w} h", "work: {w} h", "{w} min in h"}};
    const auto& kind = anyRow(kinds);
    std::vector<std::string> lines;
    for (int i = anyOf(1, 7); i > 0; --i) lines.push_back(filled(anyRow(kind), tongue));
    return lines;
}

TEST(DocumentLaws, totalsDependOnNoOrder) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            std::vector<std::string> lines = summands(tongue);
            const Told total = Notepad::in(tongue).last(joined(lines) + "\n\n");
            const Told sum = Notepad::in(tongue).last(joined(lines) + "\nsum");
            const std::string first = joined(lines);
            std::ranges::sort(lines);
            for (const char* after : {"\n\n", "\nsum", "\naverage", "\nmax", "\nmedian", "\ncount"}) {
                const Told one = Notepad::in(tongue).last(first + after);
                const Told other = Notepad::in(tongue).last(joined(lines) + after);
                if (one.shown != other.shown || one.total != other.total)
                    RC_FAIL("\n" + first + after + " gives " + one.shown + " of " + one.total + ", sorted " +
                            other.shown + " of " + other.total);
            }
            // The sum of all lines is the total, and shows it.
            if (sum.shown != total.total || sum.total != total.total)
                RC_FAIL("\n" + first + "\nsum gives " + sum.shown + ", the total is " + total.total);
        });
}

TEST(DocumentLaws, aSumIsItsLinesAdded) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const std::vector<std::string> lines = summands(tongue);
            std::string names, added;
            for (std::size_t i = 0; i < lines.size(); ++i) {
                const std::string name = "v" + std::string(i + 1, 'w');
                names += name + " = " +
                         lines[i].substr(lines[i].find(": ") == lines[i].npos ? 0 : lines[i].find(": ") + 2) + "\n";
                added += (i == 0 ? "" : " + ") + name;
            }
            requireSame(tongue, joined(lines) + "\nsum", names + added);
        });
}

TEST(DocumentLaws, namesDoNotMatter) {
    constexpr const char* names[] = {"x", "net price", "größe", "価格", "coût total", "x2", "my_value", "año nuevo"};
    constexpr const char* uses[] = {"N + 1", "2 * (N - 3)", "N\nN * 2",  "y = N / 3\ny + N", "10% of N", "N += 5\nN",
                                    "N^2",   "(N)",         "N km in m", "sqrt N",           "-N",       "N * N"};
    for (const Tongue& tongue : tongues())
        holds([&] {
            const std::string use = anyRow(uses), one = anyRow(names), other = anyRow(names);
            const std::string number = written(anyOf(100, 99'999), tongue);
            const auto document = [&](const std::string& name) {
                return replaced("N = " + number + "\n" + use, "N", name);
            };
            requireSame(tongue, document(one), document(other));
            // In any case.
            std::string capitals = document("net price");
            capitals = replaced(capitals, "\n", "\n ") + "\nNET Price";
            requireSame(tongue, document("net price") + "\nnet price", capitals);
        });
}

TEST(DocumentLaws, theLineBeforeIsPrev) {
    holds([&] {
        const Tongue& english = tongues()[0];
        const std::string line = anyLine(english).text;
        requireSame(english, line, line + "\nprev");
        if (!Notepad::in(english).last(line).value.has(Attribute::date))
            requireSame(english, "x = " + line + "\nx * 2", line + "\nprev * 2");
    });
}

}  // namespace
}  // namespace vemo::test
