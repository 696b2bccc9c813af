// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vemo/engine.h"

namespace vemo {

// A text that is edited and calculated again and again. An engine has any number of them beside each other: they share
// its calculator, rates and threads, each waits in a place of its own, and none cancels another's request. All calls
// belong to the thread of the engine's main executor. One that outlives its engine keeps its text, and is not
// calculated.
class VemoDocument {
public:
    // From the line `first` on, `inserted` lines took the place of `removed` ones.
    struct LineChange {
        std::size_t first = 0;
        std::size_t removed = 0;
        std::size_t inserted = 0;
        friend bool operator==(const LineChange&, const LineChange&) = default;
    };

    struct Answer {
        std::int64_t version = 0;  // of the text that was calculated
        VemoEngine::Result result;
        // What is told otherwise than in the answer before: text, runs, result or remarks of lines. Carried out one
        // after the other, in their ascending order, they turn its lines into those of this answer. Of a first answer,
        // all lines.
        std::vector<LineChange> changes;
    };
    using Callback = std::function<void(const std::shared_ptr<const Answer>&)>;

    // `version` is the caller's; `context` is what every calculation begins with.
    VemoDocument(VemoEngine& engine, std::u16string_view text, std::int64_t version = 0,
                 const Context& context = Context());
    ~VemoDocument();  // closes it
    VemoDocument(VemoDocument&&) noexcept;
    VemoDocument& operator=(VemoDocument&&) noexcept;

    // Puts `replacement` where `length` UTF-16 units are from `start` on; what lies past the end is left out. Nothing
    // is calculated before somebody asks.
    void edit(std::size_t start, std::size_t length, std::u16string_view replacement, std::int64_t version);
    void setContext(const Context& context);

    // Calculates the text as it is now, after what other documents asked for before. A newer request takes the place
    // of one that is not answered yet, whose callback then never runs. One made before the engine's worker is ready
    // waits for it; where the engine has no executor, the answer comes before the call returns.
    void calculate(Callback callback);
    // True from a request to its answer.
    bool isCalculating() const;
    // Drops what was asked for. It can be edited and calculated again.
    void close();

    const std::u16string& text() const;
    std::int64_t version() const;
    // Null before the first one.
    const std::shared_ptr<const Answer>& latest() const;
    // A line as it is calculated: see `VemoEngine::readingOf`.
    std::optional<std::u16string> readingOf(std::size_t line) const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace vemo
