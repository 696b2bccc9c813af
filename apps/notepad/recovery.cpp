// SPDX-License-Identifier: MIT
#include "notepad/recovery.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>
#include <utility>

#include "session/saving.h"

namespace vemo::notepad {

namespace {

using namespace std::chrono_literals;

constexpr auto delay = 500ms;

QByteArray bytesFor(const Unsaved& unsaved) {
    const Document::Kept& kept = unsaved.document;
    return QJsonDocument(QJsonObject{{QStringLiteral("path"), kept.path},
                                     {QStringLiteral("digest"), QString::fromLatin1(kept.digest)},
                                     {QStringLiteral("byteOrderMark"), kept.byteOrderMark},
                                     {QStringLiteral("carriageReturns"), kept.carriageReturns},
                                     {QStringLiteral("cursor"), unsaved.cursor},
                                     {QStringLiteral("text"), unsaved.text}})
        .toJson();
}

std::string fileFor(const QString& folder, const QString& id) {
    return QFile::encodeName(folder + u'/' + id + QStringLiteral(".json")).toStdString();
}

}  // namespace

Recovery::Recovery(const QString& folder, BackgroundWriter& writer, Snapshot snapshot, QObject* parent)
    : QObject(parent), folder_(folder), writer_(writer), snapshot_(std::move(snapshot)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, &Recovery::keepNow);
}

// What is under way tells this object how it went.
Recovery::~Recovery() {
    writer_.flush();
}

void Recovery::touch(const QString& id) {
    touched_.insert(id);
    // The time is counted from the first change: the text of somebody who types without a pause is kept, too.
    if (!timer_.isActive()) timer_.start();
}

void Recovery::keepNow() {
    timer_.stop();
    for (const QString& id : std::exchange(touched_, {})) {
        auto unsaved = snapshot_(id);
        if (!unsaved) {
            forget(id);
            continue;
        }
        const std::string file = fileFor(folder_, id);
        writer_.post(file, [this, file, unsaved = *std::move(unsaved)] {
            const std::string problem = session::replaceFile(file, bytesFor(unsaved).toStdString());
            const auto tell = [this, id = unsaved.id, problem] { Q_EMIT written(id, QString::fromStdString(problem)); };
            QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
        });
    }
}

void Recovery::forget(const QString& id) {
    touched_.remove(id);
    const std::string file = fileFor(folder_, id);
    writer_.post(file, [file] { QFile::remove(QFile::decodeName(file.c_str())); });
}

std::vector<Unsaved> Recovery::leftIn(const QString& folder) {
    std::vector<Unsaved> left;
    for (const QFileInfo& info :
         QDir(folder).entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Time | QDir::Reversed)) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
        if (!object[u"text"].isString()) continue;
        left.push_back({info.completeBaseName(),
                        {object[u"path"].toString(), object[u"digest"].toString().toLatin1(),
                         object[u"byteOrderMark"].toBool(), object[u"carriageReturns"].toBool()},
                        object[u"text"].toString(),
                        object[u"cursor"].toInt()});
    }
    return left;
}

}  // namespace vemo::notepad
