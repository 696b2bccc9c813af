// SPDX-License-Identifier: MIT
#include "notepad/stored_answers.h"

#include <QDir>
#include <QFile>
#include <QTextBlock>

#include "notepad/page.h"
#include "notepad/texts.h"
#include "vemo/result_serializer.h"

namespace vemo::notepad {

namespace {

std::filesystem::path native(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace

StoredAnswers::StoredAnswers(const QString& folder, BackgroundWriter& writer, QObject* parent)
    : QObject(parent), folder_(folder), writer_(writer) {}

QString StoredAnswers::fileFor(const QString& id) const {
    return folder_ + u'/' + id;
}

void StoredAnswers::show(const QString& id, Page& page) const {
    auto stored = VemoEngineResultSerializer().deserialize(native(fileFor(id)));
    if (!stored) return;
    std::size_t same = 0;
    for (QTextBlock block = page.document()->begin(); block.isValid() && same < stored->lines.size();
         block = block.next(), ++same)
        if (viewOf(block.text()) != stored->lines[same].attributedText().compoundString()) break;
    stored->lines.erase(stored->lines.begin() + static_cast<std::ptrdiff_t>(same), stored->lines.end());
    page.showStoredResults(*stored);
}

void StoredAnswers::store(const QString& id, Page& page) {
    if (!page.results()) return;
    const QString file = fileFor(id);
    writer_.post(QFile::encodeName(file).toStdString(), [file, answer = page.calculated().answer()] {
        VemoEngineResultSerializer().serialize(answer->result, native(file));
    });
}

void StoredAnswers::forget(const QString& id) {
    const QString file = fileFor(id);
    writer_.post(QFile::encodeName(file).toStdString(), [file] { QFile::remove(file); });
}

void StoredAnswers::keepOnly(const QSet<QString>& ids) {
    writer_.post(QFile::encodeName(folder_).toStdString(), [folder = folder_, ids] {
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            if (!ids.contains(name)) QFile::remove(folder + u'/' + name);
    });
}

}  // namespace vemo::notepad
