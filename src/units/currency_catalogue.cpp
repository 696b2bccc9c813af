// SPDX-License-Identifier: MIT
#include <unicode/locid.h>
#include <unicode/plurrule.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_set>

#include "scanning/words/localizer.h"
#include "units/formula_converters.h"
#include "units/shared_currency_names.h"
#include "units/unit_catalogue.h"

namespace vemo {

namespace {

// ISO 4217 codes, current and past, and the crypto-currencies that fiat rate services list.
constexpr std::u16string_view codes =
    u"AED AFN ALL AMD ANG AOA ARS AUD AWG AZN BAM BBD BDT BGN BHD BIF BMD BND BOB BRL BSD BTC BTN BWP BYR BYN BZD CAD "
    u"CDF CHF CLP CNY COP CRC CUP CVE CZK DJF DKK DOP DZD EGP ERN ETB EUR FJD FKP GBP GEL GHS GIP GMD GNF GTQ GYD HKD "
    u"HNL HRK HTG HUF IDR ILS INR IQD IRR ISK JMD JOD JPY KES KGS KHR KMF KPW KRW KWD KYD KZT LAK LBP LKR LRD LSL LTL "
    u"LVL LYD MAD MDL MGA MKD MMK MNT MOP MRO MUR MVR MWK MXN MYR MZN NAD NGN NIO NOK NPR NZD OMR PAB PEN PGK PHP PKR "
    u"PLN PYG QAR RON RSD RUB RWF SAR SBD SCR SDG SEK SGD SHP SLL SOS SRD SSP STD SVC SYP SZL THB TJS TMT TND TOP TRY "
    u"TTD TWD TZS UAH UGX USD UYU UZS VEF VND VUV WST XAF XCD XOF XPF YER ZAR ZMW BTS DASH DOGE EAC EMC ETH FCT FTC LD "
    u"LTC NMC NVC NXT PPC STR VTC XMR XPM XRP";
constexpr std::u16string_view cryptoCodes[] = {u"BTC", u"BTS", u"DASH", u"DOGE", u"EAC", u"EMC", u"ETH",
                                               u"FCT", u"FTC", u"LD",   u"LTC",  u"NMC", u"NVC", u"NXT",
                                               u"PPC", u"STR", u"VTC",  u"XMR",  u"XPM", u"XRP"};

// In lower case these codes are units of their own, or parts of units.
constexpr std::u16string_view exactOnly[] = {u"CUP", u"KGS", u"KMF", u"STD", u"TMT", u"UZS", u"ZMW"};

constexpr std::u16string_view table = u"Currency";

// The codes that are typed most come first among the completions.
constexpr std::u16string_view first[] = {u"USD", u"EUR", u"JPY"};
constexpr std::u16string_view second[] = {u"CNY", u"GBP", u"CHF", u"CAD", u"AUD", u"NZD", u"ZAR", u"RUB", u"BYN"};

void offerMajorCodes(CompletionCollector& hints) {
    for (const std::u16string_view code : first)
        hints.add(code, completion_weight::mainCurrency, CompletionKind::currency);
    for (const std::u16string_view code : second)
        hints.add(code, completion_weight::commonCurrency, CompletionKind::currency);
}

// Offers the code and the words of its names, which follow the code among the phrases.
void offer(const Unit& unit, CompletionCollector& hints) {
    hints.add(unit.id, completion_weight::currencyCode, CompletionKind::currency);
    for (std::size_t i = 1; i < unit.phrases.size(); ++i) hints.addWords(unit.phrases[i], 0, CompletionKind::currency);
}

std::vector<std::u16string> wordsOf(const std::u16string& phrase) {
    std::vector<std::u16string> words;
    for (std::size_t start = 0; start < phrase.size();) {
        const std::size_t end = std::min(phrase.find(u' ', start), phrase.size());
        if (end > start) words.push_back(phrase.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

void appendUnique(std::vector<std::u16string>& phrases, std::u16string phrase) {
    if (!phrase.empty() && std::find(phrases.begin(), phrases.end(), phrase) == phrases.end())
        phrases.push_back(std::move(phrase));
}

// A language in which currencies have names, with the plural forms that it has.
struct NamingLanguage {
    explicit NamingLanguage(std::string_view name) : identifier(name) {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::PluralRules> rules(
            icu::PluralRules::forLocale(icu::Locale(identifier.c_str()), status));
        const std::unique_ptr<icu::StringEnumeration> keywords(rules ? rules->getKeywords(status) : nullptr);
        while (const char* keyword = keywords ? keywords->next(nullptr, status) : nullptr)
            plurals.emplace_back(keyword);
    }

    std::string identifier;
    std::vector<std::string> plurals;
};

// The names and the symbol of a currency in a language, in lower case.
void appendCldrNames(const std::u16string& code, const NamingLanguage& language, std::vector<std::u16string>& phrases) {
    const auto append = [&](const char16_t* text, std::int32_t length) {
        const std::u16string_view name(text, static_cast<std::size_t>(length));
        if (name != code) appendUnique(phrases, lowercased(name));
    };
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t length = 0;
    for (const std::string& plural : language.plurals) {
        const char16_t* name =
            ucurr_getPluralName(code.c_str(), language.identifier.c_str(), nullptr, plural.c_str(), &length, &status);
        if (U_SUCCESS(status)) append(name, length);
    }
    for (const UCurrNameStyle style : {UCURR_LONG_NAME, UCURR_SYMBOL_NAME}) {
        const char16_t* name =
            ucurr_getName(code.c_str(), language.identifier.c_str(), style, nullptr, &length, &status);
        if (U_SUCCESS(status)) append(name, length);
    }
}

bool isListed(std::u16string_view code) {
    for (std::size_t at = codes.find(code); at != codes.npos; at = codes.find(code, at + 1)) {
        const std::size_t end = at + code.size();
        if ((at == 0 || codes[at - 1] == u' ') && (end == codes.size() || codes[end] == u' ')) return true;
    }
    return false;
}

bool hasTableEntry(const Localizer& localizer, const std::u16string& key) {
    return localizer.translationOrBase(key, table) != key;
}

// Stands for the unit of a date.
constexpr std::u16string_view dateMarker = u"date";

std::u16string uppercased(const std::u16string& text) {
    const icu::UnicodeString upper = icu::UnicodeString(text.c_str()).toUpper(icu::Locale::getRoot());
    return {upper.getBuffer(), static_cast<std::size_t>(upper.length())};
}

}  // namespace

void registerCurrencies(UnitRegistry& registry, const Localizer& localizer, std::string_view language,
                        std::string_view locale) {
    const std::vector<SharedCurrencyNames> shared = sharedCurrencyNames(localizer, locale);
    std::vector<NamingLanguage> languages{NamingLanguage(language)};
    if (language != "en") languages.emplace_back("en");
    if (registry.hints()) offerMajorCodes(*registry.hints());
    for (std::u16string_view rest = codes; !rest.empty();) {
        const std::size_t end = std::min(rest.find(u' '), rest.size());
        const std::u16string code(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        Unit unit;
        unit.id = code;
        const bool exact = std::find(std::begin(exactOnly), std::end(exactOnly), code) != std::end(exactOnly);
        unit.phrases = {exact ? code : lowercased(code)};
        if (hasTableEntry(localizer, code + u".variants")) {
            for (std::u16string& phrase : localizer.variants(code + u".variants", table, true, true))
                appendUnique(unit.phrases, std::move(phrase));
        } else {
            for (const NamingLanguage& each : languages) appendCldrNames(code, each, unit.phrases);
        }
        if (hasTableEntry(localizer, code + u".aliases")) {
            for (std::u16string& phrase : localizer.variants(code + u".aliases", table, true, true))
                appendUnique(unit.phrases, std::move(phrase));
        }
        for (const SharedCurrencyNames& names : shared)
            if (names.currency == code)
                for (const std::u16string& word : names.words) appendUnique(unit.phrases, lowercased(word));
        // Single words among these names ("sum" in Spanish) mean other things, too.
        if (exact)
            std::erase_if(unit.phrases,
                          [&](const auto& phrase) { return phrase != code && phrase.find(u' ') == phrase.npos; });
        const std::u16string format = localizer.translationOrBase(code + u".format", table);
        unit.format = format.find(u".format") == format.npos ? format : code;
        unit.baseUnitId = u"USD";
        unit.toBaseValueConverter = currencyToUsdConverter(code, Rates::currency);
        unit.fromBaseValueConverter = usdToCurrencyConverter(code, Rates::currency);
        registry.registerUnit(unit, true, false);
        if (registry.hints()) offer(unit, *registry.hints());
    }
    for (std::u16string& word : localizer.variants(u"codes.words", table, true))
        registry.manager().restrictToConversions(std::move(word));
    for (const std::u16string_view code : cryptoCodes) registry.manager().restrictToConversions(lowercased(code));
}

void registerCryptoCurrencies(UnitRegistry& registry, const CurrencyRatesContainer& rates,
                              const std::function<bool(std::u16string_view code)>& isWord) {
    // What is a word of a unit's name already, such as "metric", or its symbol stays that.
    std::unordered_set<std::u16string> words;
    for (const auto& [phrase, unit] : registry.manager().phraseDetector().phrases())
        for (std::u16string& word : wordsOf(lowercased(phrase))) words.insert(std::move(word));
    for (const auto& [code, rate] : rates.rates) {
        const std::u16string lower = lowercased(code);
        if (isListed(code) || words.contains(lower) || registry.converter().baseUnit(code)) continue;
        if (code == dateMarker || code.size() < 2 || !hasLetter(code) || isWord(code) || isWord(lower)) continue;
        Unit unit;
        unit.id = code;
        unit.phrases = {code};
        if (lower != code) unit.phrases.push_back(lower);
        registry.manager().restrictToConversions(lower);
        unit.format = code;
        unit.baseUnitId = u"USD";
        unit.toBaseValueConverter = currencyToUsdConverter(code, Rates::crypto);
        unit.fromBaseValueConverter = usdToCurrencyConverter(code, Rates::crypto);
        registry.registerUnit(unit, true, false);
        if (registry.hints()) registry.hints()->add(uppercased(code), -1, CompletionKind::currency);
    }
}

}  // namespace vemo
