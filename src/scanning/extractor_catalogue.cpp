// SPDX-License-Identifier: MIT
#include "scanning/extractor_catalogue.h"

#include "scanning/date_extractor.h"
#include "scanning/fraction_extractor.h"
#include "scanning/function_extractor.h"
#include "scanning/label_words_extractor.h"
#include "scanning/mark_extractors.h"
#include "scanning/number_extractors.h"
#include "scanning/power_extractor.h"
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
    const std::vector<std::shared_ptr<const Extractor>> numbers{
        std::make_shared<DecimalNumberExtractor>(parts.decimalParser),
        std::make_shared<ScientificNumberExtractor>(parts.scientificParser)};
    extractors.add(numbers[0]);
    extractors.add(std::make_shared<FractionExtractor>(parts.decimalParser));
    extractors.add(std::make_shared<HexNumberExtractor>());
    extractors.add(std::make_shared<OctalNumberExtractor>());
    extractors.add(std::make_shared<BinaryNumberExtractor>());
    extractors.add(numbers[1]);
    extractors.add(std::make_shared<ScalesExtractor>(parts.scales));
    extractors.add(
        std::make_shared<NumeralRepresentationExtractor>(parts.localizer, parts.locale, parts.stringRangeDetector));
    extractors.add(std::make_shared<ParenthesesExtractor>());
    extractors.add(std::make_shared<KanjiNumberExtractor>());
    extractors.add(std::make_shared<PercentageSymbolExtractor>());
    extractors.add(std::make_shared<MultiplyXSymbolExtractor>(parts.stringRangeDetector));
    extractors.add(std::make_shared<PowerExtractor>());
    structural(headerPattern);
    structural(labelPattern);
    extractors.add(std::make_shared<QuotedCommentExtractor>());
    extractors.add(std::make_shared<FeetAndInchesExtractor>(LocaleInfo::forIdentifier(parts.locale)));
    structural(slashCommentPattern);
    extractors.add(std::move(operators));
    extractors.add(std::make_shared<UnitExtractor>(parts.units, parts.operators, parts.scales));
    extractors.add(std::make_shared<FunctionExtractor>(parts.functions, parts.units, parts.localizer,
                                                       LocaleInfo::forIdentifier(parts.locale), numbers));
    extractors.add(std::make_shared<AssignmentExtractor>(parts.localizer, parts.stringRangeDetector));
    extractors.add(std::make_shared<VariablesExtractor>(parts.stringRangeDetector));
    extractors.add(std::make_shared<DateExtractor>(parts.localizer, parts.language, parts.locale, parts.localZone));
    extractors.add(std::make_shared<TimeZoneAbbreviationsExtractor>(parts.stringRangeDetector, parts.language));
    extractors.add(std::make_shared<LabelWordsExtractor>());
}

}  // namespace vemo
