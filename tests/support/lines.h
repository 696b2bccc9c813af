// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/calculators.h"
#include "support/laws.h"

namespace vemo::test {

// A language, and how numbers are written where it is spoken.
struct Tongue {
    const char* language;
    const char* locale;
    char decimal;
    const char* group;
};
std::span<const Tongue> tongues();  // English first

// A number of hundredths with up to two decimals.
std::string written(int hundredths, const Tongue& tongue, bool grouped = false);
std::string writtenDay(int year, int month, int day, const Tongue& tongue);

// A line, and the form it was made of: "{n} km in miles".
struct Line {
    std::string form;
    std::string text;
    friend std::ostream& operator<<(std::ostream& out, const Line& line) { return out << '\'' << line.text << '\''; }
};

// What was drawn for the blanks of a form, so that other forms can say the same of it.
using Filling = std::map<std::string, int>;
// The form with amounts in place of {n}, whole numbers of {w}, percentages of {p}, money of {m}, euros of {e}, days of
// {d}, times of {t} and units of length of {l}. A blank with a digit, "{n1}", is the same wherever it comes again.
std::string filled(std::string_view form, const Tongue& tongue, Filling& filling);
inline std::string filled(std::string_view form, const Tongue& tongue) {
    Filling filling;
    return filled(form, tongue, filling);
}
// A line of one of the forms in which such lines are written in the language.
Line anyLine(const Tongue& tongue);
// What a line tells: its result as it is shown, its value, its notes and its reason.
struct Told {
    std::string shown;
    Value value;
    std::vector<Note> notes;
    std::string remarks;
    std::string total;  // of the document up to its end
};

// A calculator with exchange rates, in a language.
class Notepad {
public:
    explicit Notepad(const Environment& environment);
    static Notepad& in(const Tongue& tongue);  // one for all tests

    std::vector<Told> lines(const std::string& document);
    Told last(const std::string& document) { return lines(document).back(); }
    // The last line as it is calculated; empty for none.
    std::string reading(const std::string& document);
    Calculator& calculator() { return *calculator_; }

private:
    static Context context();  // with the rates

    std::unique_ptr<Calculator> calculator_;
};

// Fails the law unless both documents end with the same value, shown the same, or the second one remarks something
// else.
void requireSame(const Tongue& tongue, const std::string& document, const std::string& other);
// The same where only the value matters; up to what the last digits of a division or conversion lose.
void requireSameValue(const Tongue& tongue, const std::string& document, const std::string& other);
void requireSameUpToRounding(const Tongue& tongue, const std::string& document, const std::string& other);

// The text with every occurrence replaced.
std::string replaced(std::string text, std::string_view from, std::string_view to);

}  // namespace vemo::test
