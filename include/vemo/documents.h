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
        // The lines whose text, runs, result or remarks differ from those of the answer before; in a first answer, all
        // lines. In ascending order: carried out one after the other, the changes turn the lines of that answer into
        // those of this one.
        std::vector<LineChange> changes;
    };
    using Callback = std::function<void(const std::shared_ptr<const Answer>&)>;

    // `version` is a number of the caller's choice, which comes back with answers; every calculation begins with
    // `context`.
    VemoDocument(VemoEngine& engine, std::u16string_view text, std::int64_t version = 0,
                 const Context& context = Context());
    ~VemoDocument();  // closes it
    VemoDocument(VemoDocument&&) noexcept;
    VemoDocument& operator=(VemoDocument&&) noexcept;

    // Replaces `length` UTF-16 units from `start` on; a range past the end of the text is cut to it. Nothing is
    // calculated before somebody asks.
    void edit(std::size_t start, std::size_t length, std::u16string_view replacement, std::int64_t version);
    // What later calculations begin with.
    void setContext(const Context& context);

    // Calculates the text as it is now, after what other documents asked for before. A newer request takes the place
    // of one that is not answered yet, whose callback then never runs. One made before the engine's worker is ready
    // waits for it; where the engine has no executor, the answer comes before the call returns.
    void calculate(Callback callback);
    // True from a request to its answer.
    bool isCalculating() const;
    // Drops a request that is not answered yet: its callback never runs. The document can be edited and calculated
    // again.
    void close();

    // The text with all edits, and the version that came with the latest of them.
    const std::u16string& text() const;
    std::int64_t version() const;
    // The latest answer; null before the first.
    const std::shared_ptr<const Answer>& latest() const;
    // A line as it is calculated: see `VemoEngine::readingOf`.
    std::optional<std::u16string> readingOf(std::size_t line) const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace vemo
