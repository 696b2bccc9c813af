// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "scanning/words/completion_collector.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

class Localizer;

// A word that multiplies the number before it by 10^ratio.
struct Scale {
    std::u16string id;
    std::int16_t ratio = 0;
    std::vector<std::u16string> phrases;
    std::u16string unit = {};  // of what it makes of a bare number, such as pence; usually none
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

void registerScales(ScaleManager& scales, const Localizer& localizer);

}  // namespace vemo
