// SPDX-License-Identifier: MIT
#include "session/files.h"

#include <sys/stat.h>

#include <array>
#include <cstdio>
#include <memory>

namespace vemo::session {

namespace {

std::optional<std::string> readAll(std::FILE* stream, std::size_t most) {
    std::string bytes;
    std::array<char, 1 << 16> buffer;
    for (std::size_t count; (count = std::fread(buffer.data(), 1, buffer.size(), stream)) > 0;) {
        if (count > most - bytes.size()) return std::nullopt;
        bytes.append(buffer.data(), count);
    }
    return std::ferror(stream) ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace

std::optional<std::string> readFile(const std::string& path, std::size_t most) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    return file ? readAll(file.get(), most) : std::nullopt;
}

FileStamp stampOf(const std::string& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return {};
    return {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::optional<std::string> readInput() {
    return readAll(stdin, static_cast<std::size_t>(-1));
}

}  // namespace vemo::session
