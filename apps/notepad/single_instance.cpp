// SPDX-License-Identifier: MIT
#include "notepad/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QThread>

namespace vemo::notepad {

namespace {

constexpr int patience = 5000;  // milliseconds for a process that is busy or just beginning
constexpr qint64 longestRequest = 1 << 20;

// The socket lies beside the lock or, where its name would be too long for one, in the user's folder for sockets.
QString socketFor(const QString& folder) {
    constexpr qsizetype longestName = 100;
    const QString name = folder + "/socket";
    if (QFile::encodeName(name).size() <= longestName) return name;
    const QByteArray digest = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR", QDir::tempPath());
    return runtime + "/vemo-notepad-" + QString::fromLatin1(digest);
}

}  // namespace

SingleInstance::SingleInstance(const QString& folder, QObject* parent) : QObject(parent), socket_(socketFor(folder)) {
    lock_ = ::open(QFile::encodeName(folder + QStringLiteral("/lock")).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock_ >= 0 && ::flock(lock_, LOCK_EX | LOCK_NB) != 0) {
        ::close(lock_);
        lock_ = -1;
    }
}

SingleInstance::~SingleInstance() {
    server_.close();
    if (lock_ >= 0) ::close(lock_);
}

void SingleInstance::listen() {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socket_);  // one that a crash left
    server_.listen(socket_);
    connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::serve);
}

void SingleInstance::serve() {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            if (socket->bytesAvailable() > longestRequest) return socket->abort();
            if (!socket->canReadLine()) return;
            const QJsonObject request = QJsonDocument::fromJson(socket->readLine()).object();
            QStringList files;
            for (const auto& file : request[QStringLiteral("files")].toArray()) files += file.toString();
            socket->write("taken\n");
            socket->disconnectFromServer();
            Q_EMIT received(files, request[QStringLiteral("token")].toString());
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        if (socket->canReadLine()) read();
    }
}

bool SingleInstance::handOver(const QStringList& files, const QString& token) const {
    QLocalSocket socket;
    for (int waited = 0; waited < patience; waited += 50) {
        socket.connectToServer(socket_);
        if (socket.waitForConnected(patience)) break;
        QThread::msleep(50);
    }
    const QJsonObject request{{QStringLiteral("files"), QJsonArray::fromStringList(files)},
                              {QStringLiteral("token"), token}};
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    if (!socket.waitForReadyRead(patience)) return false;
    return socket.readLine() == "taken\n";
}

}  // namespace vemo::notepad
