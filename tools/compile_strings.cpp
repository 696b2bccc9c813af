// SPDX-License-Identifier: MIT
// Compiles the phrase tables of a folder into one source file: compile_strings FOLDER OUTPUT.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

#include "scanning/words/strings_file.h"

namespace {

using Table = std::vector<vemo::StringsEntry>;

std::string literal(std::u16string_view text) {
    std::string result = "u\"";
    for (const char16_t c : text) {
        char buffer[8];
        if (c >= 0x20 && c < 0x7f && c != u'"' && c != u'\\') {
            result += static_cast<char>(c);
        } else {
            // Octal escapes end by themselves; above their range an escape needs a literal of its own.
            std::snprintf(buffer, sizeof buffer, c < 0x80 ? "\\%03o" : "\\x%04x", static_cast<unsigned>(c));
            result += buffer;
            if (c >= 0x80) result += "\" u\"";
        }
    }
    return result + "\"";
}

std::string quoted(const std::string& name) {
    return "u\"" + name + "\"";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::map<std::pair<std::string, std::string>, Table> tables;
    bool failed = false;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1])) {
        const auto& path = entry.path();
        if (path.extension() != ".strings" || path.parent_path().extension() != ".lproj") continue;
        std::ifstream file(path, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        auto parsed = vemo::parseStrings(bytes);
        if (!parsed) {
            std::cerr << path.string() << ':' << parsed.failure().line << ": " << parsed.failure().message << '\n';
            failed = true;
            continue;
        }
        Table table = *std::move(parsed);
        std::sort(table.begin(), table.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
        tables[{path.parent_path().stem().string(), path.stem().string()}] = std::move(table);
    }
    if (failed) return 1;

    std::ofstream out(argv[2]);
    out << "#include \"scanning/words/compiled_tables.h\"\n\nnamespace vemo {\n\nnamespace {\n";
    std::size_t index = 0;
    for (const auto& [name, table] : tables) {
        out << "\n// " << name.first << '/' << name.second << "\nconstexpr CompiledEntry entries" << index++
            << "[] = {\n";
        for (const auto& entry : table)
            out << "    {" << literal(entry.key) << ",\n     " << literal(entry.value) << "},\n";
        if (table.empty()) out << "    {u\"\", u\"\"},\n";
        out << "};\n";
    }
    out << "\n}  // namespace\n\nconst CompiledTable compiledTables[] = {\n";
    index = 0;
    for (const auto& [name, table] : tables) {
        out << "    {" << quoted(name.first) << ", " << quoted(name.second) << ", entries" << index++ << ", "
            << table.size() << "},\n";
    }
    out << "};\nconst std::size_t compiledTableCount = " << tables.size() << ";\n\n}  // namespace vemo\n";
    return out.flush() ? 0 : 1;
}
