// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "notepad/calculation.h"

namespace vemo::notepad {

class Page;

// Sum, average and count of the answers of the selected lines, which the engine adds up beside its other work.
class SelectionTotals : public QObject {
    Q_OBJECT

public:
    explicit SelectionTotals(Calculation& calculation, QObject* parent = nullptr);

    // Follows the selection of a page; null for none.
    void follow(Page* page);

Q_SIGNALS:
    void changed(const QString& text);  // empty where fewer than two answers are selected

private:
    void calculate();
    void ask(const std::vector<Value>& values);

    Calculation& calculation_;
    QPointer<Page> page_;
    QTimer soon_;
    std::optional<VemoDocument> document_;
};

}  // namespace vemo::notepad
