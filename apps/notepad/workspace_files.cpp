// SPDX-License-Identifier: MIT
// What a person asks a workspace for: opening, saving, closing, and what to do about files that others changed.
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTextBlock>

#include "notepad/main_window.h"
#include "notepad/page.h"
#include "notepad/workspace.h"

namespace vemo::notepad {

namespace {

QString filters() {
    return QObject::tr("Vemo documents (*.vemo);;Texts (*.txt *.md);;All files (*)");
}

// The name of a file for a text that has none: that of its first header, or its first words.
QString nameFor(const Page& page) {
    constexpr qsizetype longest = 40;
    QString name;
    for (QTextBlock block = page.document()->begin(); block.isValid() && name.isEmpty(); block = block.next())
        for (const QChar c : block.text())
            if (c.isLetterOrNumber() || c.isMark() || (c == ' ' && !name.isEmpty())) name += c;
    name = name.left(longest).trimmed();
    return (name.isEmpty() ? QObject::tr("Untitled") : name) + ".vemo";
}

// Only what differs is replaced, so that undo, cursor and answers of the rest stay.
void replaceText(Page& page, const QString& text) {
    const QString before = page.text();
    const qsizetype most = std::min(before.size(), text.size());
    qsizetype head = 0, tail = 0;
    while (head < most && before[head] == text[head]) ++head;
    while (tail < most - head && before[before.size() - 1 - tail] == text[text.size() - 1 - tail]) ++tail;
    QTextCursor cursor(page.document());
    cursor.setPosition(static_cast<int>(head));
    cursor.setPosition(static_cast<int>(before.size() - tail), QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(head, text.size() - head - tail));
    page.document()->setModified(false);
}

}  // namespace

void Workspace::problem(const QString& message) {
    QMessageBox box(QMessageBox::Warning, QString(), message, QMessageBox::Ok, &window_);
    box.exec();
}

void Workspace::addNew() {
    Entry& entry = entryOf(add(new Document(this)));
    entry.page->setText({});
    entry.loaded = true;
    showTitles(*entry.page);
    sessionTimer_.start();
}

// True for a page that nobody wrote on: it makes room for a file.
bool Workspace::isPristine(const Entry& entry) const {
    return entry.loaded && entry.document->path().isEmpty() && entry.page->document()->isEmpty();
}

void Workspace::open(const QStringList& files) {
    for (const QString& file : files) {
        const QString path = QFileInfo(file).absoluteFilePath();
        if (Page* page = pageWith(path)) {
            window_.tabs()->setCurrentWidget(page);
            continue;
        }
        auto* document = new Document(this);
        const auto text = document->open(path);
        if (!text) {
            delete document;
            problem(tr("“%1” can't be opened: %2").arg(path, QString::fromStdString(text.failure().message)));
            continue;
        }
        Page* before = window_.currentPage();
        Entry& entry = entryOf(add(document));
        entry.loaded = true;
        entry.page->setText(*text);
        answers_.show(document->id(), *entry.page);
        showTitles(*entry.page);
        if (before && isPristine(entryOf(*before))) close(*before);
        state_.opened(path);
        Q_EMIT recentChanged();
    }
    sessionTimer_.start();
}

bool Workspace::save(Page& page) {
    Entry& entry = entryOf(page);
    if (entry.document->path().isEmpty()) return saveAs(page);
    return mayOverwrite(entry) && write(entry, entry.document->path());
}

bool Workspace::saveAs(Page& page) {
    Entry& entry = entryOf(page);
    QFileDialog dialog(&window_, tr("Save As"), QString(), filters());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("vemo");
    const QString path = entry.document->path();
    dialog.selectFile(path.isEmpty() ? nameFor(page) : path);
    if (path.isEmpty() && !state_.recent.isEmpty()) dialog.setDirectory(QFileInfo(state_.recent.front()).path());
    if (dialog.exec() != QDialog::Accepted) return false;
    const QString chosen = dialog.selectedFiles().value(0);
    if (Page* other = pageWith(chosen); other && other != &page) {
        problem(tr("“%1” is open in another tab.").arg(chosen));
        return false;
    }
    return write(entry, chosen);
}

bool Workspace::mayOverwrite(Entry& entry) {
    if (entry.document->onDisk() != Document::OnDisk::changed) return true;
    QMessageBox box(QMessageBox::NoIcon, QString(),
                    tr("“%1” was changed by another program. Write over its changes?").arg(entry.document->title()),
                    QMessageBox::Cancel, &window_);
    const QPushButton* over = box.addButton(tr("&Write Over"), QMessageBox::DestructiveRole);
    const QPushButton* other = box.addButton(tr("Save &As…"), QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    if (box.clickedButton() == other) {
        saveAs(*entry.page);
        return false;
    }
    return box.clickedButton() == over;
}

bool Workspace::write(Entry& entry, const QString& path) {
    Document& document = *entry.document;
    const QString before = document.id();
    const QString failure = document.save(path, entry.page->text());
    if (!failure.isEmpty()) {
        problem(tr("“%1” can't be written: %2").arg(path, failure));
        return false;
    }
    entry.page->document()->setModified(false);
    recovery_.forget(before);
    if (document.id() != before) {
        recovery_.forget(document.id());
        answers_.forget(before);
    }
    answers_.store(document.id(), *entry.page);
    tell(entry, std::nullopt);
    showTitles(*entry.page);
    state_.opened(document.path());
    Q_EMIT recentChanged();
    window_.say(tr("Saved %1").arg(document.path()));
    sessionTimer_.start();
    return true;
}

bool Workspace::close(Page& page) {
    Entry& entry = entryOf(page);
    load(entry);
    if (page.document()->isModified() && !(entry.document->path().isEmpty() && page.document()->isEmpty())) {
        window_.tabs()->setCurrentWidget(&page);
        QMessageBox box(QMessageBox::NoIcon, QString(),
                        tr("Save what you wrote in “%1” before it is closed?").arg(entry.document->title()),
                        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
        box.setDefaultButton(QMessageBox::Save);
        const int chosen = box.exec();
        if (chosen == QMessageBox::Cancel || (chosen == QMessageBox::Save && !save(page))) return false;
    }
    const Entry closed = entries_.take(&page);
    answered_.remove(&page);
    recovery_.forget(closed.document->id());
    if (closed.document->path().isEmpty()) answers_.forget(closed.document->id());
    page.disconnect(this);
    window_.tabs()->removeTab(window_.tabs()->indexOf(&page));
    page.deleteLater();
    delete closed.document;
    if (entries_.isEmpty()) addNew();
    sessionTimer_.start();
    return true;
}

// False when the person wants the window to stay. No text is lost when it closes, for all are kept; but a file that
// others will read should be as its page is.
bool Workspace::mayCloseWindow() {
    QList<Page*> changed;
    QStringList names;
    for (const Entry& entry : std::as_const(entries_)) {
        if (!entry.loaded || entry.document->path().isEmpty() || !entry.page->document()->isModified()) continue;
        changed += entry.page;
        names += entry.document->title();
    }
    if (changed.isEmpty()) return true;
    QMessageBox box(QMessageBox::NoIcon, QString(),
                    tr("Save %1?").arg(names.size() == 1 ? "“" + names.front() + "”" : names.join(", ")),
                    QMessageBox::Save | QMessageBox::Cancel, &window_);
    box.setInformativeText(tr("What is not saved is there again at the next start."));
    const QPushButton* later = box.addButton(tr("&Not Now"), QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Save);
    box.exec();
    if (box.clickedButton() == later) return true;
    if (box.clickedButton() != box.button(QMessageBox::Save)) return false;
    for (Page* page : changed)
        if (!save(*page)) return false;
    return true;
}

void Workspace::changedOnDisk(Page& page, Document::OnDisk what) {
    Entry& entry = entryOf(page);
    if (!entry.loaded) return;
    const QString title = entry.document->title();
    const auto dismiss = [this, &page] { tell(entryOf(page), std::nullopt); };
    if (what == Document::OnDisk::removed) {
        page.document()->setModified(true);  // there is no file that has it
        return tell(entry, Notice{tr("“%1” is no longer where it was.").arg(title),
                                  {{tr("Save It &Again"), [this, &page] { save(page); }}, {tr("Dismiss"), dismiss}}});
    }
    if (!page.document()->isModified()) {
        readAgain(page);
        return window_.say(tr("“%1” was changed by another program, and read again.").arg(title));
    }
    const auto keep = [this, &page] {
        entryOf(page).document->acceptDisk();
        tell(entryOf(page), std::nullopt);
    };
    tell(entry, Notice{tr("“%1” was changed by another program, while you changed it here.").arg(title),
                       {{tr("&Read It Again"), [this, &page] { readAgain(page); }}, {tr("&Keep Mine"), keep}}});
}

void Workspace::readAgain(Page& page) {
    Entry& entry = entryOf(page);
    if (const auto text = entry.document->reload()) {
        replaceText(page, *text);
        tell(entry, std::nullopt);
    } else {
        problem(
            tr("“%1” can't be opened: %2").arg(entry.document->path(), QString::fromStdString(text.failure().message)));
    }
}

}  // namespace vemo::notepad
