// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace vemo::notepad {

class Page;

// The numbers of a page's lines, on its left.
class LineNumbers : public QWidget {
public:
    explicit LineNumbers(Page& page);

    int wantedWidth() const;
    void followPage(const QRect& part, int dy);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Page& page_;
};

}  // namespace vemo::notepad
