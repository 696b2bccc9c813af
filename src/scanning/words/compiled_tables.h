// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace vemo {

// The phrase tables that the build compiles from resources/: sorted by language and table, entries by key.
struct CompiledEntry {
    std::u16string_view key;
    std::u16string_view value;
};

struct CompiledTable {
    std::u16string_view language;
    std::u16string_view table;
    const CompiledEntry* entries;
    std::size_t count;
};

extern const CompiledTable compiledTables[];
extern const std::size_t compiledTableCount;

}  // namespace vemo
