// SPDX-License-Identifier: MIT
#include "notepad/document.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <chrono>

#include "session/saving.h"

namespace vemo::notepad {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t largestFile = std::size_t{64} << 20;  // bytes
constexpr auto settleTime = 150ms;

std::string native(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

std::optional<QByteArray> digestOfFile(const QString& path) {
    const auto bytes = session::readFile(native(path), largestFile);
    return bytes ? std::optional(digestOf(*bytes)) : std::nullopt;
}

}  // namespace

Document::Document(QObject* parent) : Document(QUuid::createUuid().toString(QUuid::Id128), Kept(), parent) {}

Document::Document(const QString& id, const Kept& kept, QObject* parent) : QObject(parent), kept_(kept), id_(id) {
    settle_.setSingleShot(true);
    settle_.setInterval(settleTime);
    connect(&settle_, &QTimer::timeout, this, &Document::look);
    for (const auto signal : {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
        connect(&watcher_, signal, &settle_, qOverload<>(&QTimer::start));
    watch();
}

QString Document::title() const {
    return kept_.path.isEmpty() ? tr("Untitled") : QFileInfo(kept_.path).fileName();
}

QString Document::id() const {
    return kept_.path.isEmpty() ? id_ : idOf(kept_.path);
}

QString Document::idOf(const QString& path) {
    return QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

Result<QString> Document::open(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return Failure{"there is no such file"};
    if (!info.isFile()) return Failure{"it is no file"};
    const std::string name = native(path);
    const session::FileStamp stamp = session::stampOf(name);
    if (static_cast<std::size_t>(info.size()) > largestFile) return Failure{"it has more than 64 MiB"};
    const auto bytes = session::readFile(name, largestFile);
    if (!bytes) return Failure{"it cannot be read"};
    const Result<FileText> file = textOf(*bytes);
    if (!file) return file.failure();
    kept_ = {info.absoluteFilePath(), digestOf(*bytes), file->byteOrderMark, file->carriageReturns};
    stamp_ = stamp;
    told_.clear();
    watch();
    return file->text;
}

QString Document::save(const QString& path, const QString& text) {
    const std::string bytes = bytesOf({text, kept_.byteOrderMark, kept_.carriageReturns});
    const QString absolute = QFileInfo(path).absoluteFilePath();
    const std::string problem = session::replaceFile(native(absolute), bytes);
    if (!problem.empty()) return QString::fromStdString(problem);
    stamp_ = session::stampOf(native(absolute));
    kept_.path = absolute;
    kept_.digest = digestOf(bytes);
    told_.clear();
    watch();
    return {};
}

Document::OnDisk Document::onDisk() const {
    if (kept_.path.isEmpty()) return OnDisk::same;
    const session::FileStamp now = session::stampOf(native(kept_.path));
    if (now == session::FileStamp()) return OnDisk::removed;
    if (now == stamp_) return OnDisk::same;
    const auto digest = digestOfFile(kept_.path);
    if (!digest || *digest != kept_.digest) return OnDisk::changed;
    stamp_ = now;
    return OnDisk::same;
}

void Document::acceptDisk() {
    stamp_ = session::stampOf(native(kept_.path));
    kept_.digest = digestOfFile(kept_.path).value_or(QByteArray());
}

// Watches the folder, too: a file that is replaced is another one, and a removed one may come back.
void Document::watch() {
    const QStringList watched = watcher_.files() + watcher_.directories();
    if (!watched.isEmpty()) watcher_.removePaths(watched);
    if (kept_.path.isEmpty()) return;
    watcher_.addPath(kept_.path);
    watcher_.addPath(QFileInfo(kept_.path).absolutePath());
}

void Document::look() {
    if (!watcher_.files().contains(kept_.path)) watcher_.addPath(kept_.path);
    const OnDisk what = onDisk();
    if (what == OnDisk::same) return told_.clear();
    const QByteArray content = what == OnDisk::removed ? QByteArray("removed") : digestOfFile(kept_.path).value_or("");
    if (content == told_) return;
    told_ = content;
    Q_EMIT changedOnDisk(what);
}

}  // namespace vemo::notepad
