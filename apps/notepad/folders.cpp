// SPDX-License-Identifier: MIT
#include "notepad/folders.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

namespace vemo::notepad {

namespace {

QString made(const QString& path) {
    QDir().mkpath(path);
    ::chmod(QFile::encodeName(path).constData(), 0700);
    return path;
}

}  // namespace

QString stateFolder() {
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
    return made(base + QStringLiteral("/vemo/notepad"));
}

QString stateFolder(const QString& name) {
    return made(stateFolder() + u'/' + name);
}

}  // namespace vemo::notepad
