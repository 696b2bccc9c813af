// SPDX-License-Identifier: MIT
#include "lsp/framing.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vemo::lsp {

namespace {

constexpr std::size_t longestHeader = 4096;
constexpr std::string_view lengthName = "content-length:";

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool startsWithLength(std::string_view text) {
    return text.size() >= lengthName.size() && std::equal(lengthName.begin(), lengthName.end(), text.begin(),
                                                          [](char a, char b) { return a == lowered(b); });
}

// The length that a header tells; nothing where it tells none, or one that can't be.
std::optional<std::uint64_t> lengthIn(std::string_view header) {
    constexpr std::size_t mostDigits = 15;
    while (!header.empty()) {
        const std::size_t end = std::min(header.find('\n'), header.size());
        std::string_view line = header.substr(0, end);
        header.remove_prefix(std::min(end + 1, header.size()));
        if (!startsWithLength(line)) continue;
        line.remove_prefix(lengthName.size());
        const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
        while (!line.empty() && blank(line.front())) line.remove_prefix(1);
        while (!line.empty() && blank(line.back())) line.remove_suffix(1);
        if (line.empty() || line.size() > mostDigits) return std::nullopt;
        std::uint64_t length = 0;
        for (const char digit : line) {
            if (digit < '0' || digit > '9') return std::nullopt;
            length = length * 10 + static_cast<std::uint64_t>(digit - '0');
        }
        return length;
    }
    return std::nullopt;
}

}  // namespace

void Framing::feed(std::string_view bytes, const std::function<void(Frame)>& take) {
    while (!bytes.empty()) {
        switch (state_) {
            case State::header:
                bytes = feedHeader(bytes, take);
                break;
            case State::lost:
                bytes = find(bytes);
                break;
            case State::body:
            case State::skipping:
                bytes = feedBody(bytes, take);
                break;
        }
    }
}

std::string_view Framing::feedHeader(std::string_view bytes, const std::function<void(Frame)>& take) {
    while (!bytes.empty()) {
        const char byte = bytes.front();
        bytes.remove_prefix(1);
        header_ += byte;
        if (byte != '\n') {
            if (header_.size() < longestHeader) continue;
        } else if (header_.ends_with("\n\r\n") || header_.ends_with("\n\n")) {
            beginBody(take);
            return bytes;
        } else if (header_ == "\r\n" || header_ == "\n") {
            header_.clear();  // an empty line too many
            continue;
        } else if (header_.find(':') != header_.npos && header_.size() < longestHeader) {
            continue;
        }
        // No header begins like this; one may begin in what follows.
        take({Frame::Kind::malformed, ""});
        state_ = State::lost;
        header_.clear();
        return bytes;
    }
    return bytes;
}

void Framing::beginBody(const std::function<void(Frame)>& take) {
    const auto length = lengthIn(header_);
    header_.clear();
    if (!length) {
        take({Frame::Kind::malformed, ""});
        state_ = State::lost;
        return;
    }
    missing_ = *length;
    state_ = *length > largest_ ? State::skipping : State::body;
    if (state_ == State::skipping) take({Frame::Kind::tooLarge, ""});
    if (missing_ > 0) return;
    take({Frame::Kind::message, ""});
    state_ = State::header;
}

std::string_view Framing::feedBody(std::string_view bytes, const std::function<void(Frame)>& take) {
    const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(missing_, bytes.size()));
    missing_ -= count;
    if (state_ == State::body) body_ += bytes.substr(0, count);
    if (missing_ == 0) {
        if (state_ == State::body) take({Frame::Kind::message, std::exchange(body_, "")});
        state_ = State::header;
    }
    return bytes.substr(count);
}

// Drops what comes before the next header; its name may come in parts.
std::string_view Framing::find(std::string_view bytes) {
    while (!bytes.empty()) {
        const char byte = bytes.front();
        bytes.remove_prefix(1);
        header_ += byte;
        while (!header_.empty() && !std::equal(header_.begin(), header_.end(), lengthName.begin(),
                                               [](char a, char b) { return lowered(a) == b; }))
            header_.erase(0, 1);
        if (header_.size() < lengthName.size()) continue;
        state_ = State::header;
        return bytes;
    }
    return bytes;
}

std::string framed(std::string_view message) {
    std::string text = "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n";
    return text.append(message);
}

}  // namespace vemo::lsp
