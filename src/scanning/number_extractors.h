// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"
#include "scanning/number_parsers.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

class Localizer;

// Number literals. Each element's value says in which notation it was written ("nsystem"), plain decimals aside.

class DecimalNumberExtractor : public Extractor {
public:
    explicit DecimalNumberExtractor(const DecimalParser& parser) : parser_(parser) {}
    std::u16string_view name() const override { return u"DecimalNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const DecimalParser& parser_;
};

class ScientificNumberExtractor : public Extractor {
public:
    explicit ScientificNumberExtractor(const ScientificParser& parser) : parser_(parser) {}
    std::u16string_view name() const override { return u"ScientificNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const ScientificParser& parser_;
};

// Whole numbers of any size, in bases of a power of two.
class HexNumberExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"HexNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

class BinaryNumberExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"BinaryNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

class OctalNumberExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"OctalNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

// Names of numeral systems, as in "255 in hex", and words that may stand for numbers: these carry "type" until it is
// decided by what is beside them.
class NumeralRepresentationExtractor : public Extractor {
public:
    NumeralRepresentationExtractor(const Localizer& localizer, std::string_view locale,
                                   StringRangeDetector& stringRangeDetector);
    std::u16string_view name() const override { return u"NumeralRepresentationExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    bool isFraction(std::u16string_view text, TextRange range) const;
    static bool isBesideDigits(std::u16string_view text, TextRange range);

    PhraseDetector<Value> phrases_;
    std::vector<std::u16string> ofWords_;  // after which a fraction counts
    const std::vector<std::u16string> articles_;
};

// Numbers in kanji, which may be words as well: they carry "type", too.
class KanjiNumberExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"KanjiNumberExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

}  // namespace vemo
