// SPDX-License-Identifier: MIT
#include "scanning/dates/date_lexer.h"

#include "platform/locale_info.h"

namespace vemo {

namespace {

bool isDigit(char16_t c) {
    return digitValue(c) >= 0;
}

bool isMoney(char16_t c) {
    return std::u16string_view(u"$\u00a2\u00a3\u00a5\u20ac\u20b9\u20bd\u20a9").find(c) != std::u16string_view::npos;
}

// True for a letter of a script with blanks: one that touches a number belongs to it, or to a name.
bool isPlainLetter(char16_t c) {
    return isLetter(c) && !isCjk(c);
}

// True when what stands before a number makes it part of something else. A colon does in "1:2:3", but in "call:10:30"
// it is a label's.
bool attachesLeft(std::u16string_view text, std::size_t i) {
    if (i == 0) return false;
    const char16_t c = text[i - 1];
    if (c == u':') return i > 1 && isDigit(text[i - 2]);
    return isPlainLetter(c) || isMoney(c) || std::u16string_view(u".,_#'").find(c) != std::u16string_view::npos;
}

bool attachesRight(std::u16string_view text, std::size_t i) {
    if (i >= text.size()) return false;
    const char16_t c = text[i];
    if ((c == u'.' || c == u',' || c == u':') && i + 1 < text.size()) return isDigit(text[i + 1]);
    return isMoney(c) || std::u16string_view(u"_/%^\u2030\u00b0\u00b2\u00b3").find(c) != std::u16string_view::npos;
}

DateLexeme number(std::u16string_view text, std::size_t start) {
    DateLexeme lexeme{DateLexeme::Kind::number, {start, 0}};
    std::size_t i = start;
    for (; i < text.size() && isDigit(text[i]); ++i)
        if (i - start < 4) lexeme.value = lexeme.value * 10 + digitValue(text[i]);
    lexeme.range.length = lexeme.digits = i - start;
    lexeme.openLeft = attachesLeft(text, start);
    lexeme.afterOperator =
        start > 0 && std::u16string_view(u"*/^-+").find(text[start - 1]) != std::u16string_view::npos;
    lexeme.openRight = attachesRight(text, i);
    // "$ 5", "5 %", "5 €"
    std::size_t before = start, after = i;
    while (before > 0 && isWhitespace(text[before - 1])) --before;
    while (after < text.size() && isWhitespace(text[after])) ++after;
    if (before > 0 && isMoney(text[before - 1])) lexeme.openLeft = true;
    if (after < text.size() && (isMoney(text[after]) || text[after] == u'%')) lexeme.openRight = true;
    return lexeme;
}

DateLexeme word(std::u16string_view text, std::size_t start, const DateVocabulary& vocabulary) {
    DateLexeme lexeme{DateLexeme::Kind::word, {start, 1}};
    const char16_t first = text[start];
    const bool inWord = start > 0 && !isCjk(first) && (isPlainLetter(text[start - 1]) || text[start - 1] == u'_');
    if (!inWord) {
        if (const auto found = vocabulary.longestAt(text, start)) {
            lexeme.entry = found->entry;
            lexeme.range.length = found->length;
            return lexeme;
        }
    }
    lexeme.cjk = isCjk(first);
    if (lexeme.cjk) return lexeme;
    std::size_t i = start + 1;
    while (i < text.size() && (isPlainLetter(text[i]) || text[i] == u'_' || text[i] == u'\'')) ++i;
    lexeme.range.length = i - start;
    return lexeme;
}

// "3 jours après demain" is counted from tomorrow: only the first word is taken.
void takeAfter(std::u16string_view text, DateLexeme& lexeme, const DateVocabulary& vocabulary) {
    const std::size_t blank = lexeme.range.in(text).find(u' ');
    if (blank == std::u16string_view::npos) return;
    const auto first = vocabulary.longestAt(text.substr(0, lexeme.range.location + blank), lexeme.range.location);
    if (!first || !first->entry->has(DateWord::after)) return;
    lexeme.entry = first->entry;
    lexeme.range.length = first->length;
}

}  // namespace

std::vector<DateLexeme> dateLexemes(std::u16string_view lower, const DateVocabulary& vocabulary) {
    std::vector<DateLexeme> lexemes;
    bool spaced = false;
    for (std::size_t i = 0; i < lower.size();) {
        const char16_t c = lower[i];
        if (isWhitespace(c)) {
            spaced = true;
            ++i;
            continue;
        }
        DateLexeme lexeme = isDigit(c)                              ? number(lower, i)
                            : isLetter(c) || c == u'_' || c == u'@' ? word(lower, i, vocabulary)
                                                                    : DateLexeme{DateLexeme::Kind::sign, {i, 1}};
        if (lexeme.kind == DateLexeme::Kind::sign) lexeme.sign = c;
        if (lexeme.isWord(DateWord::day) && !lexemes.empty() && lexemes.back().isWord(DateWord::unit))
            takeAfter(lower, lexeme, vocabulary);
        lexeme.spaced = spaced;
        spaced = false;
        i = lexeme.range.end();
        lexemes.push_back(lexeme);
    }
    return lexemes;
}

}  // namespace vemo
