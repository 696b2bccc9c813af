// SPDX-License-Identifier: MIT
// Documents that are edited: the server's text is the client's, and what it tells of it is what an engine says.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <random>

#include "lsp/client.h"
#include "lsp/text_buffer.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using lsp::Encoding;
using lsp::Position;

// A text as an editor has it: a list of lines with their ends, found anew each time.
struct PlainText {
    std::u16string text;

    std::vector<std::u16string> lines() const {
        std::vector<std::u16string> result{u""};
        for (std::size_t i = 0; i < text.size(); ++i) {
            result.back() += text[i];
            const bool pair = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
            if ((text[i] == u'\n' || text[i] == u'\r') && !pair) result.emplace_back();
        }
        return result;
    }
    Position positionOf(std::size_t offset, Encoding encoding) const {
        std::size_t line = 0, start = 0;
        for (const std::u16string& each : lines()) {
            if (offset < start + each.size() || start + each.size() == text.size()) {
                // Between the two of an end there is no place.
                std::u16string before = each.substr(0, offset - start);
                while (before.ends_with(u'\r') || before.ends_with(u'\n')) before.pop_back();
                if (offset == text.size() && start + each.size() == offset &&
                    (each.ends_with(u'\n') || each.ends_with(u'\r')))
                    return {line + 1, 0};
                return {line, encoding == Encoding::utf8 ? utf8(before).size() : before.size()};
            }
            start += each.size();
            ++line;
        }
        return {line, 0};
    }
};

bool isBoundary(const std::u16string& text, std::size_t at) {
    const bool inPair = at > 0 && at < text.size() && text[at] >= 0xdc00 && text[at] < 0xe000;
    const bool inEnd = at > 0 && at < text.size() && text[at - 1] == u'\r' && text[at] == u'\n';
    return !inPair && !inEnd;
}

const std::u16string pieces[] = {u"1",       u"2 + 3", u"\n",    u"\r\n",   u"\r",     u"😀", u"e\u0301",    u"ü",
                                 u"a = 4\n", u"a ",    u"sum\n", u"\u2028", u"\u0085", u"",  u"10 km in m", u"文"};

struct RandomEdit {
    std::size_t start, end;
    std::u16string replacement;
};

template <class Random>
RandomEdit randomEdit(const std::u16string& text, Random random) {
    std::size_t start = random(text.size() + 1), end = std::min(text.size(), start + random(6));
    while (!isBoundary(text, start)) --start;
    while (!isBoundary(text, end)) ++end;
    std::u16string replacement;
    for (std::size_t i = random(4); i > 0; --i) replacement += pieces[random(std::size(pieces))];
    return {start, end, replacement};
}

RC_GTEST_PROP(LspTextProperty, keepsTheLinesOfAText, ()) {
    const auto random = [](std::size_t below) { return *rc::gen::inRange<std::size_t>(0, below); };
    PlainText plain;
    lsp::TextBuffer buffer;
    for (int i = 0; i < 30; ++i) {
        const RandomEdit edit = randomEdit(plain.text, random);
        const auto encoding = i % 2 == 0 ? Encoding::utf16 : Encoding::utf8;
        const std::size_t start = buffer.offsetOf(plain.positionOf(edit.start, encoding), encoding);
        const std::size_t end = buffer.offsetOf(plain.positionOf(edit.end, encoding), encoding);
        RC_ASSERT(start == edit.start);
        RC_ASSERT(end == edit.end);
        buffer.replace(start, end - start, edit.replacement);
        plain.text.replace(start, end - start, edit.replacement);
        RC_ASSERT(buffer.text() == plain.text);
        std::size_t line = 0;
        for (std::u16string each : plain.lines()) {
            while (each.ends_with(u'\n') || each.ends_with(u'\r')) each.pop_back();
            RC_ASSERT(std::u16string(buffer.line(line++)) == each);
        }
        RC_ASSERT(buffer.lineCount() == line);
    }
}

Json changeOf(const PlainText& plain, const RandomEdit& edit, Encoding encoding) {
    const Position start = plain.positionOf(edit.start, encoding), end = plain.positionOf(edit.end, encoding);
    return {{"range", rangeOf(start.line, start.character, end.line, end.character)}, {"text", utf8(edit.replacement)}};
}

// By line, as an engine of its own says.
std::vector<std::pair<std::size_t, std::string>> resultsOf(std::u16string text) {
    for (char16_t& unit : text)
        if (unit == u'\u2028' || unit == u'\u0085') unit = u' ';
    static VemoEngine& engine = *[] {
        auto* made = new VemoEngine(fixedEnvironment());
        made->buildVemoWorker();
        return made;
    }();
    Context context;
    const auto result = engine.calculateSync(text, context);
    std::vector<std::pair<std::size_t, std::string>> all;
    for (std::size_t i = 0; i < result->lines.size(); ++i)
        if (const auto shown = result->lines[i].formattedResult().regular) all.emplace_back(i, utf8(*shown));
    return all;
}

std::vector<std::pair<std::size_t, std::string>> shown(const Json& hints) {
    std::vector<std::pair<std::size_t, std::string>> all;
    for (const Json& hint : hints)
        all.emplace_back(hint["position"]["line"].get<std::size_t>(), hint["label"].get<std::string>());
    return all;
}

TEST(LspEdits, leaveTheTextOfTheClient) {
    for (const bool utf8Positions : {false, true}) {
        LspClient::Options options;
        options.utf8 = utf8Positions;
        LspClient client(options);
        client.initialize();
        const auto encoding = utf8Positions ? Encoding::utf8 : Encoding::utf16;
        PlainText plain{u"1 + 1\r\n2 😀\r\nlast"};
        client.open(someUri, utf8(plain.text));
        std::mt19937 generator(utf8Positions ? 1 : 2);
        const auto random = [&](std::size_t below) { return generator() % below; };
        for (int version = 2; version < 400; ++version) {
            Json changes = Json::array();
            for (std::size_t edits = 1 + random(3); edits > 0; --edits) {
                const RandomEdit edit = randomEdit(plain.text, random);
                changes.push_back(changeOf(plain, edit, encoding));
                plain.text.replace(edit.start, edit.end - edit.start, edit.replacement);
            }
            client.change(someUri, changes, version);
            ASSERT_EQ(client.request("workspace/executeCommand", {{"command", "vemo.text"}, {"arguments", {someUri}}}),
                      utf8(plain.text));
            if (version % 5 != 0) continue;
            ASSERT_EQ(shown(client.hints(someUri)), resultsOf(plain.text)) << utf8(plain.text);
        }
    }
}

TEST(LspEdits, changeTokensAsTheDifferenceSays) {
    LspClient client;
    client.initialize();
    PlainText plain{u"a = 3\n# head\n2 * a // c"};
    client.open(someUri, utf8(plain.text));
    const Json document{{"textDocument", documentNamed(someUri)}};
    Json first = client.request("textDocument/semanticTokens/full", document);
    auto data = first["data"].get<std::vector<int>>();
    std::string id = first["resultId"];
    std::mt19937 generator(3);
    for (int version = 2; version < 100; ++version) {
        const RandomEdit edit = randomEdit(plain.text, [&](std::size_t below) { return generator() % below; });
        client.change(someUri, Json::array({changeOf(plain, edit, Encoding::utf16)}), version);
        plain.text.replace(edit.start, edit.end - edit.start, edit.replacement);
        Json asking = document;
        asking["previousResultId"] = id;
        const Json delta = client.request("textDocument/semanticTokens/full/delta", asking);
        for (const Json& each : delta["edits"]) {
            const auto start = data.begin() + each["start"].get<int>();
            const auto inserted = each["data"].get<std::vector<int>>();
            data.insert(data.erase(start, start + each["deleteCount"].get<int>()), inserted.begin(), inserted.end());
        }
        // What one asks for without an earlier answer is the whole.
        asking["previousResultId"] = "unknown";
        const Json whole = client.request("textDocument/semanticTokens/full/delta", asking);
        id = whole["resultId"];
        ASSERT_EQ(whole["data"].get<std::vector<int>>(), data);
    }
}

std::string longText(std::size_t lines) {
    std::string text;
    for (std::size_t i = 0; i < lines; ++i)
        text += "item " + std::to_string(i) + ": " + std::to_string(i) + " * 3 + 1\n";
    return text;
}

std::vector<std::string> traces(LspClient& client, std::chrono::milliseconds atMost) {
    std::vector<std::string> all;
    while (const auto told = client.nextOf("$/logTrace", atMost)) all.push_back((*told)["params"]["message"]);
    return all;
}

TEST(LspEdits, inARowAreCalculatedOnce) {
    LspClient client;
    client.initialize();
    client.open(someUri, longText(1000));
    client.hints(someUri, 1);
    client.notify("$/setTrace", {{"value", "messages"}});
    std::string bytes;
    for (int i = 0; i < 100; ++i) {
        const Json change{{"range", rangeOf(0, 8, 0, i == 0 ? 8 : 9)}, {"text", std::to_string(i % 10)}};
        bytes += LspClient::framed(Json{
            {"jsonrpc", "2.0"},
            {"method", "textDocument/didChange"},
            {"params",
             {{"textDocument", {{"uri", someUri}, {"version", i + 2}}}, {"contentChanges", Json::array({change})}}}}
                                       .dump());
    }
    ASSERT_LT(bytes.size(), std::size_t{1} << 16);  // of one piece for the pipe
    client.sendBytes(bytes);
    EXPECT_EQ(client.hints(someUri, 1)[0]["label"], "271");
    EXPECT_EQ(traces(client, 100ms),
              std::vector<std::string>{"calculated " + someUri + " version 101, lines told anew: 1"});
}

TEST(LspEdits, ofTwoLongDocumentsAtOnceAreAllAnswered) {
    constexpr std::size_t lines = 10000;
    const std::string uris[] = {"file:///one", "file:///two"};
    LspClient client;
    client.initialize();
    PlainText texts[] = {{utf16(longText(lines))}, {utf16(longText(lines) + "a = 5\n")}};
    for (int i : {0, 1}) client.open(uris[i], utf8(texts[i].text));
    std::mt19937 generator(5);
    int version = 2;
    for (int round = 0; round < 10; ++round) {
        int last[2];
        for (int burst = 0; burst < 6; ++burst) {
            const int i = burst % 2;
            const std::size_t line = 1 + generator() % (lines - 1);
            const std::string label = "item " + std::to_string(line) + ": ";
            const std::size_t start = texts[i].text.find(utf16("\n" + label)) + 1 + label.size();
            client.change(uris[i],
                          Json::array({{{"range", rangeOf(line, label.size(), line, label.size())}, {"text", "1"}}}),
                          version++);
            texts[i].text.insert(start, u"1");
            last[i] = client.ask("textDocument/inlayHint",
                                 {{"textDocument", documentNamed(uris[i])}, {"range", rangeOf(0, 0, lines + 1, 0)}});
        }
        for (int i : {0, 1}) ASSERT_EQ(shown(client.response(last[i])["result"]), resultsOf(texts[i].text));
    }
}

}  // namespace
}  // namespace vemo::test
