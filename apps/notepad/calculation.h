// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "vemo/documents.h"
#include "vemo/engine.h"

namespace vemo::notepad {

class QtExecutor;

// The one engine of all pages. It is made by `start`, which the window calls once it is on the screen, and made anew
// when settings change. Qt's main thread.
class Calculation : public QObject {
    Q_OBJECT

public:
    struct Settings {
        Environment environment;
        VemoEngine::Config engine;
        std::optional<std::int64_t> precision;
    };

    explicit Calculation(QObject* parent = nullptr);
    ~Calculation() override;

    void start(const Settings& settings);
    // Null before `start`.
    VemoEngine* engine() const { return engine_.get(); }
    // True once the engine answers, which it does some time after `start`.
    bool isReady() const { return ready_; }
    const Settings& settings() const { return settings_; }
    // What every calculation begins with.
    Context context() const;
    // The words to complete; null before they are known.
    const std::shared_ptr<const Completions>& vocabulary() const { return vocabulary_; }

Q_SIGNALS:
    void started();  // there is an engine now, and the one before is gone
    void ready();
    void contextChanged();  // the minute, rates, a place: what is shown may be out of date
    void logged(const QString& text);
    void onlineProblem(const vemo::OnlineProblem& problem);

private:
    class Listener;

    void learnVocabulary();

    std::shared_ptr<QtExecutor> executor_;
    std::unique_ptr<VemoEngine> engine_;
    std::shared_ptr<Listener> listener_;
    Settings settings_;
    bool ready_ = false;
    std::shared_ptr<const Completions> vocabulary_;
};

}  // namespace vemo::notepad
