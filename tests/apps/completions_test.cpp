// SPDX-License-Identifier: MIT
// What the shells complete after "vemo", and that no option is forgotten anywhere.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "support/command.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

const std::string project = VEMO_TEST_DATA_DIR "/..";

std::string textOf(const std::string& file) {
    std::ifstream stream(project + "/" + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool isThere(const std::string& shell) {
    return runShell("command -v " + shell + " >/dev/null 2>&1").status == 0;
}

// In a folder with a document and a folder.
Outcome shellSays(const TemporaryFolder& folder, const std::string& shell, const std::string& script) {
    const std::string file = (folder.path() / "script").string();
    std::ofstream(file) << script;
    std::ofstream(folder.path() / "budget.vemo") << "1\n";
    return runShell("cd '" + folder.path().string() +
                    "' && mkdir -p scripts && LC_ALL=C.UTF-8 HOME=$PWD XDG_CONFIG_HOME=$PWD " + shell + " '" + file +
                    "' 2>&1");
}

bool isOptionLetter(char c) {
    return (c >= 'a' && c <= 'z') || c == '-';
}

// The names of the options in a text, without their dashes.
std::set<std::string> optionsOf(const std::string& text) {
    std::set<std::string> options;
    for (std::size_t at = text.find("--"); at != text.npos; at = text.find("--", at)) {
        const std::size_t start = at + 2;
        for (at = start; at < text.size() && isOptionLetter(text[at]);) ++at;
        if (at > start) options.insert(text.substr(start, at - start));
    }
    return options;
}

// True where the name stands after `before` and ahead of one of the characters.
bool names(const std::string& text, const std::string& before, const std::string& name, std::string_view after) {
    const std::string whole = before + name;
    for (std::size_t at = text.find(whole); at != text.npos; at = text.find(whole, at + 1)) {
        const std::size_t end = at + whole.size();
        if (end < text.size() && after.find(text[end]) != after.npos) return true;
    }
    return false;
}

TEST(Completions, nameEveryOption) {
    const std::string help = runShell("XDG_CONFIG_HOME=/nonexistent '" + vemoCommand() + "' --help").output;
    const std::set<std::string> options = optionsOf(help);
    EXPECT_GT(options.size(), 15u);
    const std::string bash = textOf("completions/vemo.bash"), zsh = textOf("completions/_vemo"),
                      fish = textOf("completions/vemo.fish"), page = textOf("docs/vemo.1");
    for (const std::string& option : options) {
        EXPECT_TRUE(names(bash, "--", option, " \n\"")) << option;
        EXPECT_TRUE(names(zsh, "--", option, "}[")) << option;
        EXPECT_TRUE(names(fish, "-l ", option, " ")) << option;
        std::string escaped;
        for (const char c : option) escaped += c == '-' ? "\\-" : std::string(1, c);
        EXPECT_TRUE(names(page, "\\-\\-", escaped, "\\")) << option;
    }
}

TEST(Completions, workInBash) {
    const TemporaryFolder folder;
    const Outcome outcome = shellSays(folder, "bash --norc", ". '" + project + R"(/completions/vemo.bash'
compopt() { :; }
try() { COMP_WORDS=(vemo "$@"); COMP_CWORD=$#; COMPREPLY=(); _vemo; echo "${COMPREPLY[*]}"; }
try --for
try --format ""
try --format = c
try --timezone Europe/Berl
try --extensions ""
try bud
try -e bud
)");
    EXPECT_EQ(outcome.output,
              "--format\ntable csv tsv markdown html json\ncsv\nEurope/Berlin\nscripts\nbudget.vemo\n\n");
}

TEST(Completions, workInFish) {
    if (!isThere("fish")) GTEST_SKIP() << "no fish";
    const TemporaryFolder folder;
    const Outcome outcome = shellSays(folder, "fish --no-config", "source '" + project + R"(/completions/vemo.fish'
for line in 'vemo --forma' 'vemo --format c' 'vemo --color ' 'vemo --timezone Europe/Berl' 'vemo bud'
    complete -C $line | string replace -r '\t.*' ''
end
)");
    EXPECT_EQ(outcome.output, "--format\ncsv\nalways\nauto\nnever\nEurope/Berlin\nbudget.vemo\n");
}

// There, completion needs a terminal: one of the shell's own.
TEST(Completions, workInZsh) {
    if (!isThere("zsh")) GTEST_SKIP() << "no zsh";
    const TemporaryFolder folder;
    const Outcome outcome = shellSays(folder, "zsh -f", "completions='" + project + R"(/completions'
zmodload zsh/zpty
try() {
    zpty shell "TERM=dumb zsh -f -i"
    zpty -w shell "PS1=; unsetopt zle_bracketed_paste 2>/dev/null; fpath=('$completions' \$fpath); autoload -U compinit; compinit -u -D; vemo() { print -r -- \"got<\$*>\" }; zstyle ':completion:*' insert-unambiguous yes"
    zpty -w shell 'print -r -- rea''dy'
    zpty -r -m shell output '*ready*'
    zpty -w -n shell "$1"$'\t\n'
    zpty -r -m shell output '*got<*>*'
    print -r -- ${${output##*got<}%%>*}
    zpty -d shell
}
try 'vemo --forma'
try 'vemo --format cs'
try 'vemo --color alw'
try 'vemo --timezone Europe/Berl'
try 'vemo bud'
)");
    EXPECT_EQ(outcome.output, "--format\n--format csv\n--color always\n--timezone Europe/Berlin\nbudget.vemo\n");
}

}  // namespace
}  // namespace vemo::test
