// SPDX-License-Identifier: MIT
#include "engine/engine_core.h"

#include "base/text.h"
#include "engine/line_maker.h"
#include "online/rates_file.h"
#include "scripting/extensions.h"

namespace vemo {

VemoEngine::Result resultOf(Calculator::MultilineResult calculated, std::shared_ptr<Context> context) {
    VemoEngine::Result result;
    result.context = std::move(context);
    result.lines.reserve(calculated.lines.size());
    for (LineResultPointer& line : calculated.lines) result.lines.push_back(LineMaker::make(std::move(line)));
    return result;
}

EngineCore::EngineCore(Environment environment, const std::shared_ptr<Executor>& main)
    : environment_(std::move(environment)), application_(newClient()) {
    if (!main) return;
    threads_ = std::make_unique<SchedulerThreads>(main);
    scheduler_ = *threads_;
}

EngineCore::Built EngineCore::buildCalculator(const Environment& environment, const VemoEngine::Config& config,
                                              const std::optional<Scheduler>& scheduler) {
    Built built{std::make_shared<Calculator>(config, environment, scheduler), {}};
    {
        const std::lock_guard lock(built.calculator->context().mutex());
        built.calculator->initialize();
    }
    built.extensions = built.calculator->loadExtensions(config.extensions);
    return built;
}

void EngineCore::buildWorker(const VemoEngine::Config& config, VemoEngine::WorkerThread thread) {
    const bool background = scheduler_ && thread == VemoEngine::WorkerThread::background;
    if (worker_) worker_->retire();
    worker_ = std::make_shared<VemoWorker>(scheduler_, !background);
    delivery_ = nullptr;
    if (!background) return adopt(worker_, buildCalculator(environment_, config, scheduler_));
    delivery_ = std::make_shared<Delivery>();
    // The task owns neither the engine nor the worker: they end on the main executor only.
    scheduler_->postBackground([environment = environment_, config, scheduler = *scheduler_, core = weak_from_this(),
                                delivery = std::weak_ptr(delivery_)] {
        auto built = buildCalculator(environment, config, scheduler);
        if (const auto waiting = delivery.lock()) {
            const std::lock_guard lock(waiting->mutex);
            waiting->built = std::move(built);
        }
        scheduler.postMain([core, delivery] {
            const auto engine = core.lock();
            const auto waiting = delivery.lock();
            if (!engine || !waiting || engine->delivery_ != waiting) return;
            engine->delivery_ = nullptr;
            std::unique_lock lock(waiting->mutex);
            auto ready = *std::exchange(waiting->built, std::nullopt);
            lock.unlock();
            engine->adopt(engine->worker_, std::move(ready));
        });
    });
}

void EngineCore::adopt(std::shared_ptr<VemoWorker> worker, Built built) {
    const auto self = shared_from_this();  // the delegate may destroy the engine
    built.calculator->setDelegate(weak_from_this());
    built.calculator->start(worker->onMain());
    worker->setCalculator(std::move(built.calculator));
    extensions_ = std::move(built.extensions);
    startUpLog_ = vemo::startUpLog(extensions_);
    tell(weak_from_this(), [this](VemoEngineDelegate& delegate) { delegate.engineLog(startUpLog_); });
    const auto clients = clients_;  // an answer that comes at once may bring others
    for (const auto& each : clients)
        if (const auto client = each.lock(); client && client->request) start(client);
    tell(weak_from_this(), [](VemoEngineDelegate& delegate) { delegate.engineInitialized(); });
}

std::shared_ptr<EngineClient> EngineCore::newClient() {
    auto client = std::make_shared<EngineClient>();
    std::erase_if(clients_, [](const auto& known) { return known.expired(); });
    clients_.push_back(client);
    return client;
}

void EngineCore::calculate(const std::shared_ptr<EngineClient>& client, std::shared_ptr<const std::u16string> text,
                           const Context& context, EngineRequest::Callback callback) {
    client->request =
        std::make_shared<EngineRequest>(EngineRequest{std::move(text), context.copyContext(), std::move(callback)});
    start(client);
}

void EngineCore::calculate(std::u16string_view text, const Context& context, VemoEngine::Callback callback) {
    calculate(
        application_, std::make_shared<const std::u16string>(text), context,
        [callback = std::move(callback)](Calculator::MultilineResult calculated, std::shared_ptr<Context> answered) {
            if (callback) callback(resultOf(std::move(calculated), std::move(answered)));
        });
}

void EngineCore::start(const std::shared_ptr<EngineClient>& client) {
    if (!calculator()) return;  // waits for the worker
    if (client->worker.lock() != worker_) {
        client->worker = worker_;
        client->slot = worker_->newSlot();
    }
    const auto request = client->request;
    // A request must not keep its own client alive.
    const auto wanted = [weak = std::weak_ptr(client), request] {
        const auto asking = weak.lock();
        return asking && asking->request == request;
    };
    worker_->calculate(client->slot, request->text, request->context,
                       [core = weak_from_this(), weak = std::weak_ptr(client), request, wanted](
                           Calculator::MultilineResult calculated, std::shared_ptr<Context> context) {
                           const auto engine = core.lock();
                           if (!engine || !wanted()) return;
                           engine->log(calculated, wanted);
                           if (!wanted()) return;  // the delegate that heard the log has asked for something else
                           weak.lock()->request = nullptr;
                           request->callback(std::move(calculated), std::move(context));
                       });
}

std::optional<VemoEngine::Result> EngineCore::calculateSync(std::u16string_view text, Context& context) {
    if (!worker_) return std::nullopt;
    const auto calculator = worker_->calculator();
    if (!calculator) return VemoEngine::Result{{}, std::make_shared<Context>()};
    Calculator::MultilineResult calculated;
    {
        const std::lock_guard lock(calculator->context().mutex());
        calculated = calculator->calculate(text, context);
    }
    const auto self = shared_from_this();  // who hears the log may destroy the engine
    log(calculated, [] { return true; });
    return resultOf(std::move(calculated), std::shared_ptr<Context>(std::shared_ptr<void>(), &context));
}

std::optional<std::u16string> EngineCore::readingOf(std::size_t line, std::u16string_view text,
                                                    const Context& context) const {
    const auto calculator = this->calculator();
    if (!calculator) return std::nullopt;
    Context document = context.copyContext();
    const std::lock_guard lock(calculator->context().mutex());
    return calculator->reading(text, document, line);
}

std::string EngineCore::takeRates(VemoEngine::RatesFile file, std::string_view json) {
    const auto calculator = this->calculator();
    if (!calculator) return "there is no worker yet";
    auto parsed = parseRates(json);
    if (!parsed) return parsed.failure().message;
    if (file == VemoEngine::RatesFile::currency)
        calculator->setCurrencyRates(*std::move(parsed));
    else
        calculator->setCryptoRates(*std::move(parsed));
    return "";
}

void EngineCore::close() {
    if (worker_) worker_->retire();
    worker_ = nullptr;
    for (const auto& each : clients_)
        if (const auto client = each.lock()) client->drop();
    delegate_.reset();
    if (threads_) threads_->close();
    delivery_ = nullptr;
}

void EngineCore::log(const Calculator::MultilineResult& calculated, const std::function<bool()>& wanted) {
    for (const LineResultPointer& line : calculated.logging) {
        if (!wanted()) return;
        tell(weak_from_this(),
             [&](VemoEngineDelegate& delegate) { delegate.engineLog(toUtf8(line->extensionsLog())); });
    }
}

void EngineCore::onMain(const std::function<void()>& task) const {
    if (scheduler_)
        scheduler_->postMain(task);
    else
        task();
}

void EngineCore::calculatorContextUpdated(const Context& context) {
    onMain([core = weak_from_this(), copy = std::make_shared<Context>(context.copyContext())] {
        tell(core, [&](VemoEngineDelegate& delegate) { delegate.engineContextUpdated(*copy); });
    });
}

void EngineCore::calculatorCryptoInitialized() {
    onMain([core = weak_from_this()] {
        tell(core, [](VemoEngineDelegate& delegate) { delegate.engineCryptoInitialized(); });
    });
}

void EngineCore::calculatorOnlineProblem(const OnlineProblem& problem) {
    onMain([core = weak_from_this(), problem] {
        tell(core, [&](VemoEngineDelegate& delegate) { delegate.engineOnlineProblem(problem); });
    });
}

}  // namespace vemo
