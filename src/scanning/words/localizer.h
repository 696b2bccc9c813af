// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/cache.h"

namespace vemo {

// The words the engine understands, from phrase tables by key: those of the user's language with the
// base (English) ones after them. Tables are compiled in; a folder of the same layout
// (<language>.lproj/<Table>.strings) overrides them key by key.
class Localizer {
public:
    using Log = std::function<void(std::string_view)>;

    // `language` as a BCP 47 or POSIX code; the nearest language there are tables for is taken, else the base.
    // A malformed file of the folder is left out and reported to `log` with its line.
    explicit Localizer(std::string_view language = {}, const std::filesystem::path& folder = {}, const Log& log = {});

    // The user's language only; nothing when it lacks the key.
    std::optional<std::u16string> translation(std::u16string_view key, std::u16string_view table) const;
    // The base text; the key itself when there is none.
    std::u16string base(std::u16string_view key, std::u16string_view table) const;
    std::u16string translationOrBase(std::u16string_view key, std::u16string_view table) const;
    // The comma-separated phrases under the key, the user's language first, without duplicates.
    std::vector<std::u16string> variants(std::u16string_view key, std::u16string_view table, bool includeBase = true,
                                         bool lowercased = false) const;

private:
    std::optional<std::u16string_view> find(std::u16string_view language, std::u16string_view table,
                                            std::u16string_view key) const;
    void readFolder(const std::filesystem::path& folder, const Log& log);
    bool hasLanguage(std::u16string_view language) const;

    std::u16string language_;                                      // empty: base only
    std::map<std::u16string, TextMap<std::u16string>> overrides_;  // by language, "/" and table
};

}  // namespace vemo
