// SPDX-License-Identifier: MIT
#include "notepad/session_state.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace vemo::notepad {

namespace {

constexpr qsizetype mostRecent = 12;

}  // namespace

SessionState SessionState::read(const QString& name) {
    SessionState state;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return state;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    for (const auto& value : object[u"tabs"].toArray()) {
        const QJsonObject tab = value.toObject();
        state.tabs.push_back({tab[u"id"].toString(), tab[u"path"].toString(), tab[u"cursor"].toInt()});
    }
    state.current = object[u"current"].toInt();
    for (const auto& path : object[u"recent"].toArray()) state.recent += path.toString();
    state.geometry = QByteArray::fromBase64(object[u"geometry"].toString().toLatin1());
    state.answerShare = object[u"answerShare"].toDouble();
    state.zoom = object[u"zoom"].toInt(state.zoom);
    state.lineNumbers = object[u"lineNumbers"].toBool();
    return state;
}

QByteArray SessionState::bytes() const {
    QJsonArray written;
    for (const Tab& tab : tabs)
        written += QJsonObject{
            {QStringLiteral("id"), tab.id}, {QStringLiteral("path"), tab.path}, {QStringLiteral("cursor"), tab.cursor}};
    return QJsonDocument(QJsonObject{{QStringLiteral("tabs"), written},
                                     {QStringLiteral("current"), current},
                                     {QStringLiteral("recent"), QJsonArray::fromStringList(recent)},
                                     {QStringLiteral("geometry"), QString::fromLatin1(geometry.toBase64())},
                                     {QStringLiteral("answerShare"), answerShare},
                                     {QStringLiteral("zoom"), zoom},
                                     {QStringLiteral("lineNumbers"), lineNumbers}})
        .toJson();
}

void SessionState::opened(const QString& path) {
    recent.removeAll(path);
    recent.prepend(path);
    recent = recent.mid(0, mostRecent);
}

}  // namespace vemo::notepad
