// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "scanning/words/completion_collector.h"
#include "vemo/quick_type.h"

namespace vemo {

// Gathers the vocabulary while the catalogues are filled, at the cost of a copy: phrases are cut up and cased only
// when somebody asks. A later hint with the same string is meant to take the place of an earlier one.
class QuickTypeCollector : public CompletionCollector {
public:
    void add(std::u16string_view text, int weight, CompletionKind kind) override {
        append(text, weight, Form::verbatim, kind);
    }
    void addLowercased(std::u16string_view text, int weight, CompletionKind kind) override {
        append(text, weight, Form::lowercased, kind);
    }
    void addWords(std::u16string_view phrase, int weight, CompletionKind kind) override {
        append(phrase, weight, Form::words, kind);
    }
    // What is added while this is set counts as a script's.
    void setScripts(bool scripts) { scripts_ = scripts; }

    // The phrases as they are, with their kinds, as far as they are worth offering.
    std::vector<Completion> completions() const;
    // In the order of their coming.
    void enumerate(const std::function<void(std::u16string_view, int)>& visit) const;
    std::vector<QuickTypeHint> hints() const;

private:
    enum class Form : std::uint8_t { verbatim, lowercased, words };

    struct Item {
        std::uint32_t length;
        std::int16_t weight;
        Form form;
        CompletionKind kind;
    };

    void append(std::u16string_view text, int weight, Form form, CompletionKind kind);

    std::u16string texts_;  // one after the other
    std::vector<Item> items_;
    bool scripts_ = false;
};

// An engine for what was collected. Left out are hints of a single character, those that begin with a digit, and keys
// that no table translates.
std::shared_ptr<QuickTypeEngine> quickTypeEngine(const QuickTypeCollector& collector);

}  // namespace vemo
