// SPDX-License-Identifier: MIT
#include "scanning/time_zone_extractor.h"

#include "platform/locale_info.h"
#include "platform/time_zones.h"
#include "scanning/dates/time_zone_abbreviations.h"
#include "scanning/extraction_priorities.h"

namespace vemo {

namespace {

// "UTC+3", "GMT-5:30": the zone with its offset, which touches it.
std::optional<PhraseMatch<TimeZone>> offsetAfter(std::u16string_view text, const PhraseMatch<TimeZone>& match) {
    if (match.object.identifier != u"UTC" && match.object.identifier != u"GMT") return std::nullopt;
    std::size_t i = match.range.end();
    if (i >= text.size() || (text[i] != u'+' && text[i] != u'-')) return std::nullopt;
    const int sign = text[i++] == u'-' ? -1 : 1;
    int fields[2] = {};
    std::size_t digits[2] = {};
    for (std::size_t field = 0; field < 2; ++field) {
        for (; i < text.size() && digitValue(text[i]) >= 0 && digits[field] < 3; ++i, ++digits[field])
            fields[field] = fields[field] * 10 + digitValue(text[i]);
        const bool goesOn = field == 0 && i + 1 < text.size() && text[i] == u':' && digitValue(text[i + 1]) >= 0;
        if (!goesOn) break;
        ++i;
    }
    constexpr int furthest = 14, minutesPerHour = 60;
    if (digits[0] == 0 || digits[0] > 2 || fields[0] > furthest || (digits[1] != 0 && digits[1] != 2) ||
        fields[1] >= minutesPerHour)
        return std::nullopt;
    auto zone = fixedTimeZone(sign * (fields[0] * minutesPerHour + fields[1]) * minutesPerHour);
    if (!zone) return std::nullopt;
    return PhraseMatch<TimeZone>{*std::move(zone), {match.range.location, i - match.range.location}};
}

}  // namespace

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
    for (auto& match : detector_.detect(text)) {
        if (const auto offset = offsetAfter(text, match)) {
            match = *offset;
            result.push_back({match.range, priority::certainDate, 0,
                              makeElement(Value(match.object), AttributedText(match.range.in(text), RunType::unit))});
            continue;
        }
        result.push_back({match.range, priority::usual, 0,
                          makeElement(Value(match.object), AttributedText(match.range.in(text), RunType::unit))});
    }
}

}  // namespace vemo
