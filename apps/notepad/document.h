// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include "notepad/file_text.h"
#include "session/files.h"
#include "vemo/result.h"

namespace vemo::notepad {

// The file of a page: where it is, how it is written, and whether others write it. The text itself is the page's.
class Document : public QObject {
    Q_OBJECT

public:
    enum class OnDisk { same, changed, removed };

    // What of it must outlive the process beside the text.
    struct Kept {
        QString path;
        QByteArray digest;  // of the file's content that the text began with
        bool byteOrderMark = false;
        bool carriageReturns = false;
    };

    explicit Document(QObject* parent = nullptr);
    // A document as it was when its text was kept under a name; the file may have changed since.
    Document(const QString& id, const Kept& kept, QObject* parent = nullptr);

    // Empty before it was saved for the first time.
    const QString& path() const { return kept_.path; }
    // For a tab: the name of the file, or "Untitled".
    QString title() const;
    // Names what is kept for it: the same for the same file at the next start.
    QString id() const;
    static QString idOf(const QString& path);
    const Kept& kept() const { return kept_; }

    // The text of a file, which becomes this document's.
    Result<QString> open(const QString& path);
    // Writes the file as a whole, or leaves it as it was. Says why it can't be; nothing when it was written. Whether
    // others have changed it meanwhile is the caller's question, before.
    QString save(const QString& path, const QString& text);

    // Whether the file still has the content that was read or written last. One without a path is the same.
    OnDisk onDisk() const;
    // The file's text as it is now, for a page that follows it.
    Result<QString> reload() { return open(kept_.path); }
    // Tells that the text on the page is to replace what others wrote.
    void acceptDisk();

Q_SIGNALS:
    // Somebody else wrote, replaced or removed the file. Once for each content.
    void changedOnDisk(vemo::notepad::Document::OnDisk what);

private:
    void watch();
    void look();

    Kept kept_;
    QString id_;                        // of one without a path
    mutable session::FileStamp stamp_;  // the file that has this stamp has the content that is known
    QFileSystemWatcher watcher_;
    QTimer settle_;    // a program that writes in several steps is waited for
    QByteArray told_;  // the content that was told of last
};

}  // namespace vemo::notepad
