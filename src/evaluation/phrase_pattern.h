// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "matching/matcher.h"

namespace vemo {

// A way of putting a calculation into words, such as "how many {unit} (in|are in) {value}": words, a choice of words in
// brackets, and slots. "{value}" stands for anything with a number or a date in it, "{number}" for a number without a
// unit, "{quantity}" for one with a unit, "{percent}" for a percentage, "{date}" for a date, "{unit}" for a unit alone,
// "{tail}" for an operator and all after it, or for nothing; any other name stands for the operator of this name. A
// slot that comes again is numbered: "{value2}". "…" stands for words that calculate nothing, or for none. A pattern
// covers what is calculated in a line from its beginning to its end.
class PhrasePattern {
public:
    // Nothing for a text that is no pattern: one with neither words nor operators, or with a bracket that is not
    // closed.
    static std::optional<PhrasePattern> parsed(std::u16string_view text);

    enum class Kind { words, operation, value, number, quantity, percent, date, unit, tail, idle };
    struct Piece {
        Kind kind = Kind::words;
        std::u16string name = {};                             // of a slot
        std::vector<std::vector<std::u16string>> words = {};  // choices with dots between, each the longest first
        bool openBefore = false, openAfter = false;           // dots touch the words
    };

    // A line, and what all patterns ask of it.
    struct Line {
        const ElementList& elements;
        std::size_t start, end;  // of what is calculated
        // A bit stands for several letters or operators each.
        std::uint64_t first = 0, letters = 0, operators = 0;
        std::size_t values = 0;  // numbers and dates
        bool percent = false;

        // What is calculated begins at `from`.
        Line(const ElementList& list, std::size_t from);
    };

    // What a line must have for a pattern to be worth the search. It costs next to nothing for the many that don't.
    struct Filter {
        static constexpr std::size_t choicesTested = 3;

        std::uint64_t first = ~std::uint64_t(0);           // that it may begin with
        std::array<std::uint64_t, choicesTested> letters;  // that the first choices of words begin with
        std::uint64_t operators = 0;
        std::uint16_t attributes = 0;
        std::uint16_t values = 0;
        bool percent = false;

        Filter() { letters.fill(~std::uint64_t(0)); }
        bool admits(const Line& line) const;
    };

    // The words of a text: lower case, without blanks and signs of punctuation at the ends.
    static std::u16string wording(std::u16string_view text);

    const Filter& filter() const { return filter_; }
    const std::vector<Piece>& pieces() const { return pieces_; }
    // The place of a slot among the pieces; nothing for a name that the pattern lacks.
    std::optional<std::size_t> slot(std::u16string_view name) const;
    // The elements of each piece; nothing for a line that is put otherwise, which the filter mostly tells sooner.
    std::optional<std::vector<ElementRange>> match(const Line& line) const;

private:
    void note(const Piece& slot);

    Filter filter_;
    std::vector<Piece> pieces_;
};

}  // namespace vemo
