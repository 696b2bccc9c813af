// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace vemo::notepad {

class Page;

// The answers of a page, each right-aligned in the first row of its line; where there is none though the line asks for
// one, the reason, dimmed.
class AnswerColumn : public QWidget {
    Q_OBJECT

public:
    explicit AnswerColumn(Page& page);

    // The page was scrolled, or a part of it is to be painted.
    void followPage(const QRect& part, int dy);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Page& page_;
};

}  // namespace vemo::notepad
