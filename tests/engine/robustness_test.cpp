// SPDX-License-Identifier: MIT
// What an engine is given may be broken, endless or enormous: it says so, and works on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file_io.h"
#include "support/scripted.h"

namespace vemo::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Files = std::map<std::string, std::string>;

// The result of a line, and what the log said that mentions `about`.
std::pair<std::string, std::string> resultAndLog(Environment environment, const std::string& line,
                                                 const std::string& about) {
    std::string log;
    environment.log = [&](std::string_view message) {
        if (message.find(about) != message.npos) log += message;
    };
    return {results(line, environment).back(), log};
}

TEST(Robustness, localesThatCannotBeUsedAreTheNeutralOne) {
    for (const std::string& name : {std::string("abcdefghijkl"), std::string(300, 'a'), "de_" + std::string(40, 'D'),
                                    "de@" + std::string(500, 'x'), std::string("/de"), std::string("\xff\xfe")}) {
        Environment environment = fixedEnvironment();
        environment.locale = name;
        environment.language = name;
        const auto [result, log] = resultAndLog(environment, "2 km + 1000.5 km + 1 May 2027 - 1 May 2027", "No locale");
        EXPECT_EQ(resultAndLog(environment, "2 * 1000.5 km", "No locale").first, "2,001 km") << name;
        EXPECT_THAT(log, HasSubstr("No locale is called")) << name;
    }
    for (const char* name :
         {"de_DE", "de_DE.UTF-8", "de_DE@euro", "zh-Hant-TW", "en_US_POSIX", "ca_ES_VALENCIA", "root"}) {
        Environment environment = fixedEnvironment();
        environment.locale = name;
        EXPECT_EQ(resultAndLog(environment, "1 + 1", "No locale").second, "") << name;
    }
}

TEST(Robustness, aLongChainOfAssignmentsTakesNoDepth) {
    std::string line;
    for (int i = 0; i < 900; ++i) line += "x = ";
    EXPECT_EQ(results(line + "7\nx + 1", fixedEnvironment()).back(), "8");
}

TEST(Robustness, foldersOfTablesMayHoldAnything) {
    const Folder folder(Files{{"en.lproj/Operations.strings", "\"sqrt.variants\" = \"wurzelbrunft\";"},
                              {"en.lproj/Units.strings", std::string(std::size_t(5) << 20, ' ')}});
    std::filesystem::create_symlink("endless", folder.path() / "endless");
    std::filesystem::create_directory_symlink(folder.path(), folder.path() / "en.lproj" / "again");
    ASSERT_EQ(mkfifo((folder.path() / "en.lproj" / "Constants.strings").c_str(), 0600), 0);
    Environment environment = fixedEnvironment();
    environment.resources = folder.path();
    const auto [result, log] = resultAndLog(environment, "wurzelbrunft(16)", "Units.strings");
    EXPECT_EQ(result, "4");
    EXPECT_THAT(log, HasSubstr("can't be read, or is too large"));
}

TEST(Robustness, foldersWithoutEndAreNotReadToTheirEnd) {
    const Folder folder(Files{{"000/a.js", "vemo.setVariable('a', 1)"}});
    for (int i = 0; i < 21'000; ++i)
        ASSERT_EQ(mknod((folder.path() / std::to_string(100'000 + i)).c_str(), S_IFREG, 0), 0);
    std::string log;
    const auto files = filesBelow(
        folder.path(), [](const auto&) { return true; }, [&](std::string_view message) { log = message; });
    EXPECT_THAT(log, HasSubstr("more than 20000 entries"));
    EXPECT_LE(files.size(), 20'000u);
}

TEST(Robustness, scriptsThatCannotBeReadAreSkipped) {
    const Folder folder(Files{{"b.js", "vemo.setVariable('b', 2)"}});
    ASSERT_EQ(mkfifo((folder.path() / "a.js").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder.path() / "c.js");
    VemoEngine engine(fixedEnvironment());
    VemoEngine::Config config;
    config.extensions = folder.path();
    engine.buildVemoWorker(config);
    std::vector<std::string> skipped;
    for (const Extension& extension : engine.extensions())
        if (extension.skipped) skipped.push_back(extension.file);
    EXPECT_THAT(skipped, ElementsAre("a.js", "c.js"));
    Context context;
    EXPECT_EQ(engine.calculateSync(u"b", context)->lines[0].formattedResult().regular, u"2");
}

}  // namespace
}  // namespace vemo::test
