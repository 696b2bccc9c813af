// SPDX-License-Identifier: MIT
#include "prompt/history.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "session/files.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr std::size_t rememberedLines = 1000;
constexpr std::size_t largestFile = std::size_t(16) << 20;  // bytes
constexpr std::string_view earlierForm = "_HiStOrY_V2_\n";  // in which a backslash and three digits are a byte

std::string unescaped(std::string_view line) {
    const auto digit = [&](std::size_t at) { return at < line.size() && line[at] >= '0' && line[at] <= '7'; };
    std::string result;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\') {
            result += line[i];
        } else if (digit(i + 1) && digit(i + 2) && digit(i + 3)) {
            result += static_cast<char>((line[i + 1] - '0') * 64 + (line[i + 2] - '0') * 8 + (line[i + 3] - '0'));
            i += 3;
        } else if (i + 1 < line.size()) {
            result += line[++i];
        }
    }
    return result;
}

// Only the user may read what was calculated.
void write(const std::filesystem::path& file, int flags, const std::string& text) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0) return;
    // A history that can't be kept is no reason to stop.
    [[maybe_unused]] const ssize_t written = ::write(descriptor, text.data(), text.size());
    close(descriptor);
}

}  // namespace

History::History(std::filesystem::path file) : file_(std::move(file)) {
    if (file_.empty()) return;
    const auto text = session::readFile(file_.string(), largestFile);
    if (!text) return;
    std::string_view rest = *text;
    const bool earlier = rest.starts_with(earlierForm);
    if (earlier) rest.remove_prefix(earlierForm.size());
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        if (!line.empty()) lines_.push_back(utf16(earlier ? unescaped(line) : std::string(line)));
    }
    const bool tooMany = lines_.size() > rememberedLines;
    if (tooMany) lines_.erase(lines_.begin(), lines_.end() - rememberedLines);
    if (tooMany || earlier) rewrite();
}

void History::rewrite() const {
    std::string text;
    for (const std::u16string& line : lines_) text += utf8(line) + "\n";
    write(file_, O_TRUNC, text);
}

std::optional<std::size_t> History::find(std::u16string_view text, std::size_t end) const {
    for (std::size_t i = std::min(end, lines_.size()); i > 0; --i)
        if (lines_[i - 1].find(text) != std::u16string::npos) return i - 1;
    return std::nullopt;
}

void History::add(std::u16string_view line) {
    if (!lines_.empty() && lines_.back() == line) return;
    lines_.emplace_back(line);
    if (file_.empty()) return;
    std::error_code error;
    std::filesystem::create_directories(file_.parent_path(), error);
    // Adds a line at the end in one piece, for prompts on other terminals add theirs.
    write(file_, O_APPEND, utf8(line) + "\n");
}

std::filesystem::path historyFile() {
    const char* state = std::getenv("XDG_STATE_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state && *state == '/')
        folder = state;
    else if (home && *home == '/')
        folder = std::filesystem::path(home) / ".local" / "state";
    else
        return {};
    return folder / "vemo" / "history";
}

}  // namespace vemo::cli
