// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"
#include "scanning/number_parsers.h"

namespace vemo {

// True for one of the signs that are a fraction by themselves, such as "½".
bool isFractionSign(char16_t c);

// Mixed numbers, "1 1/2" and "1½", and fractions of one sign, "½". A stroke between two bare numbers is a division
// until what follows is known.
class FractionExtractor : public Extractor {
public:
    explicit FractionExtractor(const DecimalParser& parser) : parser_(parser) {}
    std::u16string_view name() const override { return u"FractionExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    void atStroke(std::u16string_view text, std::size_t stroke, std::vector<Extraction>& result) const;
    void atSign(std::u16string_view text, std::size_t sign, std::vector<Extraction>& result) const;
    void add(std::u16string_view text, std::size_t whole, std::size_t end, const DecimalNumber& fraction,
             std::vector<Extraction>& result) const;

    const DecimalParser& parser_;
};

}  // namespace vemo
