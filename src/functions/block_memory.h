// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "records/context_parts.h"
#include "vemo/context.h"

namespace vemo {

// The results above; null without any. The line depends on them.
const ValuesList* previousResults(Context& context);

// False for lines of words, though a unit's or a function's name among them is a value.
bool isResult(const Value& value);

// True while what was read with these values would be read so again: it may depend on rates.
bool stillHold(const ContextMap& dependencies, const Context& context);

// What a function has made of the block, the run of lines with a result right above. Kept from line to line, so that a
// longer block costs what is new in it. Not synchronised.
template <class Summary>
class BlockMemory {
public:
    // The summary of the present block; null where there is none, or `add` refuses one of its values. `add` puts a
    // value into a summary, the oldest first, and is false where it does not go with those before.
    template <class Add>
    const Summary* summaryOf(Context& context, const Add& add) {
        const ValuesList* results = previousResults(context);
        if (!results) return nullptr;
        if (!stillHold(dependencies_, context)) latest_ = ValuesList();
        std::vector<ValuesList> added;  // the block up to each of its new values, the newest first
        ValuesList rest = *results;
        for (; !rest.empty() && isResult(rest.newest()) && !rest.isSameAs(latest_); rest.dropNewest())
            added.push_back(rest);
        if (rest.empty() || !rest.isSameAs(latest_)) {
            if (added.empty()) return nullptr;
            latest_ = ValuesList();
            summary_ = Summary();
            dependencies_ = ContextMap();
        }
        Context adding = ContextParts::layer(context);
        ContextParts::addDependencies(adding, dependencies_);
        for (; !added.empty() && add(summary_, added.back().newest(), adding); added.pop_back())
            latest_ = std::move(added.back());
        dependencies_ = ContextParts::dependencies(adding);
        ContextParts::addDependencies(context, dependencies_);
        if (added.empty()) return &summary_;
        add(summary_, added.back().newest(), context);  // once more, for the line to hear why not
        return nullptr;
    }

private:
    ValuesList latest_;  // ends with what the summary has taken last
    Summary summary_{};
    ContextMap dependencies_;
};

}  // namespace vemo
