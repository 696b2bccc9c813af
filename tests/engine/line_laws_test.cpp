// SPDX-License-Identifier: MIT
// What changes no meaning changes no result: blanks, brackets, comments, labels, letters' case, a name for the line.

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>

#include "base/text.h"
#include "support/lines.h"

namespace vemo::test {
namespace {

// A way to write the same line otherwise, and the forms of lines that mean something else then.
struct Rewriting {
    const char* name;
    std::string (*written)(const std::string& line);
    std::vector<std::string> exceptions = {};
};

void requireNoChange(const Rewriting& rewriting, const Tongue& tongue) {
    const Line line = anyLine(tongue);
    if (std::ranges::count(rewriting.exceptions, line.form) > 0) return;
    requireSame(tongue, line.text, rewriting.written(line.text));
}

template <class Rewritings>
void allHold(const Rewritings& rewritings) {
    for (const Rewriting& rewriting : rewritings) {
        SCOPED_TRACE(rewriting.name);
        for (const Tongue& tongue : tongues()) {
            SCOPED_TRACE(tongue.language);
            holds([&] { requireNoChange(rewriting, tongue); }, 150);
        }
    }
}

// Every character of ASCII as `change` makes it.
template <class Change>
std::string mapped(const std::string& line, Change change) {
    std::u16string text = utf16(line);
    for (char16_t& c : text) c = change(c);
    return utf8(text);
}

TEST(LineLaws, everyFormOfLineGivesAResult) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const Line line = anyLine(tongue);
            const Told told = Notepad::in(tongue).last(line.text);
            if (told.shown.empty()) RC_FAIL(line.text + " gives nothing" + told.remarks);
        });
}

TEST(LineLaws, whatStandsAroundChangesNothing) {
    allHold(std::vector<Rewriting>{
        {"label", [](const std::string& line) { return "What it costs: " + line; }},
        {"two labels", [](const std::string& line) { return "Trip: hotel: " + line; }},
        {"comment", [](const std::string& line) { return line + " // 3 of 5, as agreed"; }},
        {"quoted comment", [](const std::string& line) { return line + " \"as of $40 or 2%\""; }},
        {"quoted comment before", [](const std::string& line) { return "\"by 7, at 5 km\" " + line; }},
        {"blanks before", [](const std::string& line) { return "  \t" + line; }},
        {"blanks after", [](const std::string& line) { return line + " \u00a0 "; }},
        {"brackets", [](const std::string& line) { return "(" + line + ")"; }},
        {"brackets with blanks", [](const std::string& line) { return "( " + line + " )"; }},
        {"brackets in brackets", [](const std::string& line) { return "((" + line + "))"; }},
        {"equals sign", [](const std::string& line) { return line + " ="; }},
    });
}

TEST(LineLaws, howItIsWrittenChangesNothing) {
    allHold(std::vector<Rewriting>{
        {"doubled blanks", [](const std::string& line) { return replaced(line, " ", "  "); }},
        {"tabs", [](const std::string& line) { return replaced(line, " ", "\t"); }},
        {"no-break spaces", [](const std::string& line) { return replaced(line, " ", "\u00a0"); }},
        {"narrow no-break spaces", [](const std::string& line) { return replaced(line, " ", "\u202f"); }},
        {"wide spaces", [](const std::string& line) { return replaced(line, " ", "\u3000"); }},
        {"minus sign", [](const std::string& line) { return replaced(line, "- ", "\u2212 "); }},
        {"cross", [](const std::string& line) { return replaced(line, "*", "\u00d7"); }},
        {"marks apart",
         [](const std::string& line) {
             UErrorCode status = U_ZERO_ERROR;
             std::string apart;
             icu::Normalizer2::getNFDInstance(status)
                 ->normalize(icu::UnicodeString::fromUTF8(line), status)
                 .toUTF8String(apart);
             return apart;
         }},
        {"full width",
         [](const std::string& line) {
             return mapped(line, [](char16_t c) { return c > u' ' && c < 0x7f ? char16_t(c + 0xfee0) : c; });
         }},
        {"digits of full width",
         [](const std::string& line) {
             return mapped(line, [](char16_t c) { return c >= u'0' && c <= u'9' ? char16_t(c + 0xfee0) : c; });
         }},
        {"Arabic digits",
         [](const std::string& line) {
             return mapped(line, [](char16_t c) { return c >= u'0' && c <= u'9' ? char16_t(c + 0x630) : c; });
         }},
    });
}

// Words of four letters and more: shorter ones may be units that only their case tells apart.
std::string withWords(const std::string& line, bool wholly) {
    std::u16string text = utf16(line);
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        while (end < text.size() && isLetter(text[end])) ++end;
        if (end - i >= 4)
            for (std::size_t k = i; k < (wholly ? end : i + 1); ++k)
                if (text[k] >= u'a' && text[k] <= u'z') text[k] = char16_t(text[k] - 0x20);
        i = std::max(end, i + 1);
    }
    return utf8(text);
}

TEST(LineLaws, theCaseOfWordsChangesNothing) {
    allHold(std::vector<Rewriting>{
        {"capitals", [](const std::string& line) { return withWords(line, true); }},
        {"first letters", [](const std::string& line) { return withWords(line, false); }},
    });
}

TEST(LineLaws, aNameStandsForItsLine) {
    constexpr const char* names[] = {"x", "total cost", "größe", "Wert 2", "prix d'achat", "費用", "año", "rate_1"};
    for (const Tongue& tongue : tongues())
        holds([&] {
            const Line line = anyLine(tongue);
            const std::string name = anyRow(names);
            requireSame(tongue, line.text, name + " = " + line.text);
            requireSame(tongue, line.text, name + " = " + line.text + "\n" + name);
            requireSame(tongue, line.text, name + " = " + line.text + "\n\n  (" + name + ")  // again");
            requireSame(tongue, line.text, "v = w = " + line.text + "\nv");
        });
}

// What a line was calculated as is a line that gives the same.
TEST(LineLaws, aReadingGivesTheResult) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const Line line = anyLine(tongue);
            if (line.form.find("{d}") != line.form.npos) return;  // 1/2/27 is a quotient
            Notepad& notepad = Notepad::in(tongue);
            const std::string reading = notepad.reading(line.text);
            if (reading.empty()) RC_FAIL(line.text + " has no reading");
            if (notepad.last(line.text).value.has(Attribute::date)) return;
            requireSameUpToRounding(tongue, line.text, reading);
        });
}

}  // namespace
}  // namespace vemo::test
