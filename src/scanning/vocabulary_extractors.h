// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>

#include "base/cache.h"
#include "scanning/extractor.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

class OperatorCollection;
class UnitManager;

// Operators as symbols, which win over everything else on the same characters, and as words.
class OperatorExtractor : public Extractor {
public:
    // The collection must be filled.
    explicit OperatorExtractor(const OperatorCollection& operators) : operators_(operators) {}
    std::u16string_view name() const override { return u"OperatorExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
    void prepare();  // reads the collection's symbols; call once it is filled

private:
    static bool isLooseDouble(std::u16string_view text, std::size_t start, std::size_t length);

    const OperatorCollection& operators_;
    TextMap<Value> symbols_;
    std::array<bool, 128> asciiStarts_{};  // characters that begin a symbol: most begin none
    std::size_t longestSymbol_ = 0;
};

// Names and symbols of units. A name that is an operator's too ("in") is a unit where a number stands before it and no
// operand can follow: "6 ft 2 in", "5 in in cm". A currency's code that is a word ("try", "all") counts in capitals or
// in a conversion: "100 ron in eur", "$50 in try". A name that is a word first ("bar", "turn") counts after a number,
// and where a unit must stand. K is a kelvin where a temperature is converted.
class UnitExtractor : public Extractor {
public:
    UnitExtractor(const UnitManager& units, const OperatorCollection& operators,
                  const PhraseDetector<std::u16string>& scales)
        : units_(units), operators_(operators), scales_(scales) {}
    std::u16string_view name() const override { return u"UnitExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    class OperatorWords;

    bool displacesOperator(std::u16string_view text, TextRange range, OperatorWords& words) const;
    bool displacesFraction(std::u16string_view text, const PhraseMatch<std::u16string>& match,
                           OperatorWords& words) const;
    bool isWord(std::u16string_view text, TextRange range, OperatorWords& words) const;
    bool hasItsPlace(std::u16string_view text, TextRange range, OperatorWords& words) const;
    void chooseHomonyms(std::u16string_view text, std::vector<Extraction>& extractions) const;
    bool isKelvin(std::u16string_view text, std::size_t k, bool temperature, OperatorWords& words) const;
    bool displacesName(std::u16string_view text, TextRange range, const Context& context) const;

    const UnitManager& units_;
    const OperatorCollection& operators_;
    const PhraseDetector<std::u16string>& scales_;
};

// Words that multiply the number before them.
class ScalesExtractor : public Extractor {
public:
    explicit ScalesExtractor(const PhraseDetector<std::u16string>& scales) : scales_(scales) {}
    std::u16string_view name() const override { return u"ScalesExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const PhraseDetector<std::u16string>& scales_;
};

// The percent sign, as a unit.
class PercentageSymbolExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"PercentageSymbolExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

// The letter x as multiplication: the weakest candidate of all.
class MultiplyXSymbolExtractor : public Extractor {
public:
    explicit MultiplyXSymbolExtractor(StringRangeDetector& stringRangeDetector)
        : stringRangeDetector_(stringRangeDetector) {}
    std::u16string_view name() const override { return u"MultiplyXSymbolExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    StringRangeDetector& stringRangeDetector_;
};

}  // namespace vemo
