// SPDX-License-Identifier: MIT
// Scripts in a folder: what they define and what they say.

#include <gtest/gtest.h>

#include "support/scripted.h"

namespace vemo::test {
namespace {

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
vemo.addUnit({id: "rung", phrases: "rung,rungs", baseUnitId: "m", ratio: 0.3, format: "|%@|"});
vemo.addUnit({id: "km/h", phrases: "km/h", format: "%@ km/h"});
vemo.addUnit({id: "mph", phrases: "mph", baseUnitId: "km/h", ratio: 1.609344, format: "%@ mph"});
vemo.addFunction({id: "twice", phrases: "twice,two times"}, a => ({double: 2 * a[0].double, unitId: a[0].unitId}));
vemo.addFunction({id: "count", phrases: "count"}, a => a.length);
vemo.addFunction({id: "spell", phrases: "spell"}, a => JSON.stringify(a));
)js");
    EXPECT_EQ(scripted.log(), "");
    EXPECT_EQ(scripted.engine.extensions()[0].defined,
              (Texts{"variable rooms", "variable desk", "unit lap", "unit rung", "unit km/h", "unit mph",
                     "function twice", "function count", "function spell"}));
    EXPECT_EQ(scripted.results("rooms * 2\nROOMS\ndesk + 50 cm\n3 laps in m\n1 lap in m\n804.672 m in laps\n3 "
                               "rungs\n60 mph in km/h\n10 km/2"),
              (Texts{"14", "7", "250 cm", "1,207.01 m", "402.34 m", "2 laps", "|3|", "96.56 km/h", "5 km"}));
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
