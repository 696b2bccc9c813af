// SPDX-License-Identifier: MIT
#include "session/saving.h"

#include <cstdlib>

#include "platform/file_io.h"

namespace vemo::session {

std::filesystem::path expanded(const std::string& name) {
    const char* home = std::getenv("HOME");
    if (home && *home && (name == "~" || name.starts_with("~/"))) return home + name.substr(1);
    return name;
}

std::string replaceFile(const std::filesystem::path& file, std::string_view text) {
    std::string problem;
    vemo::replaceFile(file, text, NewFile::forEverybody, &problem);
    return problem;
}

}  // namespace vemo::session
