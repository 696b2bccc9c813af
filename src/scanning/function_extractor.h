// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "functions/function_manager.h"
#include "platform/locale_info.h"
#include "scanning/extractor.h"
#include "units/unit_manager.h"

namespace vemo {

class Localizer;

// Names of functions, and what separates several values in the brackets after one: ";", and a comma that is no
// grouping. Where the locale writes decimals with a comma, only one with a blank after it separates. "and" does too in
// "sum of 12, 15 and 20".
class FunctionExtractor : public Extractor {
public:
    // `numbers` find the numbers between separators, which without them would be read as one. A word of `units` for
    // rates makes a unit of what follows it: "100 km por hora en m/s".
    FunctionExtractor(const FunctionManager& functions, const UnitManager& units, const Localizer& localizer,
                      LocaleInfo locale, std::vector<std::shared_ptr<const Extractor>> numbers);
    std::u16string_view name() const override { return u"FunctionExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    void separators(const std::u16string& text, std::size_t bracket, Context& context,
                    std::vector<Extraction>& result) const;
    // Finds the separators of the list after a function's name; false when there is no list.
    bool listAfter(const std::u16string& text, std::size_t end, bool isWord, const Context& context,
                   std::vector<TextRange>& found) const;
    bool beginsItem(std::u16string_view text, std::size_t start, const Context& context) const;
    void addList(const std::u16string& text, std::size_t end, const std::vector<TextRange>& separators,
                 Context& context, std::vector<Extraction>& result) const;
    void numbersIn(const std::u16string& text, TextRange range, Context& context,
                   std::vector<Extraction>& result) const;
    bool separates(std::u16string_view text, std::size_t comma) const;

    const FunctionManager& functions_;
    const UnitManager& units_;
    const LocaleInfo locale_;
    const std::vector<std::u16string> ofWords_, andWords_;
    const std::vector<std::shared_ptr<const Extractor>> numbers_;
};

}  // namespace vemo
