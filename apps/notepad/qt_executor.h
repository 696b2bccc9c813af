// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "vemo/executor.h"

namespace vemo::notepad {

// The engine's main executor on Qt's event loop: tasks run on the thread that this was made on.
class QtExecutor : public QObject, public Executor {
public:
    void post(std::function<void()> task) override {
        QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
    }
};

}  // namespace vemo::notepad
