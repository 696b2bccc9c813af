// SPDX-License-Identifier: MIT
#include "c/host.h"

#include <algorithm>
#include <chrono>
#include <exception>

#include "c/failure.h"
#include "platform/signals_blocked.h"
#include "session/online.h"

namespace vemo::c {

namespace {

constexpr std::chrono::milliseconds step{5};  // between looks at what is being fetched

constexpr const char* inCallback = "this can't be done in a callback, which would wait for itself";
constexpr const char* destroyed = "the engine is destroyed";

// A task that another thread waits for.
struct Errand {
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    std::optional<Refusal> refusal;
};

std::optional<Refusal> refusalOf(const std::function<void()>& task) {
    try {
        task();
        return std::nullopt;
    } catch (const Refusal& refusal) {
        return refusal;
    } catch (const std::bad_alloc&) {
        return Refusal{VEMO_NO_MEMORY, "there is no memory left"};
    } catch (const std::exception& error) {
        return Refusal{VEMO_FAILED, error.what()};
    }
}

}  // namespace

// Hears the engine, on its thread.
class Host::Listener : public VemoEngineDelegate {
public:
    explicit Listener(Host& host) : host_(host) {}

    void engineInitialized() override {
        const std::lock_guard lock(host_.mutex_);
        host_.ready_ = true;
        host_.ownThread_ = std::this_thread::get_id();
        host_.startUpLog_ = host_.engine_->startUpLog();
        host_.changed_.notify_all();
    }
    void engineContextUpdated(const Context&) override { host_.contextChanged(); }
    void engineCryptoInitialized() override {
        host_.completions_ = nullptr;
        host_.contextChanged();
    }
    void engineOnlineProblem(const OnlineProblem& problem) override {
        const std::lock_guard lock(host_.mutex_);
        const std::string text = session::problemText(problem);
        if (host_.problems_.find(text) != std::string::npos) return;
        host_.problems_ += (host_.problems_.empty() ? "" : "; ") + text;
    }

private:
    Host& host_;
};

Host::Host(const vemo_options& options) : precision_(options.precision) {
    const SignalsBlocked blocked;
    thread_ = std::thread([this, options] { live(options); });
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return ready_ || !failure_.empty(); });
    if (ready_) return;
    lock.unlock();
    thread_.join();
    throw Refusal{VEMO_FAILED, failure_};
}

Host::~Host() {
    if (thread_.joinable()) close();
}

void Host::live(const vemo_options& options) {
    const auto refusal = refusalOf([&] {
        engine_ = std::make_unique<VemoEngine>(options.environment, loop_);
        listener_ = std::make_shared<Listener>(*this);
        engine_->setDelegate(listener_);
        VemoEngine::Config config;
        config.extensions = options.extensions;
        engine_->buildVemoWorker(config, VemoEngine::WorkerThread::background);
        loop_->run();
    });
    for (const auto& each : documents_) endHere(*each);
    documents_.clear();
    engine_ = nullptr;
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        if (refusal) failure_ = refusal->message;
        changed_.notify_all();
    }
    // Others may wait for what they posted before a failure ended the loop.
    while (refusal && refusalOf([this] { loop_->poll(); })) {
    }
}

void Host::close() {
    if (isOwnThread()) throw Refusal{VEMO_IN_CALLBACK, inCallback};
    {
        const std::lock_guard lock(mutex_);
        // What was posted before has run by then, so that nobody waits for it.
        if (!closed_) loop_->post([this] { loop_->stop(); });
        closed_ = true;
    }
    thread_.join();
}

void Host::post(std::function<void()> task) {
    const std::lock_guard lock(mutex_);
    if (closed_) throw Refusal{VEMO_CLOSED, destroyed};
    loop_->post(std::move(task));
}

void Host::run(const std::function<void(VemoEngine&)>& task) {
    if (isOwnThread()) {
        if (!engine_) throw Refusal{VEMO_CLOSED, destroyed};
        return task(*engine_);
    }
    const auto errand = std::make_shared<Errand>();
    post([this, &task, errand] {
        auto refusal = refusalOf([&] {
            if (!engine_) throw Refusal{VEMO_CLOSED, destroyed};
            task(*engine_);
        });
        const std::lock_guard lock(errand->mutex);
        errand->refusal = std::move(refusal);
        errand->isDone = true;
        errand->done.notify_all();
    });
    std::unique_lock lock(errand->mutex);
    errand->done.wait(lock, [&] { return errand->isDone; });
    if (errand->refusal) throw *errand->refusal;
}

Context Host::settings() const {
    Context context;
    context.setPrecision(precision_);
    return context;
}

VemoEngine::Result Host::calculate(std::u16string_view text) {
    return ask<VemoEngine::Result>([&](VemoEngine& engine) {
        const auto context = std::make_shared<Context>(settings());
        auto result = engine.calculateSync(text, *context);
        if (!result) throw Refusal{VEMO_CLOSED, destroyed};
        result->context = context;  // which the result holds from now on
        return *std::move(result);
    });
}

std::optional<std::u16string> Host::readingOf(std::size_t line, std::u16string_view text) {
    return ask<std::optional<std::u16string>>(
        [&](VemoEngine& engine) { return engine.readingOf(line, text, settings()); });
}

void Host::takeRates(VemoEngine::RatesFile kind, std::string_view json) {
    run([&](VemoEngine& engine) {
        const std::string problem = engine.takeRates(kind, json);
        if (!problem.empty()) throw Refusal{VEMO_UNUSABLE, problem};
        completions_ = nullptr;
    });
}

vemo_status Host::wait(std::chrono::milliseconds atMost, std::string& problem) {
    if (isOwnThread()) throw Refusal{VEMO_IN_CALLBACK, inCallback};
    const auto end = std::chrono::steady_clock::now() + atMost;
    const auto isPending = [&] {
        return ask<bool>([](VemoEngine& engine) {
            const auto pending = engine.pending();
            return pending.rates || pending.places;
        });
    };
    bool pending = isPending();
    while (pending && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(step);
        pending = isPending();
    }
    run([](VemoEngine&) {});  // what came of it has been told by now
    const std::lock_guard lock(mutex_);
    problem = std::exchange(problems_, {});
    if (!problem.empty()) return VEMO_NOT_FETCHED;
    if (!pending) return VEMO_OK;
    problem = "not everything came in time";
    return VEMO_TIMED_OUT;
}

const Completions& Host::completions(VemoEngine& engine) {
    if (!completions_)
        engine.buildCompletions(VemoEngine::WorkerThread::main, [this](auto built) { completions_ = built; });
    if (!completions_) throw Refusal{VEMO_FAILED, "there are no completions"};
    return *completions_;
}

}  // namespace vemo::c
