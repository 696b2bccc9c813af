// SPDX-License-Identifier: MIT
// The rooms of src/, from low to high: a file includes from its own room and from lower ones only.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace vemo::test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> rooms{"base",           "platform",       "decimal", "records",   "scanning/words",
                                     "scanning/dates", "matching",       "units",   "functions", "evaluation",
                                     "scanning",       "output/archive", "output",  "online",    "scripting",
                                     "quicktype",      "engine",         "session", "c"};

// The position of the room that a path below src/ lies in; their number for no room.
std::size_t roomOf(const std::string& path) {
    const std::string folder = fs::path(path).parent_path().string();
    return static_cast<std::size_t>(std::find(rooms.begin(), rooms.end(), folder) - rooms.begin());
}

// The path that a line includes with quotes; nothing for the public headers and for other lines.
std::optional<std::string> includedPath(const std::string& line) {
    const std::string start = "#include \"";
    if (!line.starts_with(start) || !line.ends_with("\"") || line.size() <= start.size()) return std::nullopt;
    std::string path = line.substr(start.size(), line.size() - start.size() - 1);
    if (path.starts_with("vemo/")) return std::nullopt;
    return path;
}

TEST(Rooms, noIncludePointsUp) {
    const fs::path source = fs::path(VEMO_TEST_DATA_DIR) / ".." / "src";
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        if (!entry.is_regular_file()) continue;
        const std::string path = fs::relative(entry.path(), source).string();
        const std::size_t room = roomOf(path);
        ASSERT_LT(room, rooms.size()) << path << " lies in no room";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            const auto included = includedPath(line);
            if (!included) continue;
            const std::size_t includedRoom = roomOf(*included);
            ASSERT_LT(includedRoom, rooms.size()) << path << ": " << line;
            EXPECT_LE(includedRoom, room) << path << " includes " << *included << " of a higher room";
            ++seen;
        }
    }
    EXPECT_GT(seen, 300u);
}

// An application includes what is public, the room that front ends share, and files of the applications.
TEST(Rooms, applicationsKnowNoOtherRoom) {
    const fs::path applications = fs::path(VEMO_TEST_DATA_DIR) / ".." / "apps";
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(applications)) {
        const std::string kind = entry.path().extension().string();
        if (kind != ".cpp" && kind != ".h") continue;
        const std::string own = fs::relative(entry.path(), applications).begin()->string();
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            const auto included = includedPath(line);
            if (!included || roomOf(*included) == rooms.size()) continue;
            const bool allowed = included->starts_with("session/") || fs::exists(applications / own / *included);
            EXPECT_TRUE(allowed) << entry.path() << ": " << line;
            ++seen;
        }
    }
    EXPECT_GT(seen, 30u);
}

}  // namespace
}  // namespace vemo::test
