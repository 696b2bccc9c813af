// SPDX-License-Identifier: MIT
// What is open, and what of it is kept. workspace_files.cpp has what a person asks for.
#include "notepad/workspace.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QPlainTextDocumentLayout>
#include <QTabBar>
#include <QTextBlock>
#include <chrono>
#include <utility>

#include "notepad/main_window.h"
#include "notepad/page.h"
#include "notepad/texts.h"
#include "session/saving.h"
#include "vemo/engine.h"

namespace vemo::notepad {

namespace {

using namespace std::chrono_literals;

constexpr auto sessionDelay = 300ms;
constexpr auto answersDelay = 2s;

QString folderIn(const QString& folder, const char* name) {
    const QString path = folder + '/' + name;
    QDir().mkpath(path);
    return path;
}

void setCursor(Page& page, int position) {
    QTextCursor cursor = page.textCursor();
    cursor.setPosition(std::clamp(position, 0, page.document()->characterCount() - 1));
    page.setTextCursor(cursor);
}

// Files that are dragged over a page are opened, not written into it.
QStringList filesOf(const QMimeData* data) {
    QStringList files;
    if (!data) return files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) files += url.toLocalFile();
    return files;
}

}  // namespace

Workspace::Workspace(MainWindow& window, const QString& folder, QObject* parent)
    : QObject(parent),
      window_(window),
      notices_(new NoticeBar(&window)),
      folder_(folder),
      answers_(folderIn(folder, "answers"), writer_),
      recovery_(folderIn(folder, "unsaved"), writer_, [this](const QString& id) { return snapshotOf(id); }) {
    window_.addToolBar(Qt::TopToolBarArea, notices_);
    window_.setAcceptDrops(true);
    window_.installEventFilter(this);
    QTabWidget* tabs = window_.tabs();
    tabs->setTabsClosable(true);
    sessionTimer_.setSingleShot(true);
    sessionTimer_.setInterval(sessionDelay);
    answersTimer_.setSingleShot(true);
    answersTimer_.setInterval(answersDelay);
    connect(&sessionTimer_, &QTimer::timeout, this, &Workspace::keepSession);
    connect(&answersTimer_, &QTimer::timeout, this, &Workspace::storeAnswers);
    connect(tabs, &QTabWidget::tabCloseRequested, this, [this, tabs](int index) {
        if (auto* page = qobject_cast<Page*>(tabs->widget(index))) close(*page);
    });
    connect(tabs->tabBar(), &QTabBar::tabMoved, &sessionTimer_, qOverload<>(&QTimer::start));
    connect(&window_, &MainWindow::currentPageChanged, this, [this](Page* page) {
        if (!page || !entries_.contains(page)) return;
        load(entryOf(*page));
        showTitles(*page);
        sessionTimer_.start();
    });
    connect(&recovery_, &Recovery::written, this, &Workspace::keptForRecovery);
    // The end of the desktop's session: nobody may be there to be asked.
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { flush(); });
}

Workspace::~Workspace() {
    // The window destroys its pages with itself, which is no change to what is open.
    for (const Entry& entry : std::as_const(entries_)) entry.page->disconnect(this);
    window_.disconnect(this);
    window_.tabs()->disconnect(this);
}

const Document& Workspace::documentOf(const Page& page) const {
    return *entries_[&page].document;
}

void Workspace::restore(const QStringList& files) {
    const bool first = !QFileInfo::exists(folder_ + "/session.json");
    state_ = SessionState::read(folder_ + "/session.json");
    showLook();
    QHash<QString, Unsaved> unsaved;
    QStringList order;
    for (Unsaved& each : Recovery::leftIn(folder_ + "/unsaved")) {
        order += each.id;
        unsaved.insert(each.id, std::move(each));
    }
    const QSignalBlocker quiet(window_.tabs());  // no page is looked at before all are there
    const auto addTab = [&](const SessionState::Tab& tab) {
        const auto left = unsaved.constFind(tab.id);
        if (left == unsaved.constEnd() && tab.path.isEmpty()) return;
        Document::Kept kept;
        kept.path = tab.path;
        if (left != unsaved.constEnd()) kept = left->document;
        Entry& entry = entryOf(add(new Document(tab.id, kept, this)));
        if (left != unsaved.constEnd()) entry.unsaved = unsaved.take(tab.id);
        entry.cursor = tab.cursor;
        showTitles(*entry.page);
    };
    int current = state_.current;
    for (const SessionState::Tab& tab : std::as_const(state_.tabs)) addTab(tab);
    // Texts whose tab was not noted any more before the end.
    for (const QString& id : std::as_const(order)) {
        if (!unsaved.contains(id)) continue;
        addTab({id, unsaved[id].document.path, unsaved[id].cursor});
        if (state_.tabs.isEmpty()) current = window_.tabs()->count() - 1;
    }
    window_.tabs()->setCurrentIndex(std::clamp(current, 0, std::max(0, window_.tabs()->count() - 1)));
    if (!files.isEmpty()) open(files);
    if (entries_.isEmpty()) {
        addNew();
        if (first) {
            Page& page = *window_.currentPage();
            page.setText(toQt(VemoEngine::welcomeSample()));
            page.moveCursor(QTextCursor::End);
        }
    }
    if (Page* page = window_.currentPage()) {
        load(entryOf(*page));
        showTitles(*page);
    }
    connect(&window_, &MainWindow::shownFirst, this, &Workspace::loadNext);
    sessionTimer_.start();
}

void Workspace::showLook() {
    if (!state_.geometry.isEmpty()) window_.restoreGeometry(state_.geometry);
    if (state_.zoom != window_.zoom()) window_.setZoom(state_.zoom);
    if (state_.lineNumbers) window_.setLineNumbers(true);
    connect(&window_, &MainWindow::lookChanged, &sessionTimer_, qOverload<>(&QTimer::start));
}

Page* Workspace::pageWith(const QString& path) const {
    const QFileInfo wanted(path);
    for (const Entry& entry : std::as_const(entries_))
        if (!entry.document->path().isEmpty() && QFileInfo(entry.document->path()) == wanted) return entry.page;
    return nullptr;
}

Page& Workspace::add(Document* document) {
    Page* page = window_.addPage(document->title());
    if (state_.answerShare > 0) page->setAnswerShare(state_.answerShare);
    entries_.insert(page, {page, document, std::nullopt, 0, false, std::nullopt, {}});
    page->viewport()->installEventFilter(this);
    connect(document, &Document::changedOnDisk, page, [this, page](auto what) { changedOnDisk(*page, what); });
    const auto touch = [this, page] {
        if (entryOf(*page).loaded) recovery_.touch(entryOf(*page).document->id());
    };
    connect(page->document(), &QTextDocument::contentsChange, page, touch);
    connect(page->document(), &QTextDocument::modificationChanged, page, [this, page, touch] {
        touch();
        showTitles(*page);
        sessionTimer_.start();
    });
    connect(page, &Page::answersSettled, this, [this, page] {
        answered_ += page;
        answersTimer_.start();
    });
    return *page;
}

// Fills a page of last time.
void Workspace::load(Entry& entry) {
    if (std::exchange(entry.loaded, true)) return;
    Page& page = *entry.page;
    Document& document = *entry.document;
    if (auto unsaved = std::exchange(entry.unsaved, std::nullopt)) {
        page.setText(unsaved->text);
        page.document()->setModified(true);
        setCursor(page, unsaved->cursor);
        if (const auto what = document.onDisk(); what != Document::OnDisk::same) changedOnDisk(page, what);
    } else if (!document.path().isEmpty()) {
        const QString path = document.path();
        if (const auto text = document.open(path)) {
            page.setText(*text);
            setCursor(page, entry.cursor);
        } else {
            tell(entry,
                 Notice{tr("“%1” can't be opened: %2").arg(path, QString::fromStdString(text.failure().message)), {}});
            return;
        }
    }
    answers_.show(document.id(), page);
}

// One page at a time, so that the window stays quick.
void Workspace::loadNext() {
    QTabWidget* tabs = window_.tabs();
    for (int i = 0; i < tabs->count(); ++i) {
        const auto* page = qobject_cast<Page*>(tabs->widget(i));
        if (!page || entryOf(*page).loaded) continue;
        load(entryOf(*page));
        return QTimer::singleShot(0, this, &Workspace::loadNext);
    }
    QSet<QString> ids;
    for (const Entry& entry : std::as_const(entries_)) ids += entry.document->id();
    for (const QString& path : std::as_const(state_.recent)) ids += Document::idOf(path);
    answers_.keepOnly(ids);
}

std::optional<Unsaved> Workspace::snapshotOf(const QString& id) const {
    for (const Entry& entry : entries_) {
        if (entry.document->id() != id || !entry.loaded) continue;
        const bool empty = entry.document->path().isEmpty() && entry.page->document()->isEmpty();
        if (!entry.page->document()->isModified() || empty) return std::nullopt;
        return Unsaved{id, entry.document->kept(), entry.page->text(), entry.page->textCursor().position()};
    }
    return std::nullopt;
}

void Workspace::keepSession() {
    QTabWidget* tabs = window_.tabs();
    state_.tabs.clear();
    for (int i = 0; i < tabs->count(); ++i) {
        const auto* page = qobject_cast<Page*>(tabs->widget(i));
        if (!page) continue;
        const Entry& entry = entryOf(*page);
        const int cursor = entry.loaded ? page->textCursor().position() : entry.cursor;
        state_.tabs.push_back({entry.document->id(), entry.document->path(), cursor});
    }
    state_.current = tabs->currentIndex();
    state_.geometry = window_.saveGeometry();
    state_.zoom = window_.zoom();
    if (const Page* page = window_.currentPage()) {
        state_.answerShare = page->answerShare();
        state_.lineNumbers = page->hasLineNumbers();
    }
    const std::string file = QFile::encodeName(folder_ + "/session.json").toStdString();
    writer_.post(file, [file, bytes = state_.bytes().toStdString()] { session::replaceFile(file, bytes); });
}

void Workspace::flush() {
    recovery_.keepNow();
    sessionTimer_.stop();
    keepSession();
    storeAnswers();
    writer_.flush();
}

void Workspace::storeAnswers() {
    answersTimer_.stop();
    for (const Page* page : std::exchange(answered_, {}))
        if (const Entry& entry = entryOf(*page); entry.loaded) answers_.store(entry.document->id(), *entry.page);
}

// Says once that a text would not be found again, and takes that back when it is written after all.
void Workspace::keptForRecovery(const QString& id, const QString& problem) {
    for (Entry& entry : entries_) {
        if (entry.document->id() != id) continue;
        if (problem.isEmpty()) {
            const bool told = entry.notice && entry.notice->message == entry.unkept;
            entry.unkept.clear();
            if (told) tell(entry, std::nullopt);
            return;
        }
        const QString message = tr("What is not saved can't be kept for the next start: %1").arg(problem);
        // Another notice goes first: the next change of the text comes back here.
        if (entry.notice || entry.unkept == message) return;
        entry.unkept = message;
        Page& page = *entry.page;
        return tell(entry, Notice{message,
                                  {{tr("&Save"), [this, &page] { save(page); }},
                                   {tr("Dismiss"), [this, &page] { tell(entryOf(page), std::nullopt); }}}});
    }
}

void Workspace::tell(Entry& entry, std::optional<Notice> notice) {
    entry.notice = std::move(notice);
    if (entry.page == window_.currentPage()) notices_->show(entry.notice ? &*entry.notice : nullptr);
}

void Workspace::showTitles(const Page& page) {
    const Entry& entry = entryOf(page);
    const bool modified = entry.loaded ? page.document()->isModified() : entry.unsaved.has_value();
    QTabWidget* tabs = window_.tabs();
    const int index = tabs->indexOf(entry.page);
    const QString title = entry.document->title();
    tabs->setTabText(index, QString(title).replace('&', "&&") + (modified ? "*" : ""));
    tabs->setTabToolTip(index, entry.document->path());
    if (&page != window_.currentPage()) return;
    window_.setWindowTitle(title + "[*]");
    window_.setWindowModified(modified);
    window_.setWindowFilePath(entry.document->path());
    notices_->show(entry.notice ? &*entry.notice : nullptr);
}

bool Workspace::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Close:
            if (watched != &window_) break;
            if (!mayCloseWindow()) {
                event->ignore();
                return true;
            }
            flush();
            break;
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto* drag = static_cast<QDropEvent*>(event);
            if (filesOf(drag->mimeData()).isEmpty()) break;
            drag->setDropAction(Qt::CopyAction);
            drag->accept();
            return true;
        }
        case QEvent::Drop: {
            auto* drop = static_cast<QDropEvent*>(event);
            const QStringList files = filesOf(drop->mimeData());
            if (files.isEmpty()) break;
            drop->setDropAction(Qt::CopyAction);
            drop->accept();
            open(files);
            return true;
        }
        case QEvent::Resize:
        case QEvent::Move:
            if (watched == &window_) sessionTimer_.start();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace vemo::notepad
