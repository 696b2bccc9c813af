// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "vemo/attributed_text.h"
#include "vemo/context.h"
#include "vemo/environment.h"

namespace vemo {

struct LineResult;

// What an application holds: calculates documents of one calculation per line.
class VemoEngine {
public:
    struct Config {
        bool enableQuickTypeHints = true;
        bool testMode = false;  // no timers
        bool debug = false;     // print the per-line trace
    };

    struct Result {
        // A handle that shares what it shows. Safe to read from several threads.
        class Line {
        public:
            explicit Line(std::shared_ptr<const LineResult> result) : result_(std::move(result)) {}
            const AttributedText& attributedText() const;  // joins to the line's text
            const FormattedValue& formattedResult() const;
            const QuickTypeData& quickTypeData() const;

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
