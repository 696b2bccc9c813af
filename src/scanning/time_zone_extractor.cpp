// SPDX-License-Identifier: MIT
#include "scanning/time_zone_extractor.h"

#include <algorithm>

#include "scanning/dates/time_zone_abbreviations.h"
#include "scanning/extraction_priorities.h"

namespace vemo {

namespace {

// Taken in lower case too: nothing that is a word or a common abbreviation of something else ("art", "met", "mst").
constexpr std::u16string_view wellKnown[] = {u"ACDT", u"ACST", u"AEDT", u"AEST", u"AKDT", u"AKST", u"AWST",
                                             u"BST",  u"CDT",  u"CEST", u"CET",  u"CST",  u"EDT",  u"EEST",
                                             u"EET",  u"EST",  u"GMT",  u"HKT",  u"HST",  u"JST",  u"KST",
                                             u"MDT",  u"MSK",  u"NZDT", u"NZST", u"PDT",  u"PST",  u"UTC"};
constexpr std::u16string_view frenchWords[] = {u"CET", u"EST"};

bool contains(auto& list, std::u16string_view text) {
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

}  // namespace

TimeZoneAbbreviationsExtractor::TimeZoneAbbreviationsExtractor(StringRangeDetector& stringRangeDetector,
                                                               std::string_view language)
    : detector_(stringRangeDetector) {
    const bool french = language.starts_with("fr");
    for (const auto& [abbreviation, zone] : timeZoneAbbreviations()) {
        const TimeZone timeZone{std::u16string(zone)};
        detector_.add(abbreviation, timeZone, false);
        if (contains(wellKnown, abbreviation) && !(french && contains(frenchWords, abbreviation)))
            detector_.add(lowercased(abbreviation), timeZone, false);
    }
}

void TimeZoneAbbreviationsExtractor::extract(const std::u16string& text, Context&,
                                             std::vector<Extraction>& result) const {
    for (const auto& match : detector_.detect(text)) {
        result.push_back({match.range, priority::usual, 0,
                          makeElement(Value(match.object), AttributedText(match.range.in(text), RunType::unit))});
    }
}

}  // namespace vemo
