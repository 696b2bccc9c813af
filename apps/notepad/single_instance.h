// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QObject>
#include <QStringList>

namespace vemo::notepad {

// One process of a user has the open documents. A further one hands its files over to it and ends.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    // The processes that share a folder are those that know of each other.
    explicit SingleInstance(const QString& folder, QObject* parent = nullptr);
    ~SingleInstance() override;

    // False where another process is the one. It stays the one until it ends, however it does.
    bool isFirst() const { return lock_ >= 0; }
    // For the first process: hears the others from now on.
    void listen();
    // For another process: true when the first one has taken the files, whose paths are absolute. `token` lets it come
    // to the front.
    bool handOver(const QStringList& files, const QString& token = {}) const;

Q_SIGNALS:
    void received(const QStringList& files, const QString& token);

private:
    void serve();

    QString socket_;
    int lock_ = -1;  // a descriptor: the kernel lets go of it with the process
    QLocalServer server_;
};

}  // namespace vemo::notepad
