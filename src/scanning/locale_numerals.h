// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/locale_info.h"

namespace vemo {

// Puts the numbers of a line as a locale writes them into the signs that literals are read in: digits of other
// scripts, separators such as "’" and "٫", exponents such as "×10^−7". The length stays the same, so that ranges do.
class LocaleNumerals {
public:
    explicit LocaleNumerals(const LocaleInfo& locale);

    // Letters, digits and signs of full width become the usual ones, too.
    std::u16string folded(std::u16string_view line) const;
    // The locale with the separators that numbers have after that.
    const LocaleInfo& locale() const { return locale_; }

private:
    void foldSeparators(std::u16string& text) const;
    void foldExponents(std::u16string& text) const;
    bool isGrouping(std::u16string_view text, std::size_t at) const;
    bool isExponent(std::u16string_view text, std::size_t at, std::u16string_view mark) const;

    LocaleInfo locale_;
    char16_t decimal_ = 0;  // the separators that are folded; 0 for none
    char16_t grouping_ = 0;
    bool apostrophes_ = false;  // numbers are grouped with them
};

}  // namespace vemo
