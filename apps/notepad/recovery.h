// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "notepad/background_writer.h"
#include "notepad/document.h"

namespace vemo::notepad {

// A text that is in no file, or not in its file yet.
struct Unsaved {
    QString id;
    Document::Kept document;
    QString text;
    int cursor = 0;  // in UTF-16 units
};

// Keeps unsaved texts in a folder while they are typed, so that neither a crash nor the end of the desktop's session
// loses them: at most half a second after a change, a text is on its way to the disk.
class Recovery : public QObject {
    Q_OBJECT

public:
    // Gives the text of a document as it is now; nothing where it has been saved or has none.
    using Snapshot = std::function<std::optional<Unsaved>(const QString& id)>;

    Recovery(const QString& folder, BackgroundWriter& writer, Snapshot snapshot, QObject* parent = nullptr);
    ~Recovery() override;  // when what waits is written

    // Tells that a document's text, or whether it is saved, has changed.
    void touch(const QString& id);
    // Writes at once what waits.
    void keepNow();
    // Removes what is kept for a document.
    void forget(const QString& id);

    // The texts that the process before left. What can't be read stays where it is.
    static std::vector<Unsaved> leftIn(const QString& folder);

Q_SIGNALS:
    // What became of a text: why it could not be written, or nothing.
    void written(const QString& id, const QString& problem);

private:
    QString folder_;
    BackgroundWriter& writer_;
    Snapshot snapshot_;
    QSet<QString> touched_;
    QTimer timer_;
};

}  // namespace vemo::notepad
