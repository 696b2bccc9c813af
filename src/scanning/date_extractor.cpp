// SPDX-License-Identifier: MIT
#include "scanning/date_extractor.h"

#include <algorithm>

#include "functions/date_values.h"
#include "records/context_map.h"
#include "scanning/extraction_priorities.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// As sums and quotients, whole dates with a year of our time mean nothing: "3/4/2027", "2027-03-04". With the year in
// front and slashes, only where dates are written so.
bool isWholeDate(std::u16string_view text, bool yearFirst) {
    struct Field {
        std::size_t digits = 0;
        int value = 0;
    };
    const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
    const auto isYear = [](const Field& field) {
        return field.digits == 4 && field.value >= 1900 && field.value < 2200;
    };
    std::size_t i = 0;
    while (i < text.size() && !isDigit(text[i])) ++i;
    Field fields[3];
    char16_t separator = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        for (; i < text.size() && isDigit(text[i]) && fields[k].digits < 5; ++i, ++fields[k].digits)
            fields[k].value = fields[k].value * 10 + (text[i] - u'0');
        if (fields[k].digits == 0) return false;
        if (k == 2) break;
        if (i == text.size() || (k == 1 && text[i] != separator)) return false;
        separator = text[i++];
    }
    if (separator != u'/' && separator != u'.' && separator != u'-') return false;
    if (isYear(fields[0])) return fields[1].digits <= 2 && fields[2].digits <= 2 && (separator != u'/' || yearFirst);
    return isYear(fields[2]) && fields[0].digits <= 2 && fields[1].digits <= 2;
}

}  // namespace

DateExtractor::DateExtractor(const Localizer& localizer, std::string_view language, std::string_view locale,
                             std::shared_ptr<const TimeZoneRules> zone)
    : detector_(localizer, language, locale),
      hourPhrases_(localizer.variants(u"hour.variants", u"Time", true, true)),
      zone_(std::move(zone)) {}

void DateExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    if (!zone_ || !detector_.mayDetect(text)) return;
    const Date* now = context.get<Date>(context_keys::currentTime);
    if (!now) return;
    // 5-3 and 2+2 are arithmetic, never dates.
    std::u16string masked = text;
    std::replace(masked.begin(), masked.end(), u'-', u'*');
    std::replace(masked.begin(), masked.end(), u'+', u'*');
    for (const DetectedDate& date : detector_.detect(masked, *now, *zone_)) {
        const std::u16string_view found = date.range.in(text);
        // A product or sum that looks like a date once it is masked.
        if (found.find_first_of(u"*+") != found.npos) continue;
        // "in 5 hours" is a duration.
        if (std::any_of(hourPhrases_.begin(), hourPhrases_.end(),
                        [&](const std::u16string& phrase) { return found.find(phrase) != found.npos; }))
            continue;
        if (date.basis == DateBasis::today) context.addDependencyOn(context_keys::currentDay, std::nullopt, Value());
        if (date.basis == DateBasis::now) context.addDependencyOn(context_keys::currentTime);
        const bool certain = found.find(u':') != found.npos || isWholeDate(found, detector_.writesYearFirst());
        result.push_back(
            {date.range, certain ? priority::certainDate : priority::usual, 0,
             makeElement(date.isDay ? dayValue(date.instant)
                                    : timeValue(date.instant, context.get<TimeZone>(context_keys::currentTimeZone)),
                         AttributedText(found, RunType::number))});
    }
}

}  // namespace vemo
