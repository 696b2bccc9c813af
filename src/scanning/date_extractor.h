// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "scanning/dates/date_detector.h"
#include "scanning/extractor.h"

namespace vemo {

class Localizer;

// Dates and clock times. One with a colon, or a whole numeric date, wins over a label and over operator symbols.
class DateExtractor : public Extractor {
public:
    // `zone` is the local time zone; null yields nothing.
    DateExtractor(const Localizer& localizer, std::string_view language, std::string_view locale,
                  std::shared_ptr<const TimeZoneRules> zone);
    std::u16string_view name() const override { return u"DateExtractor"; }
    // Reads the current time of the context and records a dependency on it, or on the current day, where an instant
    // follows from it.
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    bool isCounted(std::u16string_view text, const DetectedDate& date) const;

    DateDetector detector_;
    std::vector<std::u16string> hourPhrases_, countAsked_, countLinks_;
    std::shared_ptr<const TimeZoneRules> zone_;
};

}  // namespace vemo
