// SPDX-License-Identifier: MIT
#include "session/saving.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "session/write_all.h"

namespace vemo::session {

namespace {

mode_t modeFor(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) == 0) return status.st_mode & 07777;
    // Asked for once, for asking sets another one for a moment, and does so for all threads.
    static const mode_t mask = [] {
        const mode_t present = umask(0);
        umask(present);
        return present;
    }();
    return 0666 & ~mask;
}

}  // namespace

std::filesystem::path expanded(const std::string& name) {
    const char* home = std::getenv("HOME");
    if (home && *home && (name == "~" || name.starts_with("~/"))) return home + name.substr(1);
    return name;
}

std::string replaceFile(const std::filesystem::path& name, std::string_view text) {
    std::error_code error;
    std::filesystem::path file = std::filesystem::canonical(name, error);
    if (error) file = name;
    // A device that is named by mistake is not to be replaced.
    if (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error)) return "it is no file";
    std::string beside = file.string() + ".XXXXXX";
    const int descriptor = mkostemp(beside.data(), O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    const bool written = writeAll(descriptor, text) && fchmod(descriptor, modeFor(file)) == 0 && fsync(descriptor) == 0;
    int fault = written ? 0 : errno;
    close(descriptor);
    if (written && rename(beside.c_str(), file.c_str()) != 0) fault = errno;
    if (fault == 0) return "";
    unlink(beside.c_str());
    return std::strerror(fault);
}

}  // namespace vemo::session
