// SPDX-License-Identifier: MIT
// The rooms of src/, from low to high: a file includes from its own room and from lower ones only.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace vemo::test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> rooms{"base",           "platform",       "decimal", "records",   "scanning/words",
                                     "scanning/dates", "matching",       "units",   "functions", "evaluation",
                                     "scanning",       "output/archive", "output",  "online",    "scripting",
                                     "quicktype",      "engine"};

// The position of the room that a path below src/ lies in; their number for no room.
std::size_t roomOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return static_cast<std::size_t>(std::find(rooms.begin(), rooms.end(), folder) - rooms.begin());
}

TEST(Rooms, noIncludePointsUp) {
    const fs::path source = fs::path(VEMO_TEST_DATA_DIR) / ".." / "src";
    const std::regex include("#include \"([a-z_/]+\\.h)\"");
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        if (!entry.is_regular_file()) continue;
        const std::string path = fs::relative(entry.path(), source).string();
        const std::size_t room = roomOf(path);
        ASSERT_LT(room, rooms.size()) << path << " lies in no room";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (!std::regex_match(line, match, include) || match[1].str().starts_with("vemo/")) continue;
            const std::size_t included = roomOf(match[1]);
            ASSERT_LT(included, rooms.size()) << path << ": " << line;
            EXPECT_LE(included, room) << path << " includes " << match[1] << " of a higher room";
            ++seen;
        }
    }
    EXPECT_GT(seen, 300u);
}

}  // namespace
}  // namespace vemo::test
