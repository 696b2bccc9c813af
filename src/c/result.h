// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "c/host.h"
#include "vemo/engine.h"
#include "vemo/vemo.h"

namespace vemo::c {

// What a line told, as the texts that are handed out.
struct LineTexts {
    struct Run {
        std::string text;
        std::string type;
    };
    struct Note {
        std::string kind;
        std::size_t start = 0, length = 0;
        std::string message;
    };
    struct Name {
        std::string name;
        std::size_t start = 0, length = 0;
        bool defines = false;
    };

    std::string text;
    std::optional<std::string> regular, shortText;
    std::optional<std::string> number, unit, instant, zone;
    std::int64_t milliseconds = 0;  // of the instant
    std::optional<std::string> reasonCode, reason;
    std::vector<Run> runs;
    std::vector<Note> notes;
    std::vector<Name> names;
    bool readingAsked = false;
    std::optional<std::string> reading;
};

}  // namespace vemo::c

// What a vemo_result refers to. Texts are made when they are asked for, and kept.
struct vemo_result {
    static constexpr std::size_t formatCount = 6;

    vemo_result(const std::shared_ptr<vemo::c::Host>& host, std::u16string text, vemo::VemoEngine::Result result);

    std::size_t lineCount() const { return result_.lines.size(); }
    const vemo::c::LineTexts& line(std::size_t index) const;
    vemo_text reading(std::size_t index) const;
    const std::string& log() const;
    const std::optional<std::string>& total(bool shortText) const;
    bool isTotalPartial() const { return partial_; }
    const std::string& formatted(vemo_format format) const;

private:
    vemo::c::LineTexts& made(std::size_t index) const;
    const std::string& logText() const;

    std::weak_ptr<vemo::c::Host> host_;
    std::u16string text_;
    vemo::VemoEngine::Result result_;
    std::optional<std::string> total_, totalShort_;
    bool partial_ = false;

    mutable std::mutex mutex_;  // of what follows
    mutable std::vector<std::unique_ptr<vemo::c::LineTexts>> lines_;
    mutable std::optional<std::string> log_;
    mutable std::array<std::optional<std::string>, formatCount> formats_;
};
