// SPDX-License-Identifier: MIT
#include "online/place_names.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/timezone.h>
#include <unicode/tznames.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "base/text.h"
#include "platform/icu_locale.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

constexpr std::size_t longestPlace = 100;

std::u16string textOf(const icu::UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

// Letters and digits without case and accents, words separated by single blanks.
std::u16string folded(std::u16string_view place) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFKDInstance(status);
    icu::UnicodeString text(place.data(), static_cast<std::int32_t>(place.size()));
    if (U_SUCCESS(status)) text = normalizer->normalize(text.foldCase(), status);
    std::u16string result;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        if (u_isalnum(character)) {
            result += textOf(icu::UnicodeString(character));
        } else if (u_charType(character) != U_NON_SPACING_MARK && character != u'\'' && character != u'\u2019' &&
                   !result.empty() && result.back() != u' ') {
            result += u' ';
        }
    }
    if (!result.empty() && result.back() == u' ') result.pop_back();
    return result;
}

// False for zones that stand for an offset or a rule.
bool isPlace(std::u16string_view identifier) {
    for (const std::u16string_view prefix : {u"Etc/", u"SystemV/"})
        if (identifier.starts_with(prefix)) return false;
    constexpr std::size_t shortestName = 4;  // "Cuba", "Iran"; EST and its like are abbreviations
    const bool plain = identifier.find(u'/') == identifier.npos;
    return !plain ||
           (identifier.size() >= shortestName &&
            std::all_of(identifier.begin() + 1, identifier.end(), [](char16_t c) { return c >= u'a' && c <= u'z'; }));
}

class Builder {
public:
    // `written` gets the names as they are written, if it is there.
    Builder(const Localizer& localizer, const std::string& language, TextMap<std::u16string>& zones,
            std::vector<std::u16string>* written = nullptr)
        : localizer_(localizer), zones_(zones), written_(written) {
        UErrorCode status = U_ZERO_ERROR;
        for (const icu::Locale& locale : {icuLocale(language), icu::Locale::getEnglish()}) {
            names_.emplace_back(icu::TimeZoneNames::createInstance(locale, status));
            locales_.push_back(locale);
        }
    }

    void build() {
        UErrorCode status = U_ZERO_ERROR;
        std::vector<icu::UnicodeString> identifiers;
        const std::unique_ptr<icu::StringEnumeration> all(
            icu::TimeZone::createTimeZoneIDEnumeration(UCAL_ZONE_TYPE_ANY, nullptr, nullptr, status));
        while (const icu::UnicodeString* identifier = all ? all->snext(status) : nullptr)
            identifiers.push_back(*identifier);
        // What is added first stays: the names of today's zones before those of zones that were merged into others.
        std::map<std::u16string, std::vector<std::u16string>> zonesOfRegion;
        for (const icu::UnicodeString& identifier : identifiers) {
            const std::u16string zone = textOf(identifier);
            if (!isPlace(zone) || !isCanonical(identifier)) continue;
            addNames(identifier);
            char region[8] = "";
            UErrorCode regionStatus = U_ZERO_ERROR;
            icu::TimeZone::getRegion(identifier, region, sizeof region, regionStatus);
            if (U_SUCCESS(regionStatus)) zonesOfRegion[toUtf16(region)].push_back(zone);
        }
        for (const auto& [region, zones] : zonesOfRegion)
            if (zones.size() == 1) addCountry(toUtf8(region), zones.front());
        for (const icu::UnicodeString& identifier : identifiers) {
            const std::u16string zone = textOf(identifier);
            if (!isPlace(zone)) continue;
            add(zone, zone);
            add(zone.substr(zone.rfind(u'/') + 1), zone);
        }
    }

private:
    void add(std::u16string_view name, const std::u16string& zone) {
        std::u16string key = folded(name);
        if (key.empty() || !zones_.emplace(std::move(key), zone).second || !written_) return;
        // Identifiers are for programs.
        if (name.find_first_of(u"/_") == name.npos) written_->emplace_back(name);
    }

    static bool isCanonical(const icu::UnicodeString& identifier) {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeString canonical;
        icu::TimeZone::getCanonicalID(identifier, canonical, status);
        return U_SUCCESS(status) && canonical == identifier;
    }

    void addNames(const icu::UnicodeString& identifier) {
        const std::u16string zone = textOf(identifier);
        const std::u16string key = zone + u".places";
        for (const std::u16string& name : localizer_.variants(key, u"Places"))
            if (name != key) add(name, zone);
        for (const auto& names : names_) {
            icu::UnicodeString city;
            if (names) names->getExemplarLocationName(identifier, city);
            if (!city.isBogus()) add(textOf(city), zone);
        }
    }

    void addCountry(const std::string& region, const std::u16string& zone) {
        for (const icu::Locale& locale : locales_) {
            icu::UnicodeString country;
            icu::Locale("", region.c_str()).getDisplayCountry(locale, country);
            add(textOf(country), zone);
        }
    }

    const Localizer& localizer_;
    TextMap<std::u16string>& zones_;
    std::vector<std::u16string>* written_;
    std::vector<std::unique_ptr<icu::TimeZoneNames>> names_;
    std::vector<icu::Locale> locales_;
};

}  // namespace

void PlaceNames::build() const {
    Builder(localizer_, language_, zones_).build();
}

std::vector<std::u16string> PlaceNames::names() const {
    std::vector<std::u16string> written;
    TextMap<std::u16string> zones;
    Builder(localizer_, language_, zones, &written).build();
    return written;
}

std::optional<std::u16string> PlaceNames::zoneOf(std::u16string_view place) const {
    if (place.empty() || place.size() > longestPlace) return std::nullopt;
    std::call_once(built_, [&] { build(); });
    const auto found = zones_.find(folded(place));
    return found == zones_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace vemo
