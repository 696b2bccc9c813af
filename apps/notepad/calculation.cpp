// SPDX-License-Identifier: MIT
#include "notepad/calculation.h"

#include "notepad/qt_executor.h"

namespace vemo::notepad {

// Hears the engine; every call comes on Qt's main thread.
class Calculation::Listener : public VemoEngineDelegate {
public:
    explicit Listener(Calculation& calculation) : calculation_(calculation) {}

    void engineInitialized() override {
        calculation_.ready_ = true;
        calculation_.learnVocabulary();
        Q_EMIT calculation_.ready();
    }
    void engineContextUpdated(const Context&) override { Q_EMIT calculation_.contextChanged(); }
    void engineCryptoInitialized() override {
        calculation_.learnVocabulary();
        Q_EMIT calculation_.contextChanged();
    }
    void engineLog(std::string_view text) override {
        Q_EMIT calculation_.logged(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    void engineOnlineProblem(const OnlineProblem& problem) override { Q_EMIT calculation_.onlineProblem(problem); }

private:
    Calculation& calculation_;
};

Calculation::Calculation(QObject* parent) : QObject(parent), executor_(std::make_shared<QtExecutor>()) {}

Calculation::~Calculation() = default;

void Calculation::start(const Settings& settings) {
    settings_ = settings;
    ready_ = false;
    vocabulary_ = nullptr;
    engine_ = std::make_unique<VemoEngine>(settings.environment, executor_);
    listener_ = std::make_shared<Listener>(*this);
    engine_->setDelegate(listener_);
    engine_->buildVemoWorker(settings.engine, VemoEngine::WorkerThread::background);
    Q_EMIT started();
}

Context Calculation::context() const {
    Context context;
    context.setPrecision(settings_.precision);
    return context;
}

void Calculation::learnVocabulary() {
    engine_->buildCompletions(VemoEngine::WorkerThread::background,
                              [this](std::shared_ptr<const Completions> built) { vocabulary_ = std::move(built); });
}

}  // namespace vemo::notepad
