// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"
#include "scanning/number_parsers.h"
#include "scanning/phrase_detector.h"
#include "scanning/string_extractor.h"

namespace vemo {

class Localizer;

// Number literals. Each element's value says in which notation it was written ("nsystem"), plain decimals aside.

class DecimalNumberExtractor : public Extractor {
public:
    DecimalNumberExtractor(const DecimalParser& parser, const StringExtractor& stringExtractor)
        : parser_(parser), stringExtractor_(stringExtractor) {}
    std::u16string_view name() const override { return u"DecimalNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const DecimalParser& parser_;
    const StringExtractor& stringExtractor_;
};

class ScientificNumberExtractor : public Extractor {
public:
    ScientificNumberExtractor(const ScientificParser& parser, const StringExtractor& stringExtractor)
        : parser_(parser), stringExtractor_(stringExtractor) {}
    std::u16string_view name() const override { return u"ScientificNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const ScientificParser& parser_;
    const StringExtractor& stringExtractor_;
};

// Read through a double: values above 2^53 lose their low-order digits.
class HexNumberExtractor : public Extractor {
public:
    explicit HexNumberExtractor(const StringExtractor& stringExtractor) : stringExtractor_(stringExtractor) {}
    std::u16string_view name() const override { return u"HexNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const StringExtractor& stringExtractor_;
};

// Signed 64-bit integers, wrapping.
class BinaryNumberExtractor : public Extractor {
public:
    explicit BinaryNumberExtractor(const StringExtractor& stringExtractor) : stringExtractor_(stringExtractor) {}
    std::u16string_view name() const override { return u"BinaryNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const StringExtractor& stringExtractor_;
};

class OctalNumberExtractor : public Extractor {
public:
    explicit OctalNumberExtractor(const StringExtractor& stringExtractor) : stringExtractor_(stringExtractor) {}
    std::u16string_view name() const override { return u"OctalNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const StringExtractor& stringExtractor_;
};

// Names of numeral systems, as in "255 in hex".
class NumeralRepresentationExtractor : public Extractor {
public:
    NumeralRepresentationExtractor(const Localizer& localizer, StringRangeDetector& stringRangeDetector);
    std::u16string_view name() const override { return u"NumeralRepresentationExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    PhraseDetector<std::u16string> phrases_;
};

}  // namespace vemo
