// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/cache.h"
#include "evaluation/places.h"

namespace vemo {

class Localizer;

// The time zones of places, without a network: the cities that ICU names zones for, in the user's language and in
// English, countries with a single zone, zone identifiers, and the cities of the table "Places". Built at the first
// look-up, which takes some milliseconds. Thread-safe.
class PlaceNames : public Places {
public:
    // `localizer` must outlive this.
    PlaceNames(const Localizer& localizer, std::string language)
        : localizer_(localizer), language_(std::move(language)) {}

    // The IANA identifier for a name in any case, with or without its accents and punctuation.
    std::optional<std::u16string> zoneOf(std::u16string_view place) const override;
    // Every name, as it is written. Takes as long as the first look-up.
    std::vector<std::u16string> names() const;

private:
    void build() const;

    const Localizer& localizer_;
    std::string language_;
    mutable std::once_flag built_;
    mutable TextMap<std::u16string> zones_;
};

}  // namespace vemo
