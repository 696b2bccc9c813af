// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <fstream>

#include "platform/file_io.h"
#include "session/saving.h"
#include "support/temporary_folder.h"

namespace vemo::test {
namespace {

namespace fs = std::filesystem;

class ReplacedFile : public testing::Test {
protected:
    std::string contents(const char* name) const {
        std::ifstream file(folder / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder)) all.push_back(entry.path().filename().string());
        return all;
    }
    int mode(const char* name) const { return static_cast<int>(fs::status(folder / name).permissions()); }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path();
};

TEST_F(ReplacedFile, keepsItsPermissionsAndItsLinks) {
    std::ofstream(folder / "target") << "old";
    ASSERT_EQ(chmod((folder / "target").c_str(), 0640), 0);
    fs::create_symlink("target", folder / "link");
    EXPECT_TRUE(replaceFile(folder / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(contents("target"), "new");
    EXPECT_EQ(mode("target"), 0640);
    EXPECT_THAT(names(), testing::UnorderedElementsAre("target", "link"));
}

TEST_F(ReplacedFile, isForWhomItIsMeantWhereThereWasNone) {
    const mode_t before = umask(022);
    EXPECT_TRUE(replaceFile(folder / "copy", "1"));
    EXPECT_EQ(session::replaceFile(folder / "document", "1"), "");
    umask(before);
    EXPECT_EQ(mode("copy"), 0600);
    EXPECT_EQ(mode("document"), 0644);
}

TEST_F(ReplacedFile, saysWhyItCouldNotBe) {
    EXPECT_EQ(session::replaceFile(folder, "1"), "it is no file");
    EXPECT_EQ(session::replaceFile("/dev/null", "1"), "it is no file");
    EXPECT_EQ(session::replaceFile(folder / "none" / "file", "1"), std::strerror(ENOENT));
    EXPECT_EQ(session::replaceFile(folder / std::string(255, 'a'), "1"), std::strerror(ENAMETOOLONG));
    EXPECT_FALSE(replaceFile(folder / "none" / "file", "1"));
    EXPECT_TRUE(names().empty());
}

}  // namespace
}  // namespace vemo::test
