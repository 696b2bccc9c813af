// SPDX-License-Identifier: MIT
#include "extensions.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "output.h"
#include "session/printable.h"

namespace vemo::cli {

using session::printable;

bool isFolder(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return true;
    complain(path + ": not a folder");
    return false;
}

void printLog(std::ostream& out, const std::string& log) {
    std::istringstream messages(log);
    for (std::string message; std::getline(messages, message);) out << "vemo: " << printable(message) << '\n';
}

void printLogs(std::ostream& out, const std::vector<Extension>& extensions) {
    for (const Extension& extension : extensions) {
        if (extension.skipped) out << "vemo: " << printable(extension.file) << ": cannot be read as text\n";
        std::istringstream messages(extension.log);
        for (std::string message; std::getline(messages, message);)
            out << "vemo: " << printable(extension.file) << ": " << printable(message) << '\n';
    }
}

bool report(std::ostream& out, const std::vector<Extension>& extensions) {
    const auto unusable = [](const Extension& extension) { return extension.failed || extension.skipped; };
    for (const Extension& extension : extensions) {
        out << printable(extension.file) << (unusable(extension) ? ": failed\n" : ": loaded\n");
        for (const std::string& defined : extension.defined) out << "    " << printable(defined) << '\n';
        if (extension.skipped) out << "    cannot be read as text\n";
        std::istringstream messages(extension.log);
        for (std::string message; std::getline(messages, message);) out << "    | " << printable(message) << '\n';
    }
    return std::none_of(extensions.begin(), extensions.end(), unusable);
}

}  // namespace vemo::cli
