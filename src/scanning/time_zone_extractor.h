// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"
#include "scanning/words/phrase_detector.h"
#include "vemo/time.h"

namespace vemo {

// Abbreviations of time zones: "EST". The well-known ones in lower case too, unless they are a word.
class TimeZoneAbbreviationsExtractor : public Extractor {
public:
    // `language` is that of the phrases.
    TimeZoneAbbreviationsExtractor(StringRangeDetector& stringRangeDetector, std::string_view language);
    std::u16string_view name() const override { return u"TimeZoneAbbreviationsExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    PhraseDetector<TimeZone> detector_;
};

}  // namespace vemo
