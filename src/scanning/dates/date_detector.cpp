// SPDX-License-Identifier: MIT
#include "scanning/dates/date_detector.h"

#include "platform/locale_info.h"
#include "scanning/dates/date_resolver.h"

namespace vemo {

DateDetector::DateDetector(const Localizer& localizer, std::string_view language, std::string_view locale)
    : vocabulary_(localizer, language, locale), locale_(locale) {}

DateOrder DateDetector::order() const {
    std::call_once(orderIsKnown_, [&] { order_ = dateOrder(locale_); });
    return order_;
}

bool DateDetector::mayDetect(std::u16string_view text) const {
    std::u16string lower;
    std::size_t separators = 0;  // between digits
    char16_t before = u' ';
    const char16_t* const end = text.data() + text.size();
    for (const char16_t* c = text.data(); c != end; before = *c++) {
        if (*c < 0x80 && !isLetter(*c)) {
            if (*c == u' ' || digitValue(before) < 0) continue;
            if (*c == u'.' && separators == 1) ++separators;  // "24.12."
            if (c + 1 == end || digitValue(c[1]) < 0) continue;
            if (*c == u':') return true;
            if (*c == u'/' || *c == u'.' || *c == u'-' || *c == u'*') ++separators;
            continue;
        }
        if (isLetter(before) && !isCjk(*c) && !isCjk(before)) continue;
        const char16_t first = lowercasedUnit(*c);
        if (!vocabulary_.mayStart(first, c + 1 == end ? u' ' : lowercasedUnit(c[1]))) continue;
        if (lower.empty()) {
            lower = text;
            for (char16_t& unit : lower) unit = lowercasedUnit(unit);
        }
        const auto found = vocabulary_.longestAt(lower, static_cast<std::size_t>(c - text.data()));
        if (!found) continue;
        if (found->entry->telling) return true;
        if (!found->entry->tellingBeforeDigits) continue;
        const char16_t* next = c + found->length;
        while (next != end && isWhitespace(*next)) ++next;
        if (next != end && digitValue(*next) >= 0) return true;
    }
    return separators >= 2;
}

DetectedDates DateDetector::read(std::u16string_view text, std::u16string_view written, Date now,
                                 const TimeZoneRules& zone, DateNames isDateName) const {
    if (!mayDetect(text)) return {};
    DateReadings readings = readDates(text, written, vocabulary_, order(), isDateName);
    ResolvedDates resolved = resolvedDates(std::move(readings.dates), now, zone);
    return {std::move(resolved.dates), std::move(readings.relations), std::move(resolved.nonexistent)};
}

}  // namespace vemo
