// SPDX-License-Identifier: MIT
#include "files.h"

#include <array>
#include <cstdio>
#include <memory>

namespace vemo::cli {

namespace {

std::optional<std::string> readAll(std::FILE* stream) {
    std::string bytes;
    std::array<char, 1 << 16> buffer;
    for (std::size_t count; (count = std::fread(buffer.data(), 1, buffer.size(), stream)) > 0;)
        bytes.append(buffer.data(), count);
    return std::ferror(stream) ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace

std::optional<std::string> readFile(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    return file ? readAll(file.get()) : std::nullopt;
}

std::optional<std::string> readInput() {
    return readAll(stdin);
}

}  // namespace vemo::cli
