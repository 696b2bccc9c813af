// SPDX-License-Identifier: MIT
// What an editor shows, from the documents of the folder `features`: one file a feature.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "lsp/cases.h"
#include "lsp/client.h"
#include "vemo/engine.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;

// What is seen beside each line of a case.
class Seen {
public:
    explicit Seen(std::size_t lines) : lines_(lines) {}
    void add(std::size_t line, const std::string& text) {
        if (line >= lines_.size()) return;
        lines_[line] += (lines_[line].empty() ? "" : "; ") + text;
    }
    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

struct Setting {
    LspClient& client;
    const LspCase& what;
    Seen& seen;

    Json place() const {
        return {{"textDocument", documentNamed(someUri)},
                {"position", {{"line", what.cursorLine}, {"character", what.cursor}}}};
    }
    Json document() const { return {{"textDocument", documentNamed(someUri)}}; }
    // The text under a range of one line.
    std::string under(const Json& range) const {
        const std::u16string line = utf16(what.lines[range["start"]["line"].get<std::size_t>()]);
        const auto start = range["start"]["character"].get<std::size_t>();
        return utf8(line.substr(start, range["end"]["character"].get<std::size_t>() - start));
    }
};

std::size_t lineOf(const Json& range) {
    return range["start"]["line"].get<std::size_t>();
}

void showHints(const Setting& in) {
    for (const Json& hint : in.client.hints(someUri)) {
        const auto line = hint["position"]["line"].get<std::size_t>();
        EXPECT_EQ(hint["position"]["character"], utf16(in.what.lines[line]).size());
        in.seen.add(line, hint["label"].get<std::string>());
    }
}

void showTooltips(const Setting& in) {
    for (Json hint : in.client.hints(someUri, 100)) {
        if (!hint.contains("tooltip")) hint = in.client.request("inlayHint/resolve", hint);
        in.seen.add(hint["position"]["line"].get<std::size_t>(), hint["tooltip"].get<std::string>());
    }
}

void showDiagnostics(const Setting& in) {
    in.client.hints(someUri);  // they come before the answer
    while (const auto told = in.client.nextOf("textDocument/publishDiagnostics", 0ms)) {
        for (const Json& each : (*told)["params"]["diagnostics"])
            in.seen.add(lineOf(each["range"]), std::string(each["severity"] == 2 ? "warning" : "hint") + " " +
                                                   each["code"].get<std::string>() + " at “" + in.under(each["range"]) +
                                                   "”");
    }
}

void showHover(const Setting& in) {
    const Json hover = in.client.request("textDocument/hover", in.place());
    if (hover.is_null()) return in.seen.add(in.what.cursorLine, "nothing");
    auto text = hover["contents"]["value"].get<std::string>();
    for (std::size_t at; (at = text.find("\n\n")) != text.npos;) text.replace(at, 2, " / ");
    in.seen.add(in.what.cursorLine, text);
}

void showCompletions(const Setting& in) {
    const Json list = in.client.request("textDocument/completion", in.place());
    std::string all;
    std::size_t count = 0;
    for (const Json& item : list["items"]) {
        if (++count > 6) break;
        all += (all.empty() ? "" : ", ") + item["label"].get<std::string>() + ":" +
               std::to_string(item["kind"].get<int>());
        EXPECT_EQ(item["textEdit"]["range"]["end"]["character"], in.what.cursor);
    }
    in.seen.add(in.what.cursorLine, all.empty() ? "nothing" : all);
}

void showTokens(const Setting& in) {
    static const Json legend = LspClient().initialize()["capabilities"]["semanticTokensProvider"]["legend"];
    const Json data = in.client.request("textDocument/semanticTokens/full", in.document())["data"];
    std::size_t line = 0, column = 0;
    for (std::size_t i = 0; i + 4 < data.size(); i += 5) {
        const auto number = [&](std::size_t at) { return data[i + at].get<std::size_t>(); };
        column = number(0) > 0 ? number(1) : column + number(1);
        line += number(0);
        in.seen.add(line, legend["tokenTypes"][number(3)].get<std::string>() + (number(4) != 0 ? "!" : "") + " " +
                              in.under(rangeOf(line, column, line, column + number(2))));
    }
}

void showNames(const Setting& in) {
    const Json definition = in.client.request("textDocument/definition", in.place());
    if (definition.is_null()) return in.seen.add(in.what.cursorLine, "nothing");
    in.seen.add(lineOf(definition["range"]), "definition " + in.under(definition["range"]));
    Json references = in.place();
    references["context"] = {{"includeDeclaration", false}};
    for (const Json& each : in.client.request("textDocument/references", references))
        in.seen.add(lineOf(each["range"]), "reference " + in.under(each["range"]));
    for (const Json& each : in.client.request("textDocument/documentHighlight", in.place()))
        if (each["kind"] == 3) in.seen.add(lineOf(each["range"]), "written");
}

// Each line after the edits, of those that changed.
void showEdit(const Setting& in, const Json& edit) {
    std::map<std::size_t, std::u16string> lines;
    Json edits = edit["changes"][someUri];
    std::reverse(edits.begin(), edits.end());
    for (const Json& each : edits) {
        const std::size_t line = lineOf(each["range"]);
        std::u16string& text = lines.try_emplace(line, utf16(in.what.lines[line])).first->second;
        const auto start = each["range"]["start"]["character"].get<std::size_t>();
        text.replace(start, each["range"]["end"]["character"].get<std::size_t>() - start,
                     utf16(each["newText"].get<std::string>()));
    }
    for (const auto& [line, text] : lines) in.seen.add(line, utf8(text));
}

// The new name stands in the case's title.
void showRename(const Setting& in) {
    Json params = in.place();
    params["newName"] = in.what.title.substr(in.what.title.find("to ") + 3);
    const Json answer = in.client.response(in.client.ask("textDocument/rename", params));
    if (answer.contains("error")) return in.seen.add(in.what.cursorLine, answer["error"]["message"].get<std::string>());
    showEdit(in, answer["result"]);
}

void showActions(const Setting& in) {
    Json params = in.document();
    params["range"] = rangeOf(in.what.cursorLine, in.what.cursor, in.what.cursorLine, in.what.cursor);
    params["context"] = {{"diagnostics", Json::array()}};
    std::size_t conversions = 0;
    for (const Json& action : in.client.request("textDocument/codeAction", params)) {
        const auto title = action["title"].get<std::string>();
        if (title.starts_with("Convert") && ++conversions > 2) continue;
        in.seen.add(in.what.cursorLine, title);
        showEdit(in, action["edit"]);
    }
    if (in.seen.lines()[in.what.cursorLine].empty()) in.seen.add(in.what.cursorLine, "nothing");
}

void showSymbols(const Setting& in) {
    const std::function<void(const Json&, const std::string&)> show = [&](const Json& symbols,
                                                                          const std::string& indent) {
        for (const Json& symbol : symbols) {
            in.seen.add(lineOf(symbol["range"]),
                        indent + std::to_string(symbol["kind"].get<int>()) + " " + symbol["name"].get<std::string>());
            if (symbol.contains("children")) show(symbol["children"], indent + ">");
        }
    };
    show(in.client.request("textDocument/documentSymbol", in.document()), "");
    for (const Json& range : in.client.request("textDocument/foldingRange", in.document()))
        in.seen.add(range["startLine"].get<std::size_t>(), "folds to " + std::to_string(range["endLine"].get<int>()));
}

void showLenses(const Setting& in) {
    for (const Json& lens : in.client.request("textDocument/codeLens", in.document()))
        in.seen.add(lineOf(lens["range"]), lens["command"]["title"].get<std::string>());
}

struct Feature {
    const char* file;
    void (*show)(const Setting& in);
};
void PrintTo(const Feature& feature, std::ostream* out) {
    *out << feature.file;
}

class LspFeature : public testing::TestWithParam<Feature> {};

TEST_P(LspFeature, showsWhatItsFileSays) {
    const auto cases = casesIn(std::string(VEMO_TEST_DATA_DIR) + "/lsp/features/" + GetParam().file + ".txt");
    EXPECT_FALSE(cases.empty());
    for (const LspCase& each : cases) {
        LspClient::Options options;
        std::string told = each.options.dump();
        if (const std::size_t at = told.find("EXAMPLES"); at != told.npos)
            told.replace(at, 8, VEMO_TEST_DATA_DIR "/../examples");
        options.initialization = Json::parse(told);
        LspClient client(options);
        client.initialize();
        client.open(someUri, each.text());
        Seen seen(each.lines.size());
        GetParam().show({client, each, seen});
        for (std::size_t i = 0; i < each.lines.size(); ++i)
            EXPECT_EQ(seen.lines()[i], each.expected[i]) << each.title << ": " << each.lines[i];
    }
}

INSTANTIATE_TEST_SUITE_P(All, LspFeature,
                         testing::Values(Feature{"hints", showHints}, Feature{"tooltips", showTooltips},
                                         Feature{"diagnostics", showDiagnostics}, Feature{"hover", showHover},
                                         Feature{"completion", showCompletions}, Feature{"tokens", showTokens},
                                         Feature{"names", showNames}, Feature{"rename", showRename},
                                         Feature{"actions", showActions}, Feature{"symbols", showSymbols},
                                         Feature{"lenses", showLenses}),
                         [](const auto& param) { return std::string(param.param.file); });

}  // namespace
}  // namespace vemo::test
