// SPDX-License-Identifier: MIT
#include "scripting/extensions.h"

#include <algorithm>

#include "base/text.h"
#include "platform/file_io.h"
#include "scripting/js_runner.h"

namespace vemo {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestFile = std::size_t(16) << 20;  // bytes
constexpr std::size_t mostBytes = std::size_t(64) << 20;    // of all files together

// Nothing for what is no regular file, can't be read, is too large or is no UTF-8.
std::optional<std::u16string> readText(const fs::path& path, std::size_t most) {
    const auto bytes = readFileAtMost(path, most);
    if (!bytes) return std::nullopt;
    std::u16string text = toUtf16(*bytes);
    if (toUtf8(text) != *bytes) return std::nullopt;
    if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
    return text;
}

}  // namespace

std::vector<Extension> loadExtensions(const fs::path& folder, std::recursive_mutex& lock,
                                      const std::function<void(std::string_view)>& log,
                                      FunctionRef<std::pair<JSRunner&, JSVemo&>()> scripts) {
    std::vector<Extension> extensions;
    if (folder.empty()) return extensions;
    std::size_t left = mostBytes;
    for (const fs::path& path : filesBelow(
             folder, [](const fs::path& p) { return p.extension() == ".js"; }, log)) {
        Extension& extension = extensions.emplace_back();
        extension.file = path.lexically_relative(folder).string();
        const auto text = readText(path, std::min(largestFile, left));
        if (!text) {
            extension.skipped = true;
            continue;
        }
        left -= std::min(left, text->size());
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
