// SPDX-License-Identifier: MIT
// Numbers as other programs write them are read in every locale, whatever its digits, separators and exponents.

#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>

#include <algorithm>
#include <set>

#include "evaluation/written_numbers.h"
#include "scanning/locale_numerals.h"
#include "support/calculators.h"
#include "support/laws.h"
#include "vemo/number_parsers.h"

namespace vemo::test {
namespace {

// How a locale writes numbers, by rules that are not ours.
class Writer {
public:
    explicit Writer(const icu::Locale& locale)
        : name(locale.getName()),
          info(LocaleInfo::forIdentifier(name)),
          numerals(info),
          parser(name),
          format_(icu::NumberFormat::createInstance(locale, status_)),
          scientific_(icu::NumberFormat::createScientificInstance(locale, status_)) {}

    // The number times ten to the power of -digits.
    std::u16string written(std::int64_t number, int digits) const {
        format_->setMinimumFractionDigits(digits);
        format_->setMaximumFractionDigits(digits);
        return of(*format_, number, digits);
    }
    std::u16string inScientific(std::int64_t number, int digits) const {
        scientific_->setMaximumFractionDigits(20);
        return of(*scientific_, number, digits);
    }
    // What is read of it; nothing where it is no literal.
    DecimalNumber read(const std::u16string& text) const { return parser.decimalNumber(numerals.folded(text)); }

    const std::string name;
    const LocaleInfo info;
    const LocaleNumerals numerals;
    const DecimalParser parser;

private:
    static std::u16string of(icu::NumberFormat& format, std::int64_t number, int digits) {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeString text;
        const std::string decimal = std::to_string(number) + "e-" + std::to_string(digits);
        format.format(icu::StringPiece(decimal), text, nullptr, status);
        return {text.getBuffer(), std::size_t(text.length())};
    }

    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format_, scientific_;
};

// One locale of each way to write numbers.
const std::vector<std::unique_ptr<Writer>>& writers() {
    static const auto all = [] {
        std::vector<std::unique_ptr<Writer>> list;
        std::set<std::u16string> known;
        std::int32_t count = 0;
        const icu::Locale* locales = icu::Locale::getAvailableLocales(count);
        for (std::int32_t i = 0; i < count; ++i) {
            auto writer = std::make_unique<Writer>(locales[i]);
            if (known.insert(writer->written(1234567891, 3) + writer->inScientific(-12345, 9)).second)
                list.push_back(std::move(writer));
        }
        return list;
    }();
    return all;
}

DecimalNumber numberOf(std::int64_t number, int digits) {
    return DecimalNumber::fromInt64(number).multiplyingByPowerOf10(static_cast<std::int16_t>(-digits));
}

std::int64_t anyWhole() {
    return (std::int64_t(anyOf(0, 999'999)) * 1'000'000 + anyOf(1, 999'999)) / (anyOf(0, 1) == 0 ? 1 : 1'000'000);
}

TEST(NumberSpellings, everyLocaleReadsWhatIsWrittenThere) {
    ASSERT_GT(writers().size(), 30u);
    for (const auto& writer : writers()) {
        SCOPED_TRACE(writer->name);
        holds(
            [&] {
                const std::int64_t number = anyWhole();
                const int digits = anyOf(0, 5);
                const std::u16string text = writer->written(number, digits), folded = writer->numerals.folded(text);
                if (writer->read(text) != numberOf(number, digits))
                    RC_FAIL(utf8(text) + " is read as " + writer->read(text).toString());
                RC_ASSERT(folded.size() == text.size());
                // One literal, which nobody takes for several numbers joined.
                if (isOddlyJoined(folded, writer->numerals.locale())) RC_FAIL(utf8(text) + " looks odd");
            },
            20);
    }
}

// Some locales' scientific notation is the plain one, and ICU breaks the digits of exponents that are beyond the basic
// plane.
bool writesExponents(const Writer& writer) {
    const std::u16string text = writer.inScientific(1, 10);
    return text.find(writer.info.exponentSign) != text.npos &&
           std::ranges::none_of(text, [](char16_t c) { return (c & 0xf800) == 0xd800; });
}

TEST(NumberSpellings, exponentsAreRead) {
    for (const auto& writer : writers()) {
        if (!writesExponents(*writer)) continue;
        SCOPED_TRACE(writer->name);
        const ScientificParser scientific(writer->parser);
        holds(
            [&] {
                const std::int64_t number = anyWhole();
                const int digits = anyOf(0, 30);
                const std::u16string text = writer->inScientific(number, digits);
                const auto read = scientific.decimalNumber(writer->numerals.folded(text));
                if (read != numberOf(number, digits))
                    RC_FAIL(utf8(text) + " is read as " + (read ? read->toString() : "nothing"));
            },
            20);
    }
}

TEST(NumberSpellings, amountsOfOtherPlacesAreKnownByTheirCents) {
    const auto places = [](const char* name) { return std::make_unique<Writer>(icu::Locale(name)); };
    const std::unique_ptr<Writer> some[] = {places("en_US"), places("de_DE"), places("fr_FR"), places("es_ES"),
                                            places("ja_JP")};
    holds([&] {
        const auto& here = anyRow(some);
        const auto& there = anyRow(some);
        const std::int64_t cents = anyOf(101, 99'999'999);
        const std::u16string text = there->written(cents, 2);
        const auto amount = foreignAmount(text, here->info);
        // Where both write the same, or with blanks between the groups, there is nothing foreign to it.
        const bool own = here->written(cents, 2) == text;
        const std::size_t other = text.find_first_not_of(u"0123456789.,");
        if (own || other != text.npos) return;
        if (!amount || *amount != numberOf(cents, 2))
            RC_FAIL(utf8(text) + " in " + here->name + " is " + (amount ? amount->toString() : "nothing foreign"));
        RC_ASSERT(!foreignAmount(here->written(cents, 2), here->info));
    });
}

TEST(NumberSpellings, foldingKeepsEverythingElse) {
    static const std::vector<std::u16string> pieces{u"a",          u" ",  u"(", u"’",  u"'",         u"٫",  u"×10^",
                                                    u"e",          u"E5", u"−", u"·",  u"1",         u"２", u"٣",
                                                    u"\U0001e957", u"km", u"…", u"＋", u"\U0001f600"};
    holds([] {
        const Writer& writer = *anyRow(writers());
        std::u16string text;
        for (int i = anyOf(0, 12); i > 0; --i) text += anyRow(pieces);
        const std::u16string folded = writer.numerals.folded(text);
        RC_ASSERT(folded.size() == text.size());
        RC_ASSERT(writer.numerals.folded(folded) == folded);
        for (std::size_t i = 0; i < text.size(); ++i)
            if (text[i] < 0x80 && isLetter(text[i]) && lowercasedUnit(text[i]) != u'e') RC_ASSERT(folded[i] == text[i]);
    });
}

}  // namespace
}  // namespace vemo::test
