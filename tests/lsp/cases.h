// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace vemo::test {

// A document with what must be seen beside its lines. In a file:
//
//     --- title of the case {"options": "of the initialisation"}
//     5 inch in cm          | 12.7 cm
//     nothing is beside this
//     a ‸cursor             | what is seen where it stands
//
// Blanks around the bar don't count.
struct LspCase {
    std::string title;
    nlohmann::json options;
    std::vector<std::string> lines;          // without the cursor
    std::vector<std::string> expected;       // of each line; empty for nothing
    std::size_t cursorLine = 0, cursor = 0;  // in UTF-16 units

    std::string text() const;
};

std::vector<LspCase> casesIn(const std::string& file);

}  // namespace vemo::test
