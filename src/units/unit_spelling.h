// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "units/unit_manager.h"

namespace vemo {

// The names of units by what they begin with, to tell a slip of the keyboard from a word that means something else:
// "kilometrs", "houres", "mni". The units must outlive it.
class UnitSpelling {
public:
    explicit UnitSpelling(const UnitManager& units);

    // True for a word, in lower case, that is the name of a unit with one letter too many, one too few or two swapped.
    // One letter in place of another would make too many words of another meaning: "pants", "pounds" and "rounds".
    bool isNearly(std::u16string_view word) const;

private:
    std::map<char16_t, std::vector<std::u16string_view>> names_;
};

}  // namespace vemo
