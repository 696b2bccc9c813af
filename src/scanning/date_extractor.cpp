// SPDX-License-Identifier: MIT
#include "scanning/date_extractor.h"

#include <algorithm>

#include "engine/context_map.h"
#include "scanning/localizer.h"

namespace vemo {

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
        const std::int64_t priority = found.find(u':') == found.npos ? 0 : 30;
        result.push_back({date.range, priority, 0,
                          makeElement(Value(date.instant).with(u"date", Attribute::unit),
                                      AttributedText(found, RunType::number))});
    }
}

}  // namespace vemo
