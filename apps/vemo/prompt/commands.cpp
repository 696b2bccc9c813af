// SPDX-License-Identifier: MIT
#include "prompt/commands.h"

#include <algorithm>
#include <charconv>
#include <iostream>

#include "prompt/settings.h"
#include "prompt/unit_lists.h"
#include "session/nearest.h"
#include "session/saving.h"

namespace vemo::cli {

namespace {

constexpr std::string_view introduction =
    "Every line is calculated; names and results hold for the lines below. An empty line or a header ends what a total "
    "is of. A line that is an error is not kept. Commands may be cut short.";

constexpr std::pair<std::string_view, std::string_view> keys[] = {
    {"Tab", "completes a word, or shows what there is; again, takes one of it"},
    {"Up, Down", "go through earlier lines; Ctrl-R looks for one"},
    {"Ctrl-C", "clears the line"},
    {"Ctrl-D", "ends"},
};

// A text after a name, broken at its blanks so that no row is wider than the terminal.
void printWrapped(std::string name, std::size_t indent, std::string_view text) {
    constexpr std::size_t widest = 100;
    const std::size_t width = std::min(RawTerminal::size().columns, widest);
    name.resize(std::max(name.size(), indent), ' ');
    std::string row = name;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (row.size() > indent && row.size() + 1 + word.size() > width) {
            std::cout << row << '\n';
            row.assign(indent, ' ');
        }
        if (row.size() > indent) row += ' ';
        row += word;
    }
    std::cout << row << '\n';
}

// The index of the line that is meant, by its number or as the last one. Nothing when there is none; the person has
// been told then.
std::optional<std::size_t> lineIn(Session& session, const std::string& argument) {
    const std::size_t count = session.notebook().size();
    std::size_t number = count;
    if (!argument.empty()) {
        const char* end = argument.data() + argument.size();
        const auto [stop, error] = std::from_chars(argument.data(), end, number);
        if (error != std::errc() || stop != end) number = 0;
    }
    if (number >= 1 && number <= count) return number - 1;
    session.say(count == 0 ? "there are no lines" : "there are lines 1 to " + std::to_string(count));
    return std::nullopt;
}

std::string usageOf(const Command& command) {
    return ":" + std::string(command.name) + (command.arguments.empty() ? "" : " ") + std::string(command.arguments);
}

void help(Session&, const std::string&) {
    constexpr std::size_t leastForTexts = 30;  // columns
    std::size_t widest = 0;
    for (const Command& command : commands()) widest = std::max(widest, usageOf(command).size() + 4);
    const bool narrow = RawTerminal::size().columns < widest + leastForTexts;
    const auto print = [&](const std::string& name, std::string_view text) {
        if (narrow) std::cout << "  " << name << '\n';
        printWrapped(narrow ? "" : "  " + name, narrow ? 4 : widest, text);
    };
    printWrapped("", 0, introduction);
    for (const auto& [key, text] : keys) print(std::string(key), text);
    for (const Command& command : commands()) print(usageOf(command), command.help);
    std::cout << std::flush;
}

void explain(Session& session, const std::string& argument) {
    const auto index = lineIn(session, argument);
    if (!index) return;
    const auto reading = session.engine().readingOf(*index, session.notebook().text(), session.context());
    session.say(reading ? utf8(*reading) : "the line has no result");
}

void edit(Session& session, const std::string& argument) {
    if (const auto index = lineIn(session, argument)) session.edit(*index);
}

void remove(Session& session, const std::string& argument) {
    if (const auto index = lineIn(session, argument)) session.remove(*index);
}

void load(Session& session, const std::string& argument) {
    if (argument.empty())
        session.say(":load needs the name of a file");
    else
        session.load(argument);
}

// Every name with its value after the last line.
void names(Session& session, const std::string&) {
    const auto result = session.calculate(session.notebook().text());
    std::vector<std::pair<std::u16string, std::string>> found;  // the name in lower case, and its row
    for (std::size_t i = 0; result && i < result->lines.size(); ++i) {
        const auto& line = result->lines[i];
        const std::u16string text = line.attributedText().compoundString();
        for (const auto& use : line.names()) {
            if (!use.defines) continue;
            std::erase_if(found, [&](const auto& each) { return each.first == use.name; });
            const std::string value = session::rowOf(*result, i, session.layout().writing).result;
            found.emplace_back(use.name, utf8(text.substr(use.start, use.length)) + " = " + value);
        }
    }
    for (const auto& [name, row] : found) session.say("  " + row);
    if (found.empty()) session.say("no names; \"rent = 1200\" gives one");
}

void list(Session& session, const std::string&) {
    session.list();
}

void undo(Session& session, const std::string&) {
    session.undo();
}

void clear(Session& session, const std::string&) {
    session.clear();
}

void save(Session& session, const std::string& argument) {
    session.save(argument);
}

void quit(Session& session, const std::string&) {
    session.leave();
}

const Command* find(std::string_view name) {
    const auto found =
        std::find_if(commands().begin(), commands().end(), [&](const Command& each) { return each.name == name; });
    return found == commands().end() ? nullptr : &*found;
}

std::vector<const Command*> beginningWith(std::string_view name) {
    if (const Command* whole = find(name)) return {whole};
    std::vector<const Command*> found;
    for (const Command& command : commands())
        if (command.name.starts_with(name)) found.push_back(&command);
    return found;
}

struct Words {
    std::string name, argument;
};

// The command and the words of a line that begins with a colon.
Words wordsOf(std::string_view line) {
    line.remove_prefix(1);
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::size_t first = line.find_first_not_of(' ', end);
    if (first == line.npos) return {std::string(line.substr(0, end)), ""};
    return {std::string(line.substr(0, end)), std::string(line.substr(first, line.find_last_not_of(' ') - first + 1))};
}

std::vector<Completer::Choice> filesLike(const std::string& typed) {
    const std::size_t slash = typed.rfind('/');
    const std::string folder = slash == typed.npos ? "" : typed.substr(0, slash + 1);
    std::vector<Completer::Choice> choices;
    std::error_code error;
    std::filesystem::directory_iterator entries(folder.empty() ? "." : session::expanded(folder), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        const bool isFolder = entries->is_directory(error);
        if (!name.starts_with('.') || typed.substr(folder.size()).starts_with('.'))
            choices.push_back({utf16(folder + name + (isFolder ? "/" : "")), ""});
    }
    std::sort(choices.begin(), choices.end(), [](const auto& a, const auto& b) { return a.text < b.text; });
    return choices;
}

std::vector<Completer::Choice> choicesFor(Command::Takes takes, const std::string& typed) {
    std::vector<Completer::Choice> choices;
    const auto add = [&](const auto& names) {
        for (const auto& name : names) choices.push_back({utf16(name), ""});
    };
    if (takes == Command::Takes::kind) add(unitKinds());
    if (takes == Command::Takes::setting) add(settingNames());
    return takes == Command::Takes::file ? filesLike(typed) : choices;
}

}  // namespace

const std::vector<Command>& commands() {
    using Takes = Command::Takes;
    static const std::vector<Command> table{
        {"list", "", "shows the lines with their numbers and results", Takes::nothing, list},
        {"edit", "[N]", "changes line N, or the last one", Takes::nothing, edit},
        {"delete", "[N]", "removes line N, or the last one", Takes::nothing, remove},
        {"undo", "", "takes back the last change of the lines", Takes::nothing, undo},
        {"clear", "", "begins without lines", Takes::nothing, clear},
        {"load", "FILE", "takes the lines of a file in place of these", Takes::file, load},
        {"save", "[FILE]", "writes the lines to a file; asks before it writes over one", Takes::file, save},
        {"vars", "", "shows the names and their values", Takes::nothing, names},
        {"units", "[KIND]", "shows the units of a kind, such as length, or of a unit's", Takes::kind, listUnits},
        {"explain", "[N]", "tells how line N, or the last one, was calculated", Takes::nothing, explain},
        {"set", "[NAME VALUE]", "shows the settings, or changes one: precision 6", Takes::setting, changeSetting},
        {"help", "", "shows this", Takes::nothing, help},
        {"quit", "", "ends", Takes::nothing, quit},
    };
    return table;
}

void runCommand(Session& session, std::string_view line) {
    const Words words = wordsOf(line);
    const auto found = beginningWith(words.name);
    if (words.name.empty()) {
        help(session, "");
    } else if (found.size() == 1) {
        found.front()->run(session, words.argument);
    } else if (found.empty()) {
        std::vector<std::string> known;
        for (const Command& command : commands()) known.emplace_back(command.name);
        session.say("there is no :" + words.name + "; the nearest is :" + session::nearest(words.name, known));
    } else {
        std::string names;
        for (const Command* command : found) names += (names.empty() ? ":" : " or :") + std::string(command->name);
        session.say(":" + words.name + " may be " + names);
    }
}

std::string_view commandOfWord(std::string_view word) {
    constexpr std::pair<std::string_view, std::string_view> wordsOfTheirOwn[] = {
        {"help", "help"}, {"?", "help"}, {"quit", "quit"}, {"exit", "quit"}};
    for (const auto& [each, command] : wordsOfTheirOwn)
        if (each == word) return command;
    return "";
}

std::string commandHint(std::string_view line) {
    const auto found = beginningWith(wordsOf(line).name);
    if (found.size() == 1) {
        const Command& command = *found.front();
        return usageOf(command) + "  " + std::string(command.help);
    }
    std::string names;
    for (const Command* command : found) names += (names.empty() ? ":" : "  :") + std::string(command->name);
    return names;
}

Completer::Answer completeCommand(std::u16string_view text) {
    const std::size_t blank = text.find(u' ');
    if (blank == text.npos) {
        std::vector<Completer::Choice> choices;
        for (const Command& command : commands())
            choices.push_back({utf16(":" + std::string(command.name)), std::string(command.help)});
        return answerAmong(text, 0, std::move(choices));
    }
    const auto found = beginningWith(utf8(text.substr(1, blank - 1)));
    const std::size_t start = std::min(text.find_first_not_of(u' ', blank), text.size());
    if (found.size() != 1) return {};
    return answerAmong(text, start, choicesFor(found.front()->takes, utf8(text.substr(start))));
}

}  // namespace vemo::cli
