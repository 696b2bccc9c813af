// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scanning/dates/date_vocabulary.h"

namespace vemo {

// A piece of a text as the grammar of dates sees it.
struct DateLexeme {
    enum class Kind : std::uint8_t { number, word, sign };

    Kind kind;
    TextRange range;
    bool spaced = false;                           // white space stands before
    bool openLeft = false;                         // number: it goes on to the left, as in ".5", "x5" and "$5"
    bool afterOperator = false;                    // number: a sign of arithmetic touches it on the left
    bool openRight = false;                        // number: it goes on to the right, as in "5.5", "5%" and "5/"
    char16_t sign = 0;                             // sign: itself
    int value = 0;                                 // number: up to four digits
    std::size_t digits = 0;                        // number
    const DateVocabulary::Entry* entry = nullptr;  // word: none for an unknown one
    bool cjk = false;                              // word: of a script without blanks

    bool isSign(char16_t character) const { return kind == Kind::sign && sign == character; }
    bool isWord(DateWord word) const { return entry && entry->has(word); }
};

// `lower` is in lower case.
std::vector<DateLexeme> dateLexemes(std::u16string_view lower, const DateVocabulary& vocabulary);

}  // namespace vemo
