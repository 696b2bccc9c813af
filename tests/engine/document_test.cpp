// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/calculators.h"
#include "vemo/documents.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using Answer = std::shared_ptr<const VemoDocument::Answer>;
using Change = VemoDocument::LineChange;

VemoEngine::Config quiet() {
    VemoEngine::Config config;
    config.testMode = true;
    return config;
}

std::string shown(const VemoEngine::Result::Line& line) {
    return utf8(line.attributedText().compoundString()) + "=" + utf8(line.formattedResult().regular.value_or(u""));
}

std::string shown(const VemoEngine::Result& result) {
    std::string all;
    for (const auto& line : result.lines) all += shown(line) + ";";
    return all;
}

std::u16string longDocument(std::size_t lines) {
    std::u16string text;
    for (std::size_t i = 0; i < lines; ++i) text += utf16(std::to_string(i) + " * 3 + (7 - 2)\n");
    return text;
}

class EditedDocuments : public testing::Test {
protected:
    EditedDocuments() { engine->buildVemoWorker(quiet(), VemoEngine::WorkerThread::background); }

    void ask(VemoDocument& document, const std::string& name) {
        document.calculate([this, name](const Answer& answer) {
            events.push_back(name + std::to_string(answer->version) + ":" +
                             (answer->result.lines.size() > 3 ? "" : shown(answer->result)));
            if (--awaited == 0) loop->stop();
        });
    }
    void await(int answers) {
        awaited = answers;
        loop->runFor(60s);
        loop->runFor(10ms);  // none comes beside them
    }

    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    std::unique_ptr<VemoEngine> engine = std::make_unique<VemoEngine>(fixedEnvironment(), loop);
    std::vector<std::string> events;
    int awaited = 0;
};

TEST_F(EditedDocuments, doNotCancelEachOther) {
    VemoDocument first(*engine, longDocument(5000)), second(*engine, u"2", 7);
    ask(second, "second");  // when it is answered, the worker is there
    await(1);
    events.clear();
    std::vector<std::unique_ptr<VemoDocument>> others;
    ask(first, "first");
    ask(second, "second");
    for (int i = 0; i < 3; ++i) {
        others.push_back(std::make_unique<VemoDocument>(*engine, u"1 + 1", i));
        ask(*others.back(), "other");
    }
    engine->calculate(u"4", Context(), [&](VemoEngine::Result result) { events.push_back("engine:" + shown(result)); });
    await(5);
    EXPECT_THAT(events, ElementsAre("first0:", "second7:2=2;", "other0:1 + 1=2;", "other1:1 + 1=2;", "other2:1 + 1=2;",
                                    "engine:4=4;"));
    EXPECT_FALSE(first.isCalculating());
}

TEST_F(EditedDocuments, answerOnlyTheLatestOfTheirOwnRequests) {
    VemoDocument first(*engine, u"0 + 0"), second(*engine, u"5");
    for (int i = 1; i <= 1000; ++i) {
        first.edit(0, 1, std::u16string(1, static_cast<char16_t>(u'0' + i % 10)), i);
        ask(first, "first");
        if (i == 500) ask(second, "second");
    }
    await(2);
    EXPECT_THAT(events, testing::UnorderedElementsAre("first1000:0 + 0=0;", "second0:5=5;"));
    // Closed, one drops its work, in both of its stages.
    ask(first, "first");
    first.close();
    ask(second, "second");
    {
        VemoDocument third(*engine, longDocument(20000));
        ask(third, "third");
    }
    await(1);
    EXPECT_EQ(events.back(), "second0:5=5;");
    EXPECT_EQ(events.size(), 3u);
}

TEST_F(EditedDocuments, waitForTheWorkerAndMoveToTheNext) {
    engine = std::make_unique<VemoEngine>(fixedEnvironment(), loop);
    VemoDocument early(*engine, u"1 + 2"), late(*engine, longDocument(3000));
    ask(early, "early");
    engine->buildVemoWorker(quiet(), VemoEngine::WorkerThread::background);
    ask(late, "late");
    engine->buildVemoWorker(quiet(), VemoEngine::WorkerThread::main);
    await(2);
    EXPECT_THAT(events, ElementsAre("early0:1 + 2=3;", "late0:"));
    ask(early, "early");
    engine = nullptr;
    early.edit(0, 1, u"2", 1);
    ask(early, "early");
    loop->runFor(10ms);
    EXPECT_EQ(events.size(), 2u);
    EXPECT_EQ(early.text(), u"2 + 2");
}

// The lines that answers tell as changed, carried over from one to the next.
class Follower {
public:
    void take(const Answer& answer) {
        for (const Change& change : answer->changes) {
            const auto at = lines.begin() + static_cast<std::ptrdiff_t>(change.first);
            lines.erase(at, at + static_cast<std::ptrdiff_t>(change.removed));
            for (std::size_t i = 0; i < change.inserted; ++i)
                lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(change.first + i),
                             shown(answer->result.lines[change.first + i]));
        }
        changes = answer->changes;
    }

    std::vector<std::string> lines;
    std::vector<Change> changes;
};

TEST(DocumentWithoutALoop, tellsWhichLinesChanged) {
    VemoEngine engine(fixedEnvironment());
    engine.buildVemoWorker();
    VemoDocument document(engine, u"a = 1\n2\na + 3\n4\nsum");
    Follower follower;
    const auto calculate = [&] { document.calculate([&](const Answer& answer) { follower.take(answer); }); };
    const auto edit = [&](std::u16string_view replaced, std::u16string_view replacement) {
        document.edit(document.text().find(replaced), replaced.size(), replacement, document.version() + 1);
    };
    calculate();
    EXPECT_THAT(follower.changes, ElementsAre(Change{0, 0, 5}));
    calculate();
    EXPECT_THAT(follower.changes, ElementsAre());
    edit(u"1", u"5");
    calculate();
    EXPECT_THAT(follower.changes, ElementsAre(Change{0, 1, 1}, Change{2, 1, 1}, Change{4, 1, 1}));
    edit(u"2\n", u"0\n2\n");  // beside an insertion, what depends on nothing stays
    calculate();
    EXPECT_THAT(follower.changes, ElementsAre(Change{1, 0, 1}));
    edit(u"4\n", u"");
    edit(u"5", u"6");
    calculate();
    EXPECT_EQ(follower.lines, (std::vector<std::string>{"a = 6=6", "0=0", "2=2", "a + 3=9", "sum=17"}));
    Context precise;
    precise.setPrecision(5);
    document.setContext(precise);
    edit(u"2", u"1/3");
    calculate();
    EXPECT_EQ(follower.lines[2], "1/3=0.33333");
    EXPECT_EQ(document.latest()->version, document.version());
    EXPECT_EQ(document.readingOf(3), u"6 + 3");
}

RC_GTEST_PROP(DocumentProperty, changesLeadFromEachAnswerToTheNext, ()) {
    static VemoEngine& engine = *[] {
        auto* made = new VemoEngine(fixedEnvironment());
        made->buildVemoWorker();
        return made;
    }();
    constexpr std::u16string_view pieces[] = {u"1",  u"2\n", u"a = 7\n", u"a",     u" + ",
                                              u"\r", u"\n",  u"\r\n",    u"sum\n", u"prev"};
    VemoDocument document(engine, u"1\n2\n3\n");
    Follower follower;
    for (int round = 0; round < 12; ++round) {
        for (int edits = *rc::gen::inRange(0, 3); edits > 0; --edits) {
            const auto size = document.text().size();
            document.edit(*rc::gen::inRange<std::size_t>(0, size + 2), *rc::gen::inRange<std::size_t>(0, 6),
                          pieces[*rc::gen::inRange<std::size_t>(0, std::size(pieces))], round);
        }
        document.calculate([&](const Answer& answer) { follower.take(answer); });
        Context context;
        std::vector<std::string> expected;
        const auto result = engine.calculateSync(document.text(), context);
        for (const auto& line : result->lines) expected.push_back(shown(line));
        RC_ASSERT(follower.lines == expected);
    }
}

}  // namespace
}  // namespace vemo::test
