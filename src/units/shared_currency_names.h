// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vemo {

class Localizer;

// Words for the money of several countries, such as "kr" and "pesos". They mean the money of the locale's country if
// that is one of them; elsewhere their meaning is open.
struct SharedCurrencyNames {
    std::vector<std::u16string> words;
    std::u16string currency;  // the code that they mean; empty for none
    std::u16string codes;     // of all that they may mean, for a message
};
std::vector<SharedCurrencyNames> sharedCurrencyNames(const Localizer& localizer, std::string_view locale);

}  // namespace vemo
