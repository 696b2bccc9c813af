// SPDX-License-Identifier: MIT
// What is shown for a day or a time is read as the same, in the locales of every language.

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "support/calculators.h"

namespace vemo::test {
namespace {

class Reader {
public:
    Reader(const std::string& locale, const std::string& language) {
        Environment environment = fixedEnvironment();
        environment.locale = locale;
        environment.language = language;
        calculator_ = newCalculator(environment);
    }
    std::pair<Value, std::string> calculated(const std::string& line) const {
        Context context;
        const auto lines = calculator_->calculate(utf16(line), context).lines;
        if (lines.empty()) return {};
        return {lines.back()->value(), utf8(lines.back()->formattedValue().regular.value_or(u""))};
    }

private:
    std::unique_ptr<Calculator> calculator_;
};

TEST(ReadBack, daysAndTimesInEveryLanguage) {
    const std::pair<const char*, const char*> languages[] = {
        {"en_US", "en"}, {"en_GB", "en"}, {"en_CA", "en"}, {"en_AU", "en"}, {"en_IN", "en"}, {"en_ZA", "en"},
        {"de_DE", "de"}, {"de_AT", "de"}, {"de_CH", "de"}, {"fr_FR", "fr"}, {"fr_CA", "fr"}, {"fr_CH", "fr"},
        {"es_ES", "es"}, {"es_MX", "es"}, {"es_AR", "es"}, {"ja_JP", "ja"}, {"sv_SE", "en"}, {"nl_NL", "en"},
        {"pl_PL", "en"}, {"it_IT", "en"}, {"pt_BR", "en"}, {"fi_FI", "en"}, {"cs_CZ", "en"}, {"zh_CN", "en"}};
    std::mt19937_64 source(1);
    const auto random = [&](unsigned least, unsigned most) {
        return least + static_cast<unsigned>(source() % (most - least + 1));
    };
    std::string failed;
    for (const auto& [locale, language] : languages) {
        const Reader reader(locale, language);
        for (int i = 0; i < 40; ++i) {
            char line[64];
            const int length =
                std::snprintf(line, sizeof line, "%04u-%02u-%02u", random(2000, 2045), random(1, 12), random(1, 28));
            if (i % 2 == 1)
                std::snprintf(line + length, sizeof line - static_cast<std::size_t>(length), " %02u:%02u",
                              random(0, 23), random(0, 59));
            const auto [value, text] = reader.calculated(line);
            ASSERT_TRUE(value.date()) << locale << " " << line;
            // Strokes with two digits of a year are arithmetic where no clock time stands beside them.
            const bool time = i % 2 == 1, year = text.find(std::string(line, 4)) != text.npos;
            if (!time && !year && text.find('/') != text.npos) continue;
            const auto [again, shown] = reader.calculated(text);
            if (again.date() == value.date() && shown == text) continue;
            failed += "\n" + std::string(locale) + ": " + line + " is " + text + ", which is " + shown;
        }
    }
    EXPECT_EQ(failed, "");
}

}  // namespace
}  // namespace vemo::test
