// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

namespace vemo {

struct TimeZoneAbbreviation {
    std::u16string_view abbreviation;
    std::u16string_view zone;  // an IANA name
};

// Sorted by abbreviation.
std::span<const TimeZoneAbbreviation> timeZoneAbbreviations();

// The zone that an abbreviation, in capitals, stands for; empty for none.
std::u16string_view zoneForAbbreviation(std::u16string_view abbreviation);
// The same, with the best known ones in lower case too, unless they are words of the language.
std::u16string_view zoneForAbbreviation(std::u16string_view text, std::string_view language);

// Zones that are meant only directly after a time: "4 pm ET".
std::u16string_view zoneAfterTime(std::u16string_view abbreviation);

}  // namespace vemo
