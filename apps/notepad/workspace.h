// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <optional>

#include "notepad/background_writer.h"
#include "notepad/document.h"
#include "notepad/notice_bar.h"
#include "notepad/recovery.h"
#include "notepad/session_state.h"
#include "notepad/stored_answers.h"

namespace vemo::notepad {

class MainWindow;
class Page;

// The documents of the window's pages: opens, saves and closes them, follows what others do to their files, and keeps
// what is not saved, so that the next start finds everything as it was.
class Workspace : public QObject {
    Q_OBJECT

public:
    // The folder is one that no other process works in.
    Workspace(MainWindow& window, const QString& folder, QObject* parent = nullptr);
    ~Workspace() override;

    // At the start: what was open, with the files to open now in front. The page in front has its text on return, the
    // others a little later.
    void restore(const QStringList& files);

    void addNew();
    void open(const QStringList& files);
    // False when it was not saved, of which the person knows.
    bool save(Page& page);
    bool saveAs(Page& page);
    // Closes the page, but asks first if a text would be lost. False when the page stays.
    bool close(Page& page);

    const Document& documentOf(const Page& page) const;
    const QStringList& recent() const { return state_.recent; }
    // Writes what waits to be written.
    void flush();

Q_SIGNALS:
    void recentChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        Page* page = nullptr;
        Document* document = nullptr;
        std::optional<Unsaved> unsaved;  // the text to show once somebody looks
        int cursor = 0;
        bool loaded = false;
        std::optional<Notice> notice;
        QString unkept;  // the message that was told since the text can't be kept
    };

    Entry& entryOf(const Page& page) { return entries_[&page]; }
    void showLook();
    Page* pageWith(const QString& path) const;
    Page& add(Document* document);
    void load(Entry& entry);
    void loadNext();
    bool isPristine(const Entry& entry) const;

    bool write(Entry& entry, const QString& path);
    bool mayOverwrite(Entry& entry);
    bool mayCloseWindow();

    void changedOnDisk(Page& page, Document::OnDisk what);
    void readAgain(Page& page);
    void keptForRecovery(const QString& id, const QString& problem);
    void tell(Entry& entry, std::optional<Notice> notice);
    void showTitles(const Page& page);
    void problem(const QString& message);

    std::optional<Unsaved> snapshotOf(const QString& id) const;
    void keepSession();
    void storeAnswers();

    MainWindow& window_;
    NoticeBar* notices_;
    QString folder_;
    BackgroundWriter writer_;
    StoredAnswers answers_;
    Recovery recovery_;
    SessionState state_;
    QHash<const Page*, Entry> entries_;
    QSet<const Page*> answered_;  // whose answers are to be stored
    QTimer sessionTimer_, answersTimer_;
};

}  // namespace vemo::notepad
