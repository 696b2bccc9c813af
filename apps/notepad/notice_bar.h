// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QToolBar>
#include <functional>

class QLabel;

namespace vemo::notepad {

// Something a person should know of a page, and what can be done about it. It waits above the page, and stops nobody.
struct Notice {
    struct Choice {
        QString label;
        std::function<void()> act;
    };
    QString message;
    QList<Choice> choices;
};

// Shows the notice of the page in front.
class NoticeBar : public QToolBar {
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent = nullptr);

    // Shows a notice; null hides the bar.
    void show(const Notice* notice);
    QString message() const;

private:
    QLabel* label_ = nullptr;  // of the notice that is shown
};

}  // namespace vemo::notepad
