// SPDX-License-Identifier: MIT
#include "scanning/dates/time_zone_abbreviations.h"

#include <algorithm>

#include "base/text.h"

namespace vemo {

namespace {

// An abbreviation stands for the clock of a region, in either season, as people mean it: 5 pm EST is 5 pm in New York.
// Of several owners the one most people live in is meant.
constexpr TimeZoneAbbreviation rows[] = {
    {u"ACDT", u"Australia/Adelaide"},
    {u"ACST", u"Australia/Adelaide"},
    {u"ADT", u"America/Halifax"},
    {u"AEDT", u"Australia/Sydney"},
    {u"AEST", u"Australia/Sydney"},
    {u"AKDT", u"America/Juneau"},
    {u"AKST", u"America/Juneau"},
    {u"ART", u"America/Argentina/Buenos_Aires"},
    {u"AST", u"America/Halifax"},
    {u"AWST", u"Australia/Perth"},
    {u"BDT", u"Asia/Dhaka"},
    {u"BRST", u"America/Sao_Paulo"},
    {u"BRT", u"America/Sao_Paulo"},
    {u"BST", u"Europe/London"},
    {u"CAT", u"Africa/Maputo"},
    {u"CDT", u"America/Chicago"},
    {u"CEST", u"Europe/Paris"},
    {u"CET", u"Europe/Paris"},
    {u"CLST", u"America/Santiago"},
    {u"CLT", u"America/Santiago"},
    {u"COT", u"America/Bogota"},
    {u"CST", u"America/Chicago"},
    {u"EAT", u"Africa/Nairobi"},
    {u"EDT", u"America/New_York"},
    {u"EEST", u"Europe/Athens"},
    {u"EET", u"Europe/Athens"},
    {u"EST", u"America/New_York"},
    {u"GMT", u"GMT"},
    {u"GST", u"Asia/Dubai"},
    {u"HDT", u"America/Adak"},
    {u"HKT", u"Asia/Hong_Kong"},
    {u"HST", u"Pacific/Honolulu"},
    {u"ICT", u"Asia/Bangkok"},
    {u"IDT", u"Asia/Jerusalem"},
    {u"IRST", u"Asia/Tehran"},
    {u"IST", u"Asia/Kolkata"},
    {u"JST", u"Asia/Tokyo"},
    {u"KST", u"Asia/Seoul"},
    {u"MDT", u"America/Denver"},
    {u"MESZ", u"Europe/Berlin"},
    {u"MEZ", u"Europe/Berlin"},
    {u"MMT", u"Asia/Yangon"},
    {u"MSK", u"Europe/Moscow"},
    {u"MST", u"America/Denver"},
    {u"MYT", u"Asia/Kuala_Lumpur"},
    {u"NDT", u"America/St_Johns"},
    {u"NPT", u"Asia/Kathmandu"},
    {u"NST", u"America/St_Johns"},
    {u"NZDT", u"Pacific/Auckland"},
    {u"NZST", u"Pacific/Auckland"},
    {u"PDT", u"America/Los_Angeles"},
    {u"PET", u"America/Lima"},
    {u"PHT", u"Asia/Manila"},
    {u"PKT", u"Asia/Karachi"},
    {u"PST", u"America/Los_Angeles"},
    {u"PYT", u"America/Asuncion"},
    {u"SAST", u"Africa/Johannesburg"},
    {u"SGT", u"Asia/Singapore"},
    {u"SST", u"Pacific/Pago_Pago"},
    {u"TRT", u"Europe/Istanbul"},
    {u"UTC", u"UTC"},
    {u"UYT", u"America/Montevideo"},
    {u"UZT", u"Asia/Tashkent"},
    {u"VET", u"America/Caracas"},
    {u"WAT", u"Africa/Lagos"},
    {u"WEST", u"Europe/Lisbon"},
    {u"WET", u"Europe/Lisbon"},
    {u"WIB", u"Asia/Jakarta"},
    {u"WIT", u"Asia/Jayapura"},
    {u"WITA", u"Asia/Makassar"},
};

// Taken in lower case too: nothing that is a word or a common abbreviation of something else ("art", "met", "mst").
constexpr std::u16string_view wellKnown[] = {u"ACDT", u"ACST", u"AEDT", u"AEST", u"AKDT", u"AKST", u"AWST",
                                             u"BST",  u"CDT",  u"CEST", u"CET",  u"CST",  u"EDT",  u"EEST",
                                             u"EET",  u"EST",  u"GMT",  u"HKT",  u"HST",  u"JST",  u"KST",
                                             u"MDT",  u"MSK",  u"NZDT", u"NZST", u"PDT",  u"PST",  u"UTC"};
// Of two letters, which elsewhere mean other things.
constexpr TimeZoneAbbreviation afterTimes[] = {{u"CT", u"America/Chicago"},
                                               {u"ET", u"America/New_York"},
                                               {u"MT", u"America/Denver"},
                                               {u"PT", u"America/Los_Angeles"},
                                               {u"Z", u"UTC"}};
constexpr std::u16string_view frenchWords[] = {u"CET", u"EST"};

bool contains(auto& list, std::u16string_view text) {
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

}  // namespace

std::span<const TimeZoneAbbreviation> timeZoneAbbreviations() {
    return rows;
}

std::u16string_view zoneForAbbreviation(std::u16string_view abbreviation) {
    const auto found = std::lower_bound(
        std::begin(rows), std::end(rows), abbreviation,
        [](const TimeZoneAbbreviation& row, std::u16string_view wanted) { return row.abbreviation < wanted; });
    return found != std::end(rows) && found->abbreviation == abbreviation ? found->zone : std::u16string_view();
}

std::u16string_view zoneForAbbreviation(std::u16string_view text, std::string_view language) {
    std::u16string capitals(text);
    for (char16_t& c : capitals)
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    if (capitals == text) return zoneForAbbreviation(text);
    if (lowercased(text) != text || !contains(wellKnown, capitals)) return {};
    if (language.starts_with("fr") && contains(frenchWords, capitals)) return {};
    return zoneForAbbreviation(std::u16string_view(capitals));
}

std::u16string_view zoneAfterTime(std::u16string_view abbreviation) {
    for (const TimeZoneAbbreviation& row : afterTimes)
        if (row.abbreviation == abbreviation) return row.zone;
    return {};
}

}  // namespace vemo
