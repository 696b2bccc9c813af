// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace vemo {

// A compiled regular expression in ICU syntax with free spacing. Immutable once built; searching from
// several threads is safe.
class Regex {
public:
    // The pattern must be valid.
    Regex(std::u16string_view pattern, bool caseInsensitive);
    ~Regex();
    Regex(const Regex&) = delete;
    Regex& operator=(const Regex&) = delete;

    // All matches from left to right: their whole ranges and, with `groups`, after each those of the
    // groups that took part. A search that takes unreasonably long ends early.
    std::vector<TextRange> ranges(std::u16string_view text, bool groups = false) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> compiled_;
};

}  // namespace vemo
