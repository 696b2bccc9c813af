// SPDX-License-Identifier: MIT
// Scripts in a folder: what they define, what they say, and what they can't do to the calculator.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "support/calculators.h"

namespace vemo::test {
namespace {

namespace fs = std::filesystem;

// A folder of files that is gone in the end.
class Folder {
public:
    explicit Folder(const std::map<std::string, std::string>& files) {
        std::string pattern = testing::TempDir() + "vemo_scripts_XXXXXX";
        path_ = mkdtemp(pattern.data());
        for (const auto& [name, text] : files) {
            fs::create_directories((path_ / name).parent_path());
            std::ofstream(path_ / name, std::ios::binary) << text;
        }
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

// An engine with scripts and one document.
class Scripted {
public:
    explicit Scripted(const std::map<std::string, std::string>& files, ScriptLimits limits = {}) : engine(fixedEnvironment()) {
        const Folder folder(files);
        VemoEngine::Config config;
        config.testMode = true;
        config.extensions = folder.path();
        config.scriptLimits = limits;
        engine.buildVemoWorker(config);
    }
    explicit Scripted(const std::string& script, ScriptLimits limits = {})
        : Scripted(std::map<std::string, std::string>{{"test.js", script}}, limits) {}

    std::vector<std::string> results(std::string_view document) {
        Context context;
        std::vector<std::string> texts;
        logs.clear();
        const auto result = engine.calculateSync(utf16(document), context);
        for (const auto& line : result->lines) {
            texts.push_back(utf8(line.formattedResult().regular.value_or(u"")));
            logs.push_back(utf8(line.extensionsLog()));
        }
        return texts;
    }
    std::string result(std::string_view line) { return results(line).back(); }
    std::string log() const { return engine.extensions().at(0).log; }

    VemoEngine engine;
    std::vector<std::string> logs;  // by line of the latest document
};

using Texts = std::vector<std::string>;

TEST(Extensions, areTheScriptsOfAFolderInOrder) {
    Scripted scripted({{"b.js", "log('second')"},
                       {"a.js", "log('first'); vemo.log(1 + 1)"},
                       {"below/c.js", "log('third')"},
                       {"notes.txt", "log('no')"},
                       {"d.JS", "log('no')"},
                       {"e.js", "\xff\xfe log('no')"},
                       {"folder.js/f.js", "\xef\xbb\xbflog('marked')"}});
    EXPECT_EQ(scripted.engine.startUpLog(),
              "Initialization...\na.js...\nfirst\n2\nb.js...\nsecond\nc.js...\nthird\nf.js...\nmarked\n");
    EXPECT_EQ(Scripted(std::map<std::string, std::string>{}).engine.startUpLog(), "Initialization...\n");
}

TEST(Extensions, defineVariablesUnitsAndFunctions) {
    Scripted scripted(R"js(
vemo.setVariable("Rooms", 7);
vemo.setVariable("desk", {double: 2, unitId: "m"});
vemo.addUnit({id: "lap", phrases: "lap,laps", baseUnitId: "m", ratio: 402.336, format: "%@ laps"});
vemo.addFunction({id: "twice", phrases: "twice,two times"}, a => ({double: 2 * a[0].double, unitId: a[0].unitId}));
vemo.addFunction({id: "count", phrases: "count"}, a => a.length);
vemo.addFunction({id: "spell", phrases: "spell"}, a => JSON.stringify(a));
)js");
    EXPECT_EQ(scripted.log(), "");
    EXPECT_EQ(scripted.engine.extensions()[0].defined,
              (Texts{"variable rooms", "variable desk", "unit lap", "function twice", "function count", "function spell"}));
    EXPECT_EQ(scripted.results("rooms * 2\nROOMS\ndesk + 50 cm\n3 laps in m\n1 lap in m\n804.672 m in laps"),
              (Texts{"14", "7", "250 cm", "1,207.01 m", "402.34 m", "2 laps"}));
    EXPECT_EQ(scripted.results("twice 21\ntwo times (3 km)\ncount (1; 2; 3)"), (Texts{"42", "6 km", "3"}));
    EXPECT_EQ(scripted.result("spell 3"), "");
}

TEST(Extensions, sayWhereAScriptFailed) {
    Scripted scripted({{"a.js", "vemo.setVariable('kept', 5)\n\nnonsense()\nvemo.setVariable('lost', 6)"},
                       {"b.js", "log(1"},
                       {"c.js", "log('well')"}});
    const auto& extensions = scripted.engine.extensions();
    EXPECT_EQ(extensions[0].log, "Error on line 3: ReferenceError: Can't find variable: nonsense\n");
    EXPECT_TRUE(extensions[0].failed);
    EXPECT_TRUE(extensions[1].log.starts_with("Error on line 1: SyntaxError: ")) << extensions[1].log;
    EXPECT_EQ(extensions[2].log, "well\n");
    EXPECT_FALSE(extensions[2].failed);
    EXPECT_EQ(scripted.results("kept\nlost"), (Texts{"5", ""}));
}

}  // namespace
}  // namespace vemo::test
