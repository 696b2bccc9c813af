// SPDX-License-Identifier: MIT
#include "vemo/engine.h"

#include "base/text.h"
#include "engine/calculator.h"
#include "engine/line_maker.h"
#include "engine/worker.h"
#include "online/rates_file.h"
#include "platform/scheduler.h"
#include "scanning/words/localizer.h"
#include "scripting/extensions.h"

namespace vemo {

namespace {

VemoEngine::Result resultOf(Calculator::MultilineResult calculated, std::shared_ptr<Context> context) {
    VemoEngine::Result result;
    result.context = std::move(context);
    result.lines.reserve(calculated.lines.size());
    for (LineResultPointer& line : calculated.lines) result.lines.push_back(LineMaker::make(std::move(line)));
    return result;
}

struct Request {
    std::shared_ptr<const std::u16string> text;
    Context context;
    VemoEngine::Callback callback;
};

struct Built {
    std::shared_ptr<Calculator> calculator;
    std::vector<Extension> extensions;
};

Built build(const Environment& environment, const VemoEngine::Config& config,
            const std::optional<Scheduler>& scheduler) {
    Built built{std::make_shared<Calculator>(config, environment, scheduler), {}};
    {
        const std::lock_guard lock(built.calculator->context().mutex());
        built.calculator->initialize();
    }
    built.extensions = built.calculator->loadExtensions(config.extensions);
    return built;
}

}  // namespace

// Tasks of the main executor hold this weakly: they may run when the engine is gone.
class EngineCore : public CalculatorDelegate, public std::enable_shared_from_this<EngineCore> {
public:
    EngineCore(Environment environment, const std::shared_ptr<Executor>& main) : environment_(std::move(environment)) {
        if (!main) return;
        threads_ = std::make_unique<SchedulerThreads>(main);
        scheduler_ = *threads_;
    }

    void setDelegate(std::weak_ptr<VemoEngineDelegate> delegate) { delegate_ = std::move(delegate); }

    void buildWorker(const VemoEngine::Config& config, VemoEngine::WorkerThread thread) {
        const bool background = scheduler_ && thread == VemoEngine::WorkerThread::background;
        if (worker_) worker_->retire();
        worker_ = std::make_shared<VemoWorker>(scheduler_, !background);
        if (!background) return adopt(worker_, build(environment_, config, scheduler_));
        // The task owns neither the engine nor the worker: they end on the main executor only.
        scheduler_->postBackground([environment = environment_, config, scheduler = *scheduler_,
                                    core = weak_from_this(), worker = std::weak_ptr(worker_)] {
            scheduler.postMain([core, worker, built = build(environment, config, scheduler)] {
                const auto engine = core.lock();
                const auto current = worker.lock();
                if (engine && current && engine->worker_ == current) engine->adopt(current, built);
            });
        });
    }

    void calculate(std::u16string_view text, const Context& context, VemoEngine::Callback callback) {
        request_ = std::make_shared<Request>(
            Request{std::make_shared<const std::u16string>(text), context.copyContext(), std::move(callback)});
        startRequest();
    }

    std::optional<VemoEngine::Result> calculateSync(std::u16string_view text, Context& context) {
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

    std::optional<std::u16string> readingOf(std::size_t line, std::u16string_view text, const Context& context) const {
        const auto calculator = worker_ ? worker_->calculator() : nullptr;
        if (!calculator) return std::nullopt;
        Context document = context.copyContext();
        const std::lock_guard lock(calculator->context().mutex());
        return calculator->reading(text, document, line);
    }

    void buildQuickTypeEngine(VemoEngine::WorkerThread thread,
                              std::function<void(std::shared_ptr<QuickTypeEngine>)> callback) {
        auto calculator = worker_ ? worker_->calculator() : nullptr;
        if (!calculator) return;
        if (!scheduler_ || thread == VemoEngine::WorkerThread::main)
            return callback(calculator->buildQuickTypeEngine());
        scheduler_->postBackground([calculator = std::move(calculator), scheduler = *scheduler_,
                                    core = weak_from_this(), callback = std::move(callback)] {
            scheduler.postMain([core, callback, built = calculator->buildQuickTypeEngine()] {
                if (core.lock()) callback(built);
            });
        });
    }

    std::optional<FormattedValue> format(const Value& value, const Context& context) const {
        const auto calculator = worker_ ? worker_->calculator() : nullptr;
        return calculator ? std::optional(calculator->formatted(value, context)) : std::nullopt;
    }

    VemoEngine::Pending pending() const {
        const auto calculator = worker_ ? worker_->calculator() : nullptr;
        return calculator ? calculator->pending() : VemoEngine::Pending();
    }

    std::string takeRates(VemoEngine::RatesFile file, std::string_view json) {
        const auto calculator = worker_ ? worker_->calculator() : nullptr;
        if (!calculator) return "there is no worker yet";
        auto parsed = parseRates(json);
        if (!parsed) return parsed.failure().message;
        if (file == VemoEngine::RatesFile::currency)
            calculator->setCurrencyRates(*std::move(parsed));
        else
            calculator->setCryptoRates(*std::move(parsed));
        return "";
    }

    const std::string& startUpLog() const { return startUpLog_; }
    const std::vector<Extension>& extensions() const { return extensions_; }

    // After this, nothing of the engine's runs off the main executor.
    void close() {
        if (worker_) worker_->retire();
        worker_ = nullptr;
        request_ = nullptr;
        delegate_.reset();
        if (threads_) threads_->close();
    }

    void calculatorContextUpdated(const Context& context) override {
        onMain([core = weak_from_this(), copy = std::make_shared<Context>(context.copyContext())] {
            tell(core, [&](VemoEngineDelegate& delegate) { delegate.engineContextUpdated(*copy); });
        });
    }

    void calculatorCryptoInitialized() override {
        onMain([core = weak_from_this()] {
            tell(core, [](VemoEngineDelegate& delegate) { delegate.engineCryptoInitialized(); });
        });
    }

    void calculatorOnlineProblem(const OnlineProblem& problem) override {
        onMain([core = weak_from_this(), problem] {
            tell(core, [&](VemoEngineDelegate& delegate) { delegate.engineOnlineProblem(problem); });
        });
    }

private:
    void onMain(const std::function<void()>& task) const {
        if (scheduler_)
            scheduler_->postMain(task);
        else
            task();
    }

    template <class Notify>
    static void tell(const std::weak_ptr<EngineCore>& core, Notify notify) {
        const auto engine = core.lock();
        const auto delegate = engine ? engine->delegate_.lock() : nullptr;
        if (delegate) notify(*delegate);
    }

    void adopt(std::shared_ptr<VemoWorker> worker, Built built) {
        const auto self = shared_from_this();  // the delegate may destroy the engine
        built.calculator->setDelegate(weak_from_this());
        built.calculator->start(worker->onMain());
        worker->setCalculator(std::move(built.calculator));
        extensions_ = std::move(built.extensions);
        startUpLog_ = vemo::startUpLog(extensions_);
        tell(weak_from_this(), [this](VemoEngineDelegate& delegate) { delegate.engineLog(startUpLog_); });
        if (request_) startRequest();
        tell(weak_from_this(), [](VemoEngineDelegate& delegate) { delegate.engineInitialized(); });
    }

    void startRequest() {
        if (!worker_ || !worker_->calculator()) return;  // waits for the worker
        const auto request = request_;
        worker_->calculate(request->text, request->context,
                           [core = weak_from_this(), request](Calculator::MultilineResult calculated,
                                                              std::shared_ptr<Context> context) {
                               const auto engine = core.lock();
                               if (!engine || engine->request_ != request) return;
                               engine->log(calculated, [&] { return engine->request_ == request; });
                               if (engine->request_ != request) return;  // replaced by who heard the log
                               engine->request_ = nullptr;
                               request->callback(resultOf(std::move(calculated), std::move(context)));
                           });
    }

    void log(const Calculator::MultilineResult& calculated, const std::function<bool()>& wanted) {
        for (const LineResultPointer& line : calculated.logging) {
            if (!wanted()) return;
            tell(weak_from_this(),
                 [&](VemoEngineDelegate& delegate) { delegate.engineLog(toUtf8(line->extensionsLog())); });
        }
    }

    Environment environment_;
    std::weak_ptr<VemoEngineDelegate> delegate_;
    // Nothing without a main executor: everything is done before a call returns then. Never changed: any thread may
    // ask.
    std::unique_ptr<SchedulerThreads> threads_;
    std::optional<Scheduler> scheduler_;
    std::shared_ptr<VemoWorker> worker_;
    std::string startUpLog_;
    std::vector<Extension> extensions_;
    std::shared_ptr<Request> request_;  // the latest one that is not answered
};

struct VemoEngine::State {
    std::shared_ptr<EngineCore> core;
};

VemoEngine::VemoEngine(Environment environment, std::shared_ptr<Executor> main)
    : state_(std::make_unique<State>(State{std::make_shared<EngineCore>(std::move(environment), main)})) {}

VemoEngine::~VemoEngine() {
    state_->core->close();
}

void VemoEngine::setDelegate(std::weak_ptr<VemoEngineDelegate> delegate) {
    state_->core->setDelegate(std::move(delegate));
}

void VemoEngine::buildVemoWorker(const Config& config, WorkerThread thread) {
    state_->core->buildWorker(config, thread);
}

void VemoEngine::calculate(std::u16string_view text, const Context& context, Callback callback) {
    state_->core->calculate(text, context, std::move(callback));
}

std::optional<VemoEngine::Result> VemoEngine::calculateSync(std::u16string_view text, Context& context) {
    return state_->core->calculateSync(text, context);
}

std::optional<std::u16string> VemoEngine::readingOf(std::size_t line, std::u16string_view text,
                                                    const Context& context) const {
    return state_->core->readingOf(line, text, context);
}

AttributedText VemoEngine::Result::Line::attributedText() const {
    return result_->attributedText();
}
FormattedValue VemoEngine::Result::Line::formattedResult() const {
    return result_->formattedValue();
}
QuickTypeData VemoEngine::Result::Line::quickTypeData() const {
    return result_->quickTypeData();
}
std::vector<Note> VemoEngine::Result::Line::notes() const {
    return result_->remarks().notes;
}
std::optional<Reason> VemoEngine::Result::Line::reason() const {
    return result_->remarks().reason;
}
Value VemoEngine::Result::Line::value() const {
    return result_->value();
}
std::u16string VemoEngine::Result::Line::extensionsLog() const {
    return std::u16string(result_->extensionsLog());
}

void VemoEngine::buildQuickTypeEngine(WorkerThread thread,
                                      std::function<void(std::shared_ptr<QuickTypeEngine>)> callback) {
    state_->core->buildQuickTypeEngine(thread, std::move(callback));
}

std::u16string VemoEngine::welcomeSample(std::string_view language) {
    return Localizer(language).translationOrBase(u"sample.welcome", u"Samples");
}

std::optional<FormattedValue> VemoEngine::format(const Value& value, const Context& context) const {
    return state_->core->format(value, context);
}

VemoEngine::Pending VemoEngine::pending() const {
    return state_->core->pending();
}

std::string VemoEngine::takeRates(RatesFile file, std::string_view json) {
    return state_->core->takeRates(file, json);
}

const std::string& VemoEngine::startUpLog() const {
    return state_->core->startUpLog();
}
const std::vector<Extension>& VemoEngine::extensions() const {
    return state_->core->extensions();
}

std::string_view VemoEngine::version() {
    return VEMO_VERSION;
}

std::u16string utf16(std::string_view utf8) {
    return toUtf16(utf8);
}
std::string utf8(std::u16string_view text) {
    return toUtf8(text);
}

}  // namespace vemo
