// SPDX-License-Identifier: MIT
#pragma once

#include "platform/regex.h"
#include "scanning/extractor.h"
#include "scanning/words/phrase_detector.h"

namespace vemo {

class Localizer;

// A kind of token without a value, found by one pattern: comments, headers and labels.
struct StructuralPattern {
    std::u16string_view name;
    std::u16string_view pattern;
    std::u16string_view needed;  // lines without this text are not searched
    bool endsWithNeeded;         // a match ends with it, so nothing after the last one needs searching
    RunType type;
    std::int64_t priority;
};

extern const StructuralPattern headerPattern;
extern const StructuralPattern labelPattern;
extern const StructuralPattern slashCommentPattern;

class StructuralExtractor : public Extractor {
public:
    explicit StructuralExtractor(const StructuralPattern& pattern);
    std::u16string_view name() const override { return pattern_.name; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    const StructuralPattern& pattern_;
    Regex regex_;
};

// Brackets.
class ParenthesesExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"ParenthesesExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

// Assignment signs: "=", and that of "+=".
class AssignmentExtractor : public Extractor {
public:
    AssignmentExtractor(const Localizer& localizer, StringRangeDetector& stringRangeDetector);
    std::u16string_view name() const override { return u"AssignmentExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    PhraseDetector<bool> phraseDetector_;
};

// Names of the variables that earlier lines defined. The line depends on each one found.
class VariablesExtractor : public Extractor {
public:
    explicit VariablesExtractor(StringRangeDetector& stringRangeDetector) : stringRangeDetector_(stringRangeDetector) {}
    std::u16string_view name() const override { return u"VariablesExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;

private:
    StringRangeDetector& stringRangeDetector_;
};

}  // namespace vemo
