// SPDX-License-Identifier: MIT
#include "scanning/words/localizer.h"

#include <algorithm>

#include "base/text.h"
#include "platform/file_io.h"
#include "scanning/words/compiled_tables.h"
#include "scanning/words/strings_file.h"

namespace vemo {

namespace {

constexpr std::u16string_view baseLanguage = u"Base";
constexpr std::size_t largestTable = std::size_t(4) << 20;  // bytes

const CompiledTable* compiledTable(std::u16string_view language, std::u16string_view table) {
    const CompiledTable* end = compiledTables + compiledTableCount;
    const auto key = std::pair(language, table);
    const CompiledTable* found = std::lower_bound(compiledTables, end, key, [](const CompiledTable& t, const auto& k) {
        return std::pair(t.language, t.table) < k;
    });
    return found != end && found->language == language && found->table == table ? found : nullptr;
}

std::optional<std::u16string_view> compiledEntry(std::u16string_view language, std::u16string_view table,
                                                 std::u16string_view key) {
    const CompiledTable* entries = compiledTable(language, table);
    if (!entries) return std::nullopt;
    const CompiledEntry* end = entries->entries + entries->count;
    const CompiledEntry* found = std::lower_bound(
        entries->entries, end, key, [](const CompiledEntry& entry, std::u16string_view k) { return entry.key < k; });
    if (found == end || found->key != key) return std::nullopt;
    return found->value;
}

void appendPhrases(std::u16string_view list, std::vector<std::u16string>& phrases) {
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(u','), list.size());
        const std::u16string_view phrase = trimmed(list.substr(0, comma));
        if (!phrase.empty() && std::find(phrases.begin(), phrases.end(), phrase) == phrases.end())
            phrases.emplace_back(phrase);
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
}

}  // namespace

Localizer::Localizer(std::string_view language, const std::filesystem::path& folder, const Log& log) {
    if (!folder.empty()) readFolder(folder, log);
    std::u16string code = toUtf16(language.substr(0, language.find('.')));
    std::replace(code.begin(), code.end(), u'_', u'-');
    while (!code.empty() && !hasLanguage(code))
        code.erase(code.rfind(u'-') == std::u16string::npos ? 0 : code.rfind(u'-'));
    language_ = code;
}

bool Localizer::hasLanguage(std::u16string_view language) const {
    const auto compiled = std::any_of(compiledTables, compiledTables + compiledTableCount,
                                      [&](const CompiledTable& table) { return table.language == language; });
    return compiled || std::any_of(overrides_.begin(), overrides_.end(), [&](const auto& entry) {
               return entry.first.starts_with(std::u16string(language) + u"/");
           });
}

void Localizer::readFolder(const std::filesystem::path& folder, const Log& log) {
    const auto isTable = [](const std::filesystem::path& path) {
        return path.extension() == ".strings" && path.parent_path().extension() == ".lproj";
    };
    for (const std::filesystem::path& path : filesBelow(folder, isTable, log)) {
        const auto bytes = readFileAtMost(path, largestTable);
        if (!bytes) {
            if (log) log(path.string() + ": can't be read, or is too large");
            continue;
        }
        auto parsed = parseStrings(*bytes);
        if (!parsed) {
            const Failure& failure = parsed.failure();
            if (log) log(path.string() + ":" + std::to_string(failure.line) + ": " + failure.message);
            continue;
        }
        auto& table = overrides_[toUtf16(path.parent_path().stem().string() + "/" + path.stem().string())];
        for (StringsEntry& item : *parsed) table.insert_or_assign(std::move(item.key), std::move(item.value));
    }
}

std::optional<std::u16string_view> Localizer::find(std::u16string_view language, std::u16string_view table,
                                                   std::u16string_view key) const {
    if (!overrides_.empty()) {
        const auto overriding = overrides_.find(std::u16string(language).append(u"/").append(table));
        if (overriding != overrides_.end()) {
            const auto found = overriding->second.find(key);
            if (found != overriding->second.end()) return std::u16string_view(found->second);
        }
    }
    return compiledEntry(language, table, key);
}

std::optional<std::u16string> Localizer::translation(std::u16string_view key, std::u16string_view table) const {
    if (language_.empty()) return std::nullopt;
    const auto text = find(language_, table, key);
    return text ? std::optional<std::u16string>(*text) : std::nullopt;
}

std::u16string Localizer::base(std::u16string_view key, std::u16string_view table) const {
    return std::u16string(find(baseLanguage, table, key).value_or(key));
}

std::u16string Localizer::translationOrBase(std::u16string_view key, std::u16string_view table) const {
    auto text = translation(key, table);
    return text ? *std::move(text) : base(key, table);
}

std::vector<std::u16string> Localizer::variants(std::u16string_view key, std::u16string_view table, bool includeBase,
                                                bool lowercase) const {
    const auto cased = [&](std::u16string_view text) { return lowercase ? lowercased(text) : std::u16string(text); };
    std::vector<std::u16string> phrases;
    if (const auto text = translation(key, table)) appendPhrases(cased(*text), phrases);
    if (!includeBase && !phrases.empty()) return phrases;
    appendPhrases(cased(base(key, table)), phrases);
    return phrases;
}

}  // namespace vemo
