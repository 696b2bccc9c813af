// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "platform/time_zones.h"
#include "scanning/extractor.h"
#include "scanning/number_parsers.h"
#include "scanning/words/phrase_detector.h"
#include "vemo/sorted_list.h"

namespace vemo {

class FunctionManager;
class Localizer;
class OperatorCollection;
class UnitManager;

using ExtractorList = SortedList<std::shared_ptr<const Extractor>>;

// What extractors read; all of it must outlive them, and the vocabulary must be filled.
struct ExtractorParts {
    const DecimalParser& decimalParser;
    const ScientificParser& scientificParser;
    const Localizer& localizer;
    StringRangeDetector& stringRangeDetector;
    const OperatorCollection& operators;
    const PhraseDetector<std::u16string>& scales;
    const UnitManager& units;
    const FunctionManager& functions;
    std::string_view language;
    std::string_view locale;
    std::shared_ptr<const TimeZoneRules> localZone;
};

// Adds every extractor, in the order in which they run.
void registerExtractors(ExtractorList& extractors, const ExtractorParts& parts);

}  // namespace vemo
