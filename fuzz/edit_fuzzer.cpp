// SPDX-License-Identifier: MIT
// A document that is edited again and again shows what a fresh calculation of it shows: with the results of all its
// earlier states in the cache, without any cache, and in an engine that has never seen it.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "base/text.h"
#include "engine/calculator.h"

namespace {

using namespace vemo;

std::unique_ptr<Calculator> newCalculator(bool cached) {
    Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "Europe/Berlin";
    environment.clock = [] { return Date(std::chrono::duration<double>(1795525200)); };
    Calculator::Config config;
    config.testMode = true;
    auto calculator = std::make_unique<Calculator>(config, environment);
    calculator->initialize();
    calculator->setCachesEnabled(cached);
    return calculator;
}

// What lines are made of: names that begin with any sign, what defines them, and what reads other lines.
constexpr const char* tokens[] = {"john", "@john", "#1",    "a b",  "a",    "b",  "x",      "_y",   "$z",      ".5",
                                  "%p",   "!n",    "\\t",   "~u",   "&v",   "'w", "\u00e9", "=",    "= 20",    "= 7 kg",
                                  "+=",   "+",     "-",     "*",    "/",    "(",  ")",      "%",    "1",       "2.5",
                                  "3 kg", "$4",    "sum",   "prev", "line", ":",  "//",     "\"",   "in",      "time",
                                  "now",  "today", "Paris", "sqrt", "km",   "of", " ",      " + 1", "average", "?"};

class Document {
public:
    // Takes one edit from the bytes; false at their end.
    bool edit(const std::uint8_t*& data, const std::uint8_t* end) {
        if (end - data < 4) return false;
        const std::size_t what = *data++ % 4, at = lines_.empty() ? 0 : *data++ % lines_.size();
        if (what == 0 && !lines_.empty()) {
            lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at));
            return true;
        }
        std::string line;
        for (std::size_t count = 1 + *data++ % 4; count > 0 && data != end; --count) {
            if (*data & 0x80 && !line.empty()) line += ' ';
            line += tokens[(*data++ & 0x7f) % std::size(tokens)];
        }
        constexpr std::size_t mostLines = 12;
        if (lines_.size() < mostLines && (what < 3 || lines_.empty()))
            lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), line);
        else
            lines_[at] = line;
        return true;
    }

    std::u16string text() const {
        std::string all;
        for (const std::string& line : lines_) all += line + '\n';
        return toUtf16(all);
    }

private:
    std::vector<std::string> lines_;
};

void compare(Calculator& calculator, Calculator& other, const std::u16string& text, const char* what) {
    Context a, b;
    const auto mine = calculator.calculate(text, a).lines, theirs = other.calculate(text, b).lines;
    for (std::size_t i = 0; i < mine.size(); ++i) {
        const bool same = mine[i]->value() == theirs[i]->value() &&
                          mine[i]->formattedValue() == theirs[i]->formattedValue() &&
                          mine[i]->attributedText() == theirs[i]->attributedText() &&
                          mine[i]->quickTypeData() == theirs[i]->quickTypeData();
        if (same) continue;
        const auto shown = [](const LineResult& line) { return toUtf8(line.formattedValue().regular.value_or(u"")); };
        std::fprintf(stderr, "%s: line %zu is '%s', should be '%s' in\n%s", what, i + 1, shown(*mine[i]).c_str(),
                     shown(*theirs[i]).c_str(), toUtf8(text).c_str());
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto cached = newCalculator(true), uncached = newCalculator(false);
    const std::uint8_t* const end = data + size;
    Document document;
    while (document.edit(data, end)) compare(*cached, *uncached, document.text(), "cached");
    static int inputs = 0;
    constexpr int inputsPerFresh = 512;  // an engine takes some milliseconds to set up
    if (++inputs % inputsPerFresh == 0) compare(*cached, *newCalculator(true), document.text(), "fresh");
    return 0;
}
