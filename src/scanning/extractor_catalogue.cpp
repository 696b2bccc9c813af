// SPDX-License-Identifier: MIT
#include "scanning/extractor_catalogue.h"

#include "scanning/date_extractor.h"
#include "scanning/fraction_extractor.h"
#include "scanning/number_extractors.h"
#include "scanning/structural_extractors.h"
#include "scanning/time_zone_extractor.h"
#include "scanning/vocabulary_extractors.h"

namespace vemo {

void registerExtractors(ExtractorList& extractors, const ExtractorParts& parts) {
    auto operators = std::make_shared<OperatorExtractor>(parts.operators);
    operators->prepare();
    const auto structural = [&](const StructuralPattern& pattern) {
        extractors.add(std::make_shared<StructuralExtractor>(pattern));
    };
    extractors.add(std::make_shared<DecimalNumberExtractor>(parts.decimalParser));
    extractors.add(std::make_shared<FractionExtractor>(parts.decimalParser));
    extractors.add(std::make_shared<HexNumberExtractor>());
    extractors.add(std::make_shared<OctalNumberExtractor>());
    extractors.add(std::make_shared<BinaryNumberExtractor>());
    extractors.add(std::make_shared<ScientificNumberExtractor>(parts.scientificParser));
    extractors.add(std::make_shared<ScalesExtractor>(parts.scales));
    extractors.add(std::make_shared<NumeralRepresentationExtractor>(parts.localizer, parts.stringRangeDetector));
    extractors.add(std::make_shared<ParenthesesExtractor>());
    extractors.add(std::make_shared<PercentageSymbolExtractor>());
    extractors.add(std::make_shared<MultiplyXSymbolExtractor>(parts.stringRangeDetector));
    structural(headerPattern);
    structural(labelPattern);
    structural(quotedCommentPattern);
    structural(slashCommentPattern);
    extractors.add(std::move(operators));
    extractors.add(std::make_shared<UnitExtractor>(parts.units, parts.operators, parts.scales));
    extractors.add(std::make_shared<FunctionExtractor>(parts.functions));
    extractors.add(std::make_shared<AssignmentExtractor>(parts.localizer, parts.stringRangeDetector));
    extractors.add(std::make_shared<VariablesExtractor>(parts.stringRangeDetector));
    extractors.add(std::make_shared<DateExtractor>(parts.localizer, parts.language, parts.locale, parts.localZone));
    extractors.add(std::make_shared<TimeZoneAbbreviationsExtractor>(parts.stringRangeDetector, parts.language));
}

}  // namespace vemo
