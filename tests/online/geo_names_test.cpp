// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <future>

#include "online/geo_names_manager.h"
#include "online/place_names.h"
#include "scanning/words/localizer.h"
#include "support/calculators.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

constexpr auto deadline = 60s;

TEST(PlaceNames, findCitiesInAnyCaseAndSpelling) {
    const Localizer localizer("de");
    const PlaceNames places(localizer, "de");
    const auto zone = [&](std::u16string_view name) { return utf8(places.zoneOf(name).value_or(u"none")); };
    EXPECT_EQ(zone(u"Tokyo"), "Asia/Tokyo");
    EXPECT_EQ(zone(u"TOKYO"), "Asia/Tokyo");
    EXPECT_EQ(zone(u"tokio"), "Asia/Tokyo");  // in German
    EXPECT_EQ(zone(u"New York"), "America/New_York");
    EXPECT_EQ(zone(u"new_york"), "America/New_York");
    EXPECT_EQ(zone(u"S\u00e3o Paulo"), "America/Sao_Paulo");
    EXPECT_EQ(zone(u"Sao Paulo"), "America/Sao_Paulo");
    EXPECT_EQ(zone(u"sa\u0303o-paulo"), "America/Sao_Paulo");
    EXPECT_EQ(zone(u"Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(zone(u"San Francisco"), "America/Los_Angeles");
    EXPECT_EQ(zone(u"Japan"), "Asia/Tokyo");
    for (const char16_t* name : {u"", u" ", u"foo", u"may", u"cm", u"est", u"utc", u"!", u"unknown"})
        EXPECT_EQ(zone(name), "none");
    EXPECT_EQ(zone(std::u16string(100000, u'a')), "none");
}

TEST(PlaceNames, workInLines) {
    EXPECT_EQ(result("time in Tokyo"), "10:00 PM");  // 13:00 UTC
    EXPECT_EQ(result("New York time"), "8:00 AM");
    EXPECT_EQ(result("time in los angeles"), "5:00 AM");
    EXPECT_EQ(result("5 in foo"), "5");  // no place: words as ever
    EXPECT_EQ(result("Coffee in Berlin $5"), "$5");
    // Names of words that mean other things alone.
    EXPECT_EQ(result("time in Port of Spain"), "9:00 AM");
    EXPECT_EQ(result("Port-au-Prince time"), "8:00 AM");
    EXPECT_EQ(result("time in St Louis + 1 h"), "8:00 AM");
    EXPECT_EQ(result("time in New York - London time"), "-5 h");
    EXPECT_EQ(result("time in Berlin time"), result("time in Berlin"));
    // The run covers the name alone.
    const auto calculator = newCalculator();
    Context context;
    const auto line = calculator->calculate(u"time in Tokyo // now", context).lines[0];
    std::vector<std::string> units;
    line->attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t) {
        if (type == RunType::unit) units.push_back(utf8(text));
    });
    EXPECT_THAT(units, ElementsAre("Tokyo"));
}

class Service : public testing::Test {
protected:
    // What the service says of a place; "none" for a place without a zone.
    std::string ask(const std::string& place) {
        std::mutex mutex;
        std::condition_variable answered;
        std::optional<std::string> answer;
        service->request(place, [&](std::optional<std::string> zone) {
            const std::lock_guard lock(mutex);
            answer = zone.value_or("none");
            answered.notify_all();
        });
        std::unique_lock lock(mutex);
        answered.wait_for(lock, deadline, [&] { return answer.has_value(); });
        return answer.value_or("no answer");
    }

    std::vector<std::string> messages() {
        const std::lock_guard lock(logging);
        return log;
    }

    TestServer server;
    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    std::mutex logging;
    std::vector<std::string> log;
    SchedulerThreads scheduler{loop};
    std::shared_ptr<GeoNamesService> service = std::make_shared<GeoNamesService>(
        scheduler, std::make_shared<HttpClient>(), server.url("/timezone"),
        [this](std::string_view message) {
            const std::lock_guard lock(logging);
            log.emplace_back(message);
        },
        nullptr, 1ms);
};

TEST_F(Service, asksForAnEncodedPlace) {
    server.on("/timezone?q=S%C3%A3o%20Paulo", {ok(" America/Sao_Paulo\r\n")});
    EXPECT_EQ(ask("S\u00e3o Paulo"), "America/Sao_Paulo");
    server.on("/timezone?q=a%26b", {ok(" \n\t")});
    EXPECT_EQ(ask("a&b"), "none");
    server.on("/timezone?q=Atlantis", {status(204)});
    EXPECT_EQ(ask("Atlantis"), "none");
    EXPECT_THAT(messages(), Contains("Request succeded for Atlantis: no time zone"));
    EXPECT_EQ(ask("missing"), "none");
    EXPECT_THAT(messages(), Contains("Request succeded, status code not expected: 404"));
}

TEST_F(Service, triesAgainWhileTheServerIsBusy) {
    server.on("/timezone?q=a", {status(503), status(503), ok("Asia/Tokyo")});
    EXPECT_EQ(ask("a"), "Asia/Tokyo");
    EXPECT_THAT(server.requests(), SizeIs(3));
    server.on("/timezone?q=b", {status(503)});
    EXPECT_EQ(ask("b"), "none");
    EXPECT_THAT(server.requests(), SizeIs(3 + 5));
}

TEST_F(Service, takesNoLongAnswer) {
    server.on("/timezone?q=a", {ok(std::string(100'000, 'x'))});
    EXPECT_EQ(ask("a"), "none");
    for (const std::string& message : messages()) EXPECT_LT(message.size(), 200u);
}

class Manager : public Service {
protected:
    // Both background threads wait until this is called.
    void holdBackground() {
        for (int i = 0; i < 2; ++i) scheduler.postBackground([held = held] { held.wait(); });
    }
    void letGo() { gate.set_value(); }

    // The look-up's answer; "none" for no zone.
    std::future<std::string> lookup(const std::u16string& place) {
        auto promise = std::make_shared<std::promise<std::string>>();
        manager->lookup(place, [promise](const auto& zone) { promise->set_value(zone ? utf8(*zone) : "none"); });
        return promise->get_future();
    }

    std::promise<void> gate;
    std::shared_future<void> held = gate.get_future().share();
    std::shared_ptr<GeoNamesManager> manager = std::make_shared<GeoNamesManager>(scheduler, service, PendingWork(), 0s);
};

TEST_F(Manager, dropsLookUpsOfEarlierCalculations) {
    server.on("/timezone?q=Tokyo", {ok("Asia/Tokyo")});
    holdBackground();
    std::vector<std::future<std::string>> answers;
    for (const char16_t* typed : {u"To", u"Toky", u"Tokyo"}) {
        manager->beginBatch();
        answers.push_back(lookup(typed));
    }
    letGo();
    ASSERT_EQ(answers.back().wait_for(deadline), std::future_status::ready);
    EXPECT_EQ(answers.back().get(), "Asia/Tokyo");
    EXPECT_THAT(server.requests(), ElementsAre("/timezone?q=Tokyo"));
    EXPECT_EQ(manager->known(u"Tokyo"), u"Asia/Tokyo");
    EXPECT_EQ(manager->known(u"Toky"), std::nullopt);
}

TEST_F(Manager, keepsTheLookUpsOfOtherAskers) {
    server.on("/timezone?q=Tokyo", {ok("Asia/Tokyo")});
    server.on("/timezone?q=Oslo", {ok("Europe/Oslo")});
    holdBackground();
    manager->beginBatch(1);
    auto tokyo = lookup(u"Tokyo");
    manager->beginBatch(2);
    lookup(u"Osl");
    manager->beginBatch(2);
    auto oslo = lookup(u"Oslo");
    letGo();
    ASSERT_EQ(tokyo.wait_for(deadline), std::future_status::ready);
    ASSERT_EQ(oslo.wait_for(deadline), std::future_status::ready);
    EXPECT_THAT(server.requests(), testing::UnorderedElementsAre("/timezone?q=Tokyo", "/timezone?q=Oslo"));
}

TEST_F(Manager, asksForAPlaceOnceAtATimeAndAgainAfterAFailure) {
    server.on("/timezone?q=Tokyo", {status(500), ok("Asia/Tokyo")});
    holdBackground();
    auto first = lookup(u"Tokyo");
    lookup(u"Tokyo");  // runs into the first
    auto second = lookup(u"Tokyo");
    letGo();
    ASSERT_EQ(first.wait_for(deadline), std::future_status::ready);
    EXPECT_EQ(first.get(), "none");
    EXPECT_THAT(server.requests(), SizeIs(1));
    EXPECT_EQ(manager->known(u"Tokyo"), std::nullopt);  // believed for no time at all
    auto third = lookup(u"Tokyo");
    ASSERT_EQ(third.wait_for(deadline), std::future_status::ready);
    EXPECT_EQ(third.get(), "Asia/Tokyo");
}

// The whole engine: a place is an error until its zone is known, then the document is told to calculate again.
class EngineWithAPlaceServer : public testing::Test {
protected:
    struct Application : VemoEngineDelegate {
        void engineContextUpdated(const Context&) override { ++updates; }
        void engineOnlineProblem(const OnlineProblem& problem) override {
            problems.push_back(problem.source + ": " + problem.message);
        }
        int updates = 0;
        std::vector<std::string> problems;
    };

    EngineWithAPlaceServer() {
        engine.setDelegate(application);
        engine.buildVemoWorker(VemoEngine::Config(), VemoEngine::WorkerThread::background);
    }
    Environment environment() const {
        Environment environment = fixedEnvironment();
        environment.sources.timeZones = server.url("/timezone");
        return environment;
    }
    std::vector<std::string> answer(std::u16string_view text) {
        std::optional<std::vector<std::string>> texts;
        engine.calculate(text, Context(), [&](VemoEngine::Result result) {
            texts.emplace();
            for (const auto& line : result.lines)
                texts->push_back(plainSpaces(utf8(line.formattedResult().regular.value_or(u""))));
            loop->stop();
        });
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (!texts && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
        return texts.value_or(std::vector<std::string>());
    }
    // The answer once nothing is on its way any more.
    std::vector<std::string> settled(std::u16string_view text) {
        answer(text);
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (engine.pending().places && std::chrono::steady_clock::now() < end) loop->runFor(1ms);
        loop->poll();
        return answer(text);
    }

    TestServer server;
    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    const std::shared_ptr<Application> application = std::make_shared<Application>();
    VemoEngine engine{environment(), loop};
};

TEST_F(EngineWithAPlaceServer, resolvesPlacesForTheNextCalculation) {
    server.on("/timezone?q=Tokyo", {ok("Asia/Tokyo")});
    server.on("/timezone?q=Atlantis", {ok("Nowhere/Atlantis")});
    const std::u16string text = u"time in Tokyo\ntime in Atlantis\n1 + 1";
    EXPECT_THAT(answer(text), ElementsAre("", "", "2"));
    EXPECT_THAT(settled(text), ElementsAre("10:00 PM", "", "2"));
    EXPECT_GE(application->updates, 1);
    EXPECT_TRUE(application->problems.empty());
}

TEST_F(EngineWithAPlaceServer, asksForWhatStandsBesideATimeOnly) {
    EXPECT_THAT(settled(u"eggs in basket $5\n5 in foo\n2 + 3 in secret\nsqrt 16 in private"),
                ElementsAre("$5", "5", "5", "4"));
    EXPECT_THAT(server.requests(), SizeIs(0));
}

TEST_F(EngineWithAPlaceServer, fallsBackToTheBuiltInPlaces) {
    server.on("/timezone?q=Tokyo", {status(204)});
    server.on("/timezone?q=Paris", {status(500)});
    EXPECT_THAT(settled(u"time in Tokyo\nParis time"), ElementsAre("10:00 PM", "2:00 PM"));
    EXPECT_THAT(application->problems, ElementsAre("Paris: answered with status 500"));
}

// The line's result is known by then, but not the answer to its look-up.
TEST(Calculator, looksUpAgainWhatANewerCalculationDropped) {
    TestServer server;
    server.on("/timezone?q=Tokyo", {ok("Asia/Tokyo")});
    const auto loop = std::make_shared<RunLoop>();
    SchedulerThreads scheduler(loop);
    std::promise<void> gate;
    const std::shared_future<void> held = gate.get_future().share();
    for (int i = 0; i < 2; ++i) scheduler.postBackground([held] { held.wait(); });
    Environment environment = fixedEnvironment();
    environment.sources.timeZones = server.url("/timezone");
    const auto calculator = std::make_shared<Calculator>(Calculator::Config(), environment, scheduler);
    calculator->initialize();
    const auto answer = [&] {
        const std::lock_guard lock(calculator->context().mutex());
        Context context;
        return plainSpaces(
            utf8(calculator->calculate(u"time in Tokyo", context).lines[0]->formattedValue().regular.value_or(u"")));
    };
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(answer(), "");  // from the cache; the first look-up is void now
    gate.set_value();
    const auto end = std::chrono::steady_clock::now() + deadline;
    std::string latest;
    while ((latest = answer()).empty() && std::chrono::steady_clock::now() < end) loop->runFor(1ms);
    EXPECT_EQ(latest, "10:00 PM");
}

}  // namespace
}  // namespace vemo::test
