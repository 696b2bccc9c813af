// SPDX-License-Identifier: MIT
#include "platform/file_io.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class Files : public testing::Test {
protected:
    fs::path write(const std::string& name, const std::string& bytes) {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }
    static std::optional<std::string> read(const fs::path& path) { return readFileAtMost(path, 1000); }
    std::vector<std::string> found(const fs::path& below, const std::string& ending) {
        std::vector<std::string> names;
        const auto wanted = [&](const fs::path& path) { return path.extension() == ending; };
        for (const fs::path& path : filesBelow(below, wanted, [&](std::string_view line) { log += line; }))
            names.push_back(fs::relative(path, below).string());
        return names;
    }
    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder)) result.push_back(entry.path().filename());
        std::sort(result.begin(), result.end());
        return result;
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path();
    std::string log;
};

TEST_F(Files, areReadUpToABound) {
    const std::string bytes("a\0\xff\n", 4);
    EXPECT_EQ(readFileAtMost(write("four", bytes), 4), bytes);
    EXPECT_EQ(readFileAtMost(folder / "four", 3), std::nullopt);
    EXPECT_EQ(readFileAtMost(write("none", ""), 0), "");
    fs::create_symlink(folder / "four", folder / "link");
    EXPECT_EQ(read(folder / "link"), bytes);
}

// What is no regular file is not waited for: a pipe without a writer would never answer.
TEST_F(Files, areRegularFiles) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink(folder / "nowhere", folder / "dangling");
    fs::create_symlink(folder / "circle", folder / "circle");
    for (const char* name : {"pipe", "missing", "dangling", "circle", "four/below", ""})
        EXPECT_EQ(read(folder / name), std::nullopt) << name;
    EXPECT_EQ(read("/dev/zero"), std::nullopt);
}

TEST_F(Files, areFoundInTheOrderOfTheirPaths) {
    for (const char* name : {"b.js", "a/z.js", "a/b/c.js", "a.js", "notes.txt", "a/.js", "folder.js/in.js"})
        write(name, "");
    fs::create_directory_symlink(folder, folder / "a" / "loop");  // is not followed
    fs::create_directory_symlink(folder / "a", folder / "other.js");
    fs::create_symlink(folder / "nowhere", folder / "dangling.js");  // a file that its reader will miss
    EXPECT_THAT(found(folder, ".js"),
                ElementsAre("a/b/c.js", "a/z.js", "a.js", "b.js", "dangling.js", "folder.js/in.js"));
    EXPECT_THAT(found(folder / "missing", ".js"), ElementsAre());
    EXPECT_THAT(found(folder / "b.js", ".js"), ElementsAre());
    EXPECT_EQ(log, "");
}

TEST_F(Files, areNotSearchedForWithoutEnd) {
    for (int i = 0; i < 20'001; ++i) ::close(::open((folder / std::to_string(i)).c_str(), O_CREAT | O_WRONLY, 0600));
    std::size_t seen = 0;
    const auto count = [&](const fs::path&) { return ++seen > 0; };
    EXPECT_EQ(filesBelow(folder, count, [&](std::string_view line) { log += line; }).size(), 20'000u);
    EXPECT_EQ(seen, 20'000u);
    EXPECT_THAT(log, testing::HasSubstr(folder.string()));
    EXPECT_EQ(filesBelow(folder, count, nullptr).size(), 20'000u);  // nobody wants to know
}

TEST_F(Files, areReplacedWholeOrNotAtAll) {
    const fs::path path = write("file", "before");
    ::chmod(path.c_str(), 0604);
    EXPECT_TRUE(replaceFile(path, std::string(100'000, 'x')));
    EXPECT_EQ(readFileAtMost(path, 1'000'000), std::string(100'000, 'x'));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0604));
    EXPECT_TRUE(replaceFile(folder / "new", ""));
    EXPECT_EQ(read(folder / "new"), "");
    EXPECT_EQ(fs::status(folder / "new").permissions(), fs::perms(0600));  // nobody else's
    fs::create_directory(folder / "folder");
    for (const char* name : {"folder", "missing/file", "file/below"})
        EXPECT_FALSE(replaceFile(folder / name, "x")) << name;
    EXPECT_THAT(names(), ElementsAre("file", "folder", "new"));
}

// The place is taken by a new file: what is read from the old one stays as it was.
TEST_F(Files, leaveReadersWhatTheyOpened) {
    const fs::path path = write("file", "before");
    std::ifstream reader(path);
    ASSERT_TRUE(replaceFile(path, "after"));
    std::string text;
    reader >> text;
    EXPECT_EQ(text, "before");
    EXPECT_EQ(read(path), "after");
}

// Leftovers are told by their names, and by nobody holding them locked.
TEST_F(Files, leaveNothingOfProcessesThatAreGone) {
    for (const char* name : {"file", "file.part-abcdef", "file.part-123456", "file.part-abcdefg", "file.part-abc",
                             "other.part-abcdef", "xfile.part-abcdef"})
        write(name, "");
    const int held = ::open((folder / "file.part-123456").c_str(), O_RDONLY);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    write("outside/target", "");
    fs::create_symlink(folder / "outside" / "target", folder / "file.part-lllink");
    removeLeftovers(folder / "file");
    EXPECT_THAT(names(), ElementsAre("file", "file.part-123456", "file.part-abc", "file.part-abcdefg",
                                     "file.part-lllink", "other.part-abcdef", "outside", "xfile.part-abcdef"));
    ::close(held);
    removeLeftovers(folder / "file");
    EXPECT_FALSE(fs::exists(folder / "file.part-123456"));
    removeLeftovers(folder / "missing" / "file");  // is nothing to complain about
}

// A name without a folder is one in the working folder, for both.
TEST_F(Files, mayLieInTheWorkingFolder) {
    const fs::path before = fs::current_path();
    write("file.part-abcdef", "");
    fs::current_path(folder);
    const bool replaced = replaceFile("file", "x");
    removeLeftovers("file");
    fs::current_path(before);
    EXPECT_TRUE(replaced);
    EXPECT_THAT(names(), ElementsAre("file"));
}

}  // namespace
}  // namespace vemo::test
