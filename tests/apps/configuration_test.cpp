// SPDX-License-Identifier: MIT
// The configuration file, as programs read and change it. tests/apps/config_file_test.cpp has the command's side.
#include "session/configuration.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "session/configuration_writer.h"
#include "support/temporary_folder.h"

namespace vemo::session {
namespace {

using Changes = std::vector<ConfigurationChange>;

std::string changed(std::string_view text, const Changes& changes) {
    const auto result = changedConfiguration(text, changes);
    return result ? *result : "failed: " + result.failure().message;
}

TEST(Configuration, isChangedInPlace) {
    const std::string_view text = R"(# mine
locale = "de_DE"   # at home
# “Kurse” are rates
rates = "https://a.example/ä.json"  # ü
precision = 4

# how it looks
[notepad]
theme = "dark"
)";
    EXPECT_EQ(changed(text, {{"rates", "r.json"}, {"precision", 6}, {"notepad.theme", "light"}}), R"(# mine
locale = "de_DE"   # at home
# “Kurse” are rates
rates = "r.json"  # ü
precision = 6

# how it looks
[notepad]
theme = "light"
)");
    EXPECT_EQ(changed(text, {{"precision", std::nullopt},
                             {"locale", std::nullopt},
                             {"notepad.font", "Noto \"Sans\" 12"},
                             {"language", "de"},
                             {"places", std::nullopt}}),
              R"(# mine
# “Kurse” are rates
rates = "https://a.example/ä.json"  # ü
language = "de"

# how it looks
[notepad]
theme = "dark"
font = "Noto \"Sans\" 12"
)");
}

TEST(Configuration, growsFromNothing) {
    EXPECT_EQ(changed("", {{"notepad.theme", "dark"}, {"locale", "de_DE"}}),
              "locale = \"de_DE\"\n\n[notepad]\ntheme = \"dark\"\n");
    EXPECT_EQ(changed("# about\n[notepad]", {{"notepad.theme", "dark"}, {"locale", "ja_JP"}}),
              "locale = \"ja_JP\"\n\n# about\n[notepad]\ntheme = \"dark\"\n");
    EXPECT_EQ(changed("locale = 'x'", {{"precision", 0}}), "locale = 'x'\nprecision = 0\n");
}

TEST(Configuration, keepsWhatItDoesNotKnow) {
    const std::string_view text = "later = [\n  1, # one\n  2,\n]\n[other]\nkey = 1\n[[list]]\nx = 1\n";
    const std::string with = changed(text, {{"locale", "de_DE"}, {"notepad.theme", "dark"}});
    EXPECT_EQ(with,
              "later = [\n  1, # one\n  2,\n]\nlocale = \"de_DE\"\n\n[other]\nkey = 1\n[[list]]\nx = 1\n\n"
              "[notepad]\ntheme = \"dark\"\n");
    // What no line can be added to is written anew, with all its keys.
    const std::string inlined =
        changed("notepad = {theme = \"dark\", other = 5}\nlocale = \"de_DE\"\n", {{"notepad.font", "Serif 9"}});
    for (const char* part : {"other = 5", "dark", "Serif 9", "de_DE"})
        EXPECT_NE(inlined.find(part), std::string::npos) << inlined;
    EXPECT_TRUE(changed("locale = \n", {{"locale", "x"}}).starts_with("failed: 1: "));
}

TEST(Configuration, isReadAsFarAsItCanBe) {
    test::TemporaryFolder folder;
    const std::string file = (folder.path() / "config.toml").string();
    std::ofstream(file) << "rates = \"r.json\"\nprecision = -1\ncolour = \"auto\"\n[notepad]\ntheme = \"blue\"\n"
                           "font = \"Serif 9\"\n";
    const auto [values, problems] = readConfiguration(file);
    EXPECT_EQ(values.rates, (folder.path() / "r.json").string());
    EXPECT_EQ(values.font, "Serif 9");
    EXPECT_EQ(values.theme, "");
    std::vector<std::string> said;
    for (const Failure& problem : problems) said.push_back(problem.message.substr(file.size()));
    EXPECT_EQ(said, (std::vector<std::string>{":3: there is no key 'colour'; the nearest is color",
                                              ":5: 'theme' takes light, dark or desktop",
                                              ":2: 'precision' takes a number from 0 to 999"}));
}

TEST(Configuration, isWrittenWhereALinkLeads) {
    test::TemporaryFolder folder;
    const auto real = folder.path() / "dotfiles.toml", link = folder.path() / "new" / "vemo" / "config.toml";
    EXPECT_EQ(changeConfiguration(link.string(), {{"locale", "de_DE"}}), "");
    EXPECT_EQ(readConfiguration(link.string()).values.locale, "de_DE");
    std::filesystem::remove(link);
    std::ofstream(real) << "locale = \"fr_FR\"\n";
    ::chmod(real.c_str(), 0600);
    std::filesystem::create_symlink(real, link);
    EXPECT_EQ(changeConfiguration(link.string(), {{"precision", 3}}), "");
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    std::ifstream written(real);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), "locale = \"fr_FR\"\nprecision = 3\n");
    EXPECT_EQ(std::filesystem::status(real).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    std::ofstream(real) << "broken";
    EXPECT_NE(changeConfiguration(link.string(), {{"precision", 3}}), "");
}

}  // namespace
}  // namespace vemo::session
