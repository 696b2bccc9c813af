// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPagedPaintDevice>
#include <QString>

#include "vemo/engine.h"

namespace vemo::notepad {

// A document on paper: each line in its colours with its answer at the right, the total at the end, and below on every
// page the title and the page's number.
struct Printout {
    const VemoEngine::Result& result;
    QString title;
    QString total;  // as the window shows it; empty for none
    QFont font;
};

// Prints the pages from one to another, counted from 1; 0: all there are. Gives the number of pages of the whole.
int print(const Printout& printout, QPagedPaintDevice& device, int from = 0, int to = 0);

// Says why the file can't be written; nothing when it was.
QString writePdf(const Printout& printout, const QString& file);

}  // namespace vemo::notepad
