// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "platform/locale_info.h"
#include "scanning/extractor.h"

namespace vemo {

// The quotation mark is an inch where it stands right after a digit and before a blank, an operator, a bracket or the
// end; elsewhere it begins or ends a comment.
class QuotedCommentExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"QuotedCommentExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

// Quotation marks and apostrophes after digits as inches and feet: 6'2". Three digits after an apostrophe are a group
// where the locale writes so.
class FeetAndInchesExtractor : public Extractor {
public:
    explicit FeetAndInchesExtractor(LocaleInfo locale) : locale_(std::move(locale)) {}
    std::u16string_view name() const override { return u"FeetAndInchesExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    bool isFeet(std::u16string_view text, std::size_t mark) const;

    const LocaleInfo locale_;
};

// The unit of arc that a mark of feet or inches stands for after degrees: "30\u00b0 15\u2032 20\u2033".
std::optional<std::u16string> arcUnit(std::u16string_view text, std::size_t mark);

}  // namespace vemo
