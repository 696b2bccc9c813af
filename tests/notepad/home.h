// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vemo::test {

// A home of its own for configuration, state and documents.
class Home {
public:
    Home() {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            const QString folder = path(QString(variable).toLower());
            QDir().mkpath(folder);
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            qputenv(variable, folder.toUtf8());
        }
    }

    QString path(const QString& name) const { return folder_.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) qFatal("cannot write a test's file");
    }
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

private:
    QTemporaryDir folder_;
};

}  // namespace vemo::test
