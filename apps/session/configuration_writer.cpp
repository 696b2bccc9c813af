// SPDX-License-Identifier: MIT
#include "session/configuration_writer.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include "session/files.h"
#include "session/saving.h"

namespace vemo::session {

namespace {

struct Name {
    std::string table;  // empty: the keys before all tables
    std::string key;
};

Name nameOf(const std::string& key) {
    const std::size_t point = key.find('.');
    return point == key.npos ? Name{"", key} : Name{key.substr(0, point), key.substr(point + 1)};
}

// The offset of a position, whose columns count characters.
std::size_t offsetOf(std::string_view text, const toml::source_position& position) {
    std::size_t at = 0;
    for (toml::source_index line = 1; line < position.line && at < text.size(); ++line)
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    const auto continues = [&](std::size_t i) { return (static_cast<unsigned char>(text[i]) & 0xc0) == 0x80; };
    for (toml::source_index column = 1; column < position.column && at < text.size(); ++column) {
        ++at;
        while (at < text.size() && continues(at)) ++at;
    }
    return at;
}

std::size_t lineStart(std::string_view text, std::size_t at) {
    const std::size_t feed = at == 0 ? text.npos : text.rfind('\n', at - 1);
    return feed == text.npos ? 0 : feed + 1;
}

std::size_t nextLine(std::string_view text, std::size_t at) {
    const std::size_t feed = text.find('\n', at);
    return feed == text.npos ? text.size() : feed + 1;
}

// Where the tables begin: the keys of no table stand before it, and the comments over the head of the first table after
// it.
std::size_t firstTable(std::string_view text) {
    std::size_t end = text.size();
    for (std::size_t at = 0; at < text.size(); at = nextLine(text, at)) {
        const std::size_t first = text.find_first_not_of(" \t", at);
        if (first != text.npos && text[first] == '[') {
            end = at;
            break;
        }
    }
    if (end == text.size()) return end;
    while (end > 0) {
        const std::size_t before = lineStart(text, end - 1);
        const std::size_t first = text.find_first_not_of(" \t", before);
        if (first == text.npos || text[first] != '#') break;
        end = before;
    }
    return end;
}

// Where a new key of a table is written: after its last one, else after its head.
std::optional<std::size_t> placeFor(std::string_view text, const toml::table& root, const Name& name) {
    const toml::table* table = name.table.empty() ? &root : root[name.table].as_table();
    if (!table) return std::nullopt;
    std::size_t place = 0;
    for (const auto& [key, node] : *table)
        if (!node.is_table() && !node.is_array_of_tables())
            place = std::max(place, nextLine(text, offsetOf(text, node.source().end)));
    if (place > 0) return place;
    return name.table.empty() ? firstTable(text) : nextLine(text, offsetOf(text, table->source().begin));
}

std::string written(const ConfigurationChange& change) {
    std::ostringstream out;
    if (const auto* number = std::get_if<std::int64_t>(&*change.value))
        out << *number;
    else
        out << toml::toml_formatter(toml::value<std::string>(std::get<std::string>(*change.value)),
                                    toml::format_flags::allow_unicode_strings);
    return out.str();
}

std::string withChange(std::string text, const toml::table& root, const ConfigurationChange& change) {
    const Name name = nameOf(change.key);
    const toml::table* table = name.table.empty() ? &root : root[name.table].as_table();
    const toml::node* node = table ? table->get(name.key) : nullptr;
    if (node) {
        const std::size_t begin = offsetOf(text, node->source().begin), end = offsetOf(text, node->source().end);
        if (change.value) return text.replace(begin, end - begin, written(change));
        const std::size_t line = lineStart(text, begin);
        return text.erase(line, nextLine(text, end) - line);
    }
    if (!change.value) return text;
    const std::string line = name.key + " = " + written(change) + "\n";
    const auto feed = [&](std::size_t at) { return at > 0 && text[at - 1] != '\n' ? "\n" : ""; };
    if (const auto place = placeFor(text, root, name)) {
        const bool gap = name.table.empty() && *place < text.size() &&
                         (*place == 0 || text[*place - 1] != '\n' || text[*place] == '#' || text[*place] == '[');
        return text.insert(*place, feed(*place) + line + (gap ? "\n" : ""));
    }
    return text + feed(text.size()) + (text.empty() ? "" : "\n") + "[" + name.table + "]\n" + line;
}

void apply(toml::table& root, const ConfigurationChange& change) {
    const Name name = nameOf(change.key);
    if (!name.table.empty() && !root[name.table].is_table()) {
        if (!change.value) return;
        root.insert_or_assign(name.table, toml::table());
    }
    toml::table* const inner = name.table.empty() ? nullptr : root[name.table].as_table();
    toml::table& table = inner ? *inner : root;
    if (!change.value)
        table.erase(name.key);
    else
        std::visit([&](const auto& value) { table.insert_or_assign(name.key, value); }, *change.value);
}

}  // namespace

Result<std::string> changedConfiguration(std::string_view given, const std::vector<ConfigurationChange>& changes) {
    std::string text(given);
    for (const ConfigurationChange& change : changes) {
        const toml::parse_result before = toml::parse(text);
        if (!before) {
            const auto line = before.error().source().begin.line;
            return Failure{std::to_string(line) + ": " + std::string(before.error().description()),
                           static_cast<int>(line)};
        }
        toml::table wanted = before.table();
        apply(wanted, change);
        text = withChange(std::move(text), before.table(), change);
        const toml::parse_result after = toml::parse(text);
        if (after && after.table() == wanted) continue;
        // The text is written in a way that can't be changed in place, such as with a table within a line: the keys
        // count more than the comments.
        std::ostringstream out;
        out << wanted << '\n';
        text = out.str();
    }
    return text;
}

std::string changeConfiguration(const std::string& file, const std::vector<ConfigurationChange>& changes) {
    if (file.empty()) return "there is no home folder to keep settings in";
    std::error_code error;
    const bool exists = std::filesystem::exists(file, error);
    const auto text = exists ? readFile(file) : std::optional<std::string>("");
    if (!text) return file + ": cannot be read";
    const Result<std::string> changed = changedConfiguration(*text, changes);
    if (!changed) return file + ":" + changed.failure().message;
    if (*changed == *text) return "";
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), error);
    const std::string problem = replaceFile(file, *changed);
    return problem.empty() ? "" : file + ": " + problem;
}

}  // namespace vemo::session
