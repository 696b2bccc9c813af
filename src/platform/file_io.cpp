// SPDX-License-Identifier: MIT
#include "platform/file_io.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <utility>

namespace vemo {

namespace {

constexpr std::string_view placeholder = ".part-XXXXXX";  // after the name of a temporary file: each X is a letter
constexpr std::size_t mostEntries = 20'000;               // of a folder that is read whole

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }

private:
    int number_;
};

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::filesystem::path folderOf(const std::filesystem::path& path) {
    return path.has_parent_path() ? path.parent_path() : ".";
}

// A name that nobody has guessed, beside the path.
std::string temporaryName(const std::filesystem::path& path) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string name = path.string() + std::string(placeholder);
    std::random_device random;
    for (std::size_t i = name.find_last_not_of('X') + 1; i < name.size(); ++i)
        name[i] = letters[random() % letters.size()];
    return name;
}

// A new file beside the path, locked as long as it is held open: who finds it unlocked may remove it. The process's
// mask takes from the mode, as only opening does without a change of that mask.
Descriptor newTemporary(const std::filesystem::path& path, mode_t mode, std::string& name) {
    for (int attempt = 0; attempt < 10; ++attempt) {
        name = temporaryName(path);
        Descriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (!file && errno == EEXIST) continue;
        if (!file) return file;
        ::flock(file.number(), LOCK_EX);
        // Somebody may have removed it before it was locked.
        struct stat status {};
        if (::fstat(file.number(), &status) == 0 && status.st_nlink > 0) return file;
    }
    return Descriptor(-1);
}

}  // namespace

std::optional<std::string> readFileAtMost(const std::filesystem::path& path, std::size_t most) {
    // Non-blocking: opening a pipe must not wait for a writer.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (status.st_size < 0 || static_cast<std::uintmax_t>(status.st_size) > most) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::read(file.number(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;  // it shrank meanwhile
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder,
                                              FunctionRef<bool(const std::filesystem::path&)> wanted,
                                              const std::function<void(std::string_view)>& log) {
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    std::error_code error;
    std::vector<fs::path> folders{folder};  // one by one: an error within one then ends no other
    std::size_t seen = 0;
    while (!folders.empty()) {
        const fs::path next = std::move(folders.back());
        folders.pop_back();
        fs::directory_iterator entry(next, error);
        for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
            if (++seen > mostEntries) {
                if (log) log(folder.string() + ": more than " + std::to_string(mostEntries) + " entries, not all read");
                folders.clear();
                break;
            }
            std::error_code unknown;
            if (entry->is_directory(unknown)) {
                if (!entry->is_symlink(unknown)) folders.push_back(entry->path());
            } else if (wanted(entry->path())) {
                files.push_back(entry->path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replaceFile(const std::filesystem::path& path, std::string_view bytes, NewFile created, std::string* problem) {
    const auto refuse = [&](const char* why) {
        if (problem) *problem = why;
        return false;
    };
    std::error_code error;
    std::filesystem::path file = std::filesystem::canonical(path, error);
    if (error) file = path;
    struct stat old {};
    const bool exists = ::stat(file.c_str(), &old) == 0;
    // A device that is named by mistake is not to be replaced.
    if (exists && !S_ISREG(old.st_mode)) return refuse("it is no file");
    std::string temporary;
    const Descriptor written = newTemporary(file, created == NewFile::forOwner ? 0600 : 0666, temporary);
    if (!written) return refuse(std::strerror(errno));
    if ((exists && ::fchmod(written.number(), old.st_mode & 07777) != 0) || !writeAll(written.number(), bytes) ||
        ::fsync(written.number()) != 0 || ::rename(temporary.c_str(), file.c_str()) != 0) {
        const int fault = errno;
        ::unlink(temporary.c_str());
        return refuse(std::strerror(fault));
    }
    const Descriptor directory(::open(folderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory) ::fsync(directory.number());
    return true;
}

void removeLeftovers(const std::filesystem::path& path) {
    const std::string name = path.filename().string() + std::string(placeholder.substr(0, placeholder.find('X')));
    std::error_code error;
    std::filesystem::directory_iterator entry(folderOf(path), error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::string other = entry->path().filename().string();
        if (!other.starts_with(name) || other.size() != path.filename().string().size() + placeholder.size()) continue;
        const Descriptor file(::open(entry->path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
        if (file && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0) ::unlink(entry->path().c_str());
    }
}

}  // namespace vemo
