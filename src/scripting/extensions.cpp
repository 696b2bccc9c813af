// SPDX-License-Identifier: MIT
#include "scripting/extensions.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "base/text.h"
#include "scripting/js_runner.h"

namespace vemo {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFile = 16u << 20;  // bytes

std::vector<fs::path> scriptFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        if (entry->path().extension() == ".js" && !entry->is_directory(error)) files.push_back(entry->path());
    std::sort(files.begin(), files.end());
    return files;
}

// Nothing for what is no regular file, can't be read, is too large or is no UTF-8.
std::optional<std::u16string> readText(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > largestFile || error) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::u16string text = toUtf16(bytes);
    if (toUtf8(text) != bytes) return std::nullopt;
    if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
    return text;
}

}  // namespace

std::vector<Extension> loadExtensions(const fs::path& folder, std::recursive_mutex& lock,
                                      FunctionRef<std::pair<JSRunner&, JSVemo&>()> scripts) {
    std::vector<Extension> extensions;
    if (folder.empty()) return extensions;
    for (const fs::path& path : scriptFiles(folder)) {
        Extension& extension = extensions.emplace_back();
        extension.file = path.lexically_relative(folder).string();
        const auto text = readText(path);
        if (!text) {
            extension.skipped = true;
            continue;
        }
        const std::lock_guard guard(lock);
        const auto [runner, vemo] = scripts();
        runner.clearLog();
        extension.failed = !runner.evaluate(*text, path.filename().string());
        extension.log = toUtf8(runner.log());
        for (const std::u16string& defined : vemo.takeDefined()) extension.defined.push_back(toUtf8(defined));
    }
    return extensions;
}

std::string startUpLog(const std::vector<Extension>& extensions) {
    std::string log = "Initialization...\n";
    for (const Extension& extension : extensions) {
        if (extension.skipped) continue;
        log += fs::path(extension.file).filename().string() + "...\n" + extension.log;
    }
    return log;
}

}  // namespace vemo
