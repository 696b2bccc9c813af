// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "records/context_map.h"
#include "records/line_result.h"
#include "records/remarks.h"
#include "vemo/context.h"

namespace vemo {

// What only the engine does with a context. Nothing here copies entries.
class ContextParts {
public:
    static const ContextMap& data(const Context& context);
    static const ContextMap& updates(const Context& context);
    static const ContextMap& dependencies(const Context& context);

    // A copy for a short life: the first write to it is as cheap as any.
    static Context layer(const Context& context);
    static void add(Context& context, const ContextMap& data);
    // Sets the entries that a line set. None is registered as an update.
    static void addUpdatesOf(Context& context, const LineResult& line);
    static void addDependencies(Context& context, const ContextMap& dependencies);
    // The same for those of a line; it is put off until somebody asks for dependencies.
    static void addDependenciesOf(Context& context, LineResultPointer line);
};

}  // namespace vemo
