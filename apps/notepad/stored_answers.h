// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include "notepad/background_writer.h"

namespace vemo::notepad {

class Page;

// The answers of last time: written when a page has not changed for a while, and shown at the next start before the
// engine is ready.
class StoredAnswers : public QObject {
    Q_OBJECT

public:
    StoredAnswers(const QString& folder, BackgroundWriter& writer, QObject* parent = nullptr);

    // Shows what is stored under a name on a page, down to the first line that is another one now.
    void show(const QString& id, Page& page) const;
    void store(const QString& id, Page& page);
    void forget(const QString& id);
    // Removes what is stored under other names.
    void keepOnly(const QSet<QString>& ids);

private:
    QString fileFor(const QString& id) const;

    QString folder_;
    BackgroundWriter& writer_;
};

}  // namespace vemo::notepad
