// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/attributed_text.h"
#include "vemo/context.h"
#include "vemo/environment.h"

namespace vemo {

struct LineResult;

// What scripts may take; past it they are stopped.
struct ScriptLimits {
    std::chrono::milliseconds evaluation{2000};  // of processor time, for one file
    std::chrono::milliseconds call{100};         // of processor time, for one call in a line
    std::size_t memory = std::size_t{256} << 20;  // bytes by which the process may grow meanwhile
};

// What became of a script file.
struct Extension {
    std::string file;                  // the path below the folder
    std::string log;                   // its messages, each with a line feed behind it
    std::vector<std::string> defined;  // such as "unit furlong", in the order of definition
    bool failed = false;               // it did not come to its end
    bool skipped = false;              // it can't be read as text; no log
};

// What an application holds: calculates documents of one calculation per line.
class VemoEngine {
public:
    struct Config {
        bool enableQuickTypeHints = true;
        bool testMode = false;  // no timers
        bool debug = false;     // print the per-line trace
        std::filesystem::path extensions;  // folder of user scripts; empty: none
        ScriptLimits scriptLimits;
    };

    struct Result {
        // A handle that shares what it shows. Safe to read from several threads.
        class Line {
        public:
            explicit Line(std::shared_ptr<const LineResult> result) : result_(std::move(result)) {}
            const AttributedText& attributedText() const;  // joins to the line's text
            const FormattedValue& formattedResult() const;
            const QuickTypeData& quickTypeData() const;
            const std::u16string& extensionsLog() const;  // what user scripts logged while it was calculated

        private:
            std::shared_ptr<const LineResult> result_;
        };
        std::vector<Line> lines;
        const Context* context = nullptr;  // the context given, with what the document set
    };

    explicit VemoEngine(Environment environment = {});
    ~VemoEngine();
    VemoEngine(const VemoEngine&) = delete;
    VemoEngine& operator=(const VemoEngine&) = delete;

    // Sets up a calculator, replacing an earlier one.
    void buildVemoWorker(const Config& config);
    void buildVemoWorker() { buildVemoWorker(Config()); }
    // Calculates on the caller's thread and changes `context`. Nothing before a worker was built.
    std::optional<Result> calculateSync(std::u16string_view text, Context& context);

    // What the building of the worker and the loading of the user scripts said.
    const std::string& startUpLog() const;
    // The user scripts, in the order of their loading.
    const std::vector<Extension>& extensions() const;

    // The version of the library, such as "1.2.3".
    static std::string_view version();

private:
    struct State;
    std::unique_ptr<State> state_;
};

// Text conversion for callers: ill-formed input becomes U+FFFD.
std::u16string utf16(std::string_view utf8);
std::string utf8(std::u16string_view text);

}  // namespace vemo
