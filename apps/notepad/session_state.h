// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace vemo::notepad {

// What the window looked like: kept beside the unsaved texts, and read at the next start.
struct SessionState {
    struct Tab {
        QString id;    // of an unsaved text or of stored answers
        QString path;  // empty for a text that is in no file
        int cursor = 0;
    };

    QList<Tab> tabs;
    int current = 0;
    QStringList recent;  // files, the latest first
    QByteArray geometry;
    double answerShare = 0;  // of the width; 0: as usual
    int zoom = 100;          // in percent
    bool lineNumbers = false;

    // Reads the state; an empty one where the file is missing or damaged.
    static SessionState read(const QString& file);
    QByteArray bytes() const;

    // Puts a file at the head of the recent ones.
    void opened(const QString& path);
};

}  // namespace vemo::notepad
