// SPDX-License-Identifier: MIT
// A number is the same however it is spelt: grouped or not, with zeros at its ends, as a literal or in words, and an
// amount of money with its sign before or after it, its code or its name.

#include "support/lines.h"

namespace vemo::test {
namespace {

// Calculations with one number in the place of "#".
constexpr const char* uses[] = {"#",        "# + 1",        "2 * (#)",      "#/4",    "-#",
                                "sqrt(#)",  "# km in m",    "10% of #",     "# - 5%", "# as a % of 3",
                                "twice #",  "#^2",          "max(#; 7)",    "# h",    "# kg + 3 g",
                                "3 km + #", "# people + 3", "# in hex + 0", "x = #",  "# GB in MB"};

std::string in(const char* use, const std::string& number) {
    return replaced(use, "#", number);
}

TEST(NumberLaws, groupsChangeNothing) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const int hundredths = anyOf(100'000, 99'999'999);
            const char* use = anyRow(uses);
            const std::string plain = written(hundredths, tongue);
            for (const std::string& grouped :
                 {written(hundredths, tongue, true), replaced(written(hundredths, tongue, true), tongue.group, " "),
                  replaced(written(hundredths, tongue, true), tongue.group, "\u00a0"),
                  replaced(written(hundredths, tongue, true), tongue.group, "_")})
                requireSame(tongue, in(use, plain), in(use, grouped));
        });
}

TEST(NumberLaws, zerosAtTheEndsChangeNothing) {
    for (const Tongue& tongue : tongues())
        holds([&] {
            const int hundredths = anyOf(1, 999);
            const char* use = anyRow(uses);
            const std::string plain = written(hundredths, tongue), mark(1, tongue.decimal);
            const bool whole = hundredths % 100 == 0;
            requireSame(tongue, in(use, plain), in(use, plain + (whole ? mark + "0" : "0")));
            requireSame(tongue, in(use, plain), in(use, plain + (whole ? mark + "000" : "000")));
            if (hundredths < 100 && tongue.decimal == '.')
                requireSame(tongue, in(use, plain), in(use, plain.substr(1)));
        });
}

TEST(NumberLaws, notationsChangeNoValue) {
    const Tongue& english = tongues()[0];
    holds([&] {
        const int number = anyOf(1, 40'000);
        const char* use = anyRow(uses);
        std::ostringstream hex, octal, scientific;
        hex << "0x" << std::hex << number;
        octal << "0o" << std::oct << number;
        scientific << number << "e0";
        std::string binary;
        for (int rest = number; rest > 0; rest /= 2) binary.insert(0, 1, static_cast<char>('0' + rest % 2));
        const auto value = [&](const std::string& literal) {
            return Notepad::in(english).last(in(use, literal)).value.without(Attribute::nsystem);
        };
        const Value plain = value(std::to_string(number));
        for (const std::string& literal : {hex.str(), octal.str(), "0b" + binary, scientific.str()})
            if (value(literal) != plain) RC_FAIL(in(use, literal) + " is not " + in(use, std::to_string(number)));
    });
}

// The number up to a thousand in English words.
std::string inWords(int number) {
    static const char* const small[] = {
        "zero", "one",    "two",    "three",    "four",     "five",    "six",     "seven",     "eight",    "nine",
        "ten",  "eleven", "twelve", "thirteen", "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
    static const char* const tens[] = {"",      "",      "twenty",  "thirty", "forty",
                                       "fifty", "sixty", "seventy", "eighty", "ninety"};
    if (number < 20) return small[number];
    if (number < 100) return std::string(tens[number / 10]) + (number % 10 ? "-" + inWords(number % 10) : "");
    return inWords(number / 100) + " hundred" + (number % 100 ? " and " + inWords(number % 100) : "");
}

TEST(NumberLaws, wordsAreTheirNumbers) {
    constexpr const char* beside[] = {"# miles",   "# dollars", "# * 3",       "# kg + 2 g",
                                      "# million", "# + 1",     "# cups in ml"};
    const Tongue& english = tongues()[0];
    holds([&] {
        const int number = anyOf(2, 99);
        const char* use = anyRow(beside);
        requireSameValue(english, in(use, std::to_string(number)), in(use, inWords(number)));
        requireSameValue(english, in(use, std::to_string(number)), in(use, replaced(inWords(number), "-", " ")));
    });
}

struct Currency {
    const char* spellings[7];  // each with "#" for the number; the first is the usual one
};
constexpr Currency currencies[] = {{{"$#", "# $", "#$", "USD #", "# USD", "US$#", "# usd"}},
                                   {{"€#", "# €", "#€", "EUR #", "# EUR", "€ #", "# euro"}},
                                   {{"£#", "# £", "#£", "GBP #", "# GBP", "£ #", "# gbp"}},
                                   {{"¥#", "# ¥", "#¥", "JPY #", "# JPY", "¥ #", "# jpy"}},
                                   {{"CHF #", "# CHF", "CHF#", "#CHF", "CHF\u00a0#", "# chf", "CHF  #"}}};

TEST(NumberLaws, moneyIsWrittenInManyWays) {
    constexpr const char* amounts[] = {"#",        "# + 10%",       "# * 3",
                                       "2 * #",    "#/4",           "10% of #",
                                       "5% off #", "# + 7",         "hotel: #",
                                       "hotel #",  "3 nights at #", "# - 2%",
                                       "x = #",    "half of #",     "split # between 4 people",
                                       "3 x #",    "(#) * 2",       "# in JPY"};
    for (const Tongue& tongue : tongues())
        holds([&] {
            const Currency& currency = anyRow(currencies);
            const char* use = anyRow(amounts);
            const std::string number = written(anyOf(100, 999'999), tongue);
            const auto line = [&](const char* spelling) { return in(use, in(spelling, number)); };
            requireSame(tongue, line(currency.spellings[0]), line(anyRow(currency.spellings)));
        });
}

}  // namespace
}  // namespace vemo::test
