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

    // True when one letter too many, one too few or two swapped make the word, in lower case, of the name of a unit;
    // another letter in place of one makes too many words of another meaning: "pants", "pounds" and "rounds".
    bool isNearly(std::u16string_view word) const;

private:
    std::map<char16_t, std::vector<std::u16string_view>> names_;
};

}  // namespace vemo
