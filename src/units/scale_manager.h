// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "scanning/words/completion_collector.h"
#include "scanning/words/phrase_detector.h"
#include "vemo/decimal_number.h"

namespace vemo {

class Localizer;

// A word that multiplies the number before it by factor × 10^ratio.
struct Scale {
    std::u16string id;
    std::int16_t ratio = 0;
    std::vector<std::u16string> phrases;
    std::u16string unit = {};  // of what it makes of a bare number, such as pence; usually none
    std::int64_t factor = 1;   // other than 1, it counts things: "2 dozen", but not "$5,000 gross"

    bool isCount() const { return factor != 1; }
    DecimalNumber times(const DecimalNumber& number) const {
        const DecimalNumber scaled = number.multiplyingByPowerOf10(ratio);
        return isCount() ? scaled.multiplying(DecimalNumber::fromInt64(factor)) : scaled;
    }
};

class ScaleManager {
public:
    // Phrases are offered as completions to `hints`, unless it is null.
    explicit ScaleManager(StringRangeDetector& stringRangeDetector, CompletionCollector* hints = nullptr)
        : phraseDetector_(stringRangeDetector), hints_(hints) {}

    // A later scale has the phrases it shares with an earlier one, and replaces one with the same id.
    void add(Scale scale);
    const PhraseDetector<std::u16string>& phraseDetector() const { return phraseDetector_; }
    const Scale* scale(std::u16string_view id) const;

private:
    PhraseDetector<std::u16string> phraseDetector_;
    CompletionCollector* hints_;
    TextMap<Scale> scales_;
};

// The locale's currency is that of cents.
void registerScales(ScaleManager& scales, const Localizer& localizer, const std::string& locale);

}  // namespace vemo
