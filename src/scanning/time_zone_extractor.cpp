// SPDX-License-Identifier: MIT
#include "scanning/time_zone_extractor.h"

#include "scanning/dates/time_zone_abbreviations.h"
#include "scanning/extraction_priorities.h"

namespace vemo {

TimeZoneAbbreviationsExtractor::TimeZoneAbbreviationsExtractor(StringRangeDetector& stringRangeDetector,
                                                               std::string_view language)
    : detector_(stringRangeDetector) {
    for (const auto& [abbreviation, zone] : timeZoneAbbreviations()) {
        const TimeZone timeZone{std::u16string(zone)};
        detector_.add(abbreviation, timeZone, false);
        if (std::u16string lower = lowercased(abbreviation); !zoneForAbbreviation(lower, language).empty())
            detector_.add(std::move(lower), timeZone, false);
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
