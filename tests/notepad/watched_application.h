// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

namespace vemo::notepad {

// An application that knows how long its event loop was busy with one event.
class WatchedApplication : public QApplication {
public:
    using QApplication::QApplication;

    struct Busy {
        double milliseconds = 0;  // as a person waits
        double processor = 0;     // of them, those in which the thread ran
        std::string what;
    };

    bool notify(QObject* receiver, QEvent* event) override {
        if (depth_ > 0) return QApplication::notify(receiver, event);
        ++depth_;
        const std::string what = std::string(receiver->metaObject()->className()) + " " + std::to_string(event->type());
        QElapsedTimer timer;
        timer.start();
        const double before = processorTime();
        const bool done = QApplication::notify(receiver, event);
        busy_.push_back({static_cast<double>(timer.nsecsElapsed()) / 1e6, processorTime() - before, what});
        --depth_;
        return done;
    }

    // The longest first, since the last call.
    std::vector<Busy> take() {
        std::vector<Busy> taken;
        taken.swap(busy_);
        std::sort(taken.begin(), taken.end(),
                  [](const Busy& a, const Busy& b) { return a.milliseconds > b.milliseconds; });
        return taken;
    }

private:
    static double processorTime() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    int depth_ = 0;
    std::vector<Busy> busy_;
};

}  // namespace vemo::notepad
