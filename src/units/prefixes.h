// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vemo {

class Localizer;

// A multiplier joined in front of a unit: 10^factor for the SI prefixes, 1024^factor for the IEC ones.
struct Prefix {
    std::vector<std::u16string> names;  // in the user's language and in English
    std::u16string internationalSymbol;
    std::u16string localizedSymbol;
    int factor;
};

// In ascending order (SI Brochure, 9th edition, table 7; IEC 80000-13).
std::vector<Prefix> siPrefixes(const Localizer& localizer);
std::vector<Prefix> iecPrefixes(const Localizer& localizer);

}  // namespace vemo
