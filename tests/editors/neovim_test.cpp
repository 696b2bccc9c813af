// SPDX-License-Identifier: MIT
// A real editor, with the plug-in as users install it.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

TEST(Neovim, showsResultsWhileOneTypes) {
    if (runShell("command -v nvim").status != 0) GTEST_SKIP() << "there is no nvim";
    const TemporaryFolder folder;
    const std::string document = (folder.path() / "notes.vemo").string(), seen = (folder.path() / "seen").string();
    std::ofstream(document) << "width = 6 ft\nwidth in cm\n";
    const std::string tests = VEMO_TEST_DATA_DIR;
    // Under a time limit of its own: an editor that waits for keys waits for ever.
    runShell("HOME=" + folder.path().string() + " XDG_CONFIG_HOME=/nonexistent VEMO_SEEN=" + seen +
             " VEMO_DOCUMENT=" + document + " timeout 100 nvim --headless --clean --cmd 'set runtimepath^=" + tests +
             "/../editors/neovim' -S " + tests + "/editors/neovim.lua 2>&1 < /dev/null");
    std::ifstream file(seen);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(text, "vemo // %s\n0: 6 ft, 1: 182.88 cm\n0: 6 ft, 1: 182.88 cm, 2: 3.333\n1: 3.333\n");
}

}  // namespace
}  // namespace vemo::test
