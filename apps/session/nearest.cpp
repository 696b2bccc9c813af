// SPDX-License-Identifier: MIT
#include "session/nearest.h"

#include <algorithm>

namespace vemo::session {

namespace {

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// The number of changes, insertions, deletions and swaps of neighbours that make one word of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = lowered(a[i - 1]) == lowered(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && lowered(a[i - 1]) == lowered(b[j - 2]) && lowered(a[i - 2]) == lowered(b[j - 1]))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

}  // namespace

std::string nearest(std::string_view name, const std::vector<std::string>& names) {
    constexpr std::size_t longest = 100;
    std::string best;
    std::size_t least = static_cast<std::size_t>(-1);
    for (const std::string& candidate : names) {
        const std::size_t changes = distance(name.substr(0, longest), candidate);
        if (changes >= least) continue;
        least = changes;
        best = candidate;
    }
    return best;
}

}  // namespace vemo::session
