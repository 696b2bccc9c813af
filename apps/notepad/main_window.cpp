// SPDX-License-Identifier: MIT
#include "notepad/main_window.h"

#include <QEvent>
#include <QFontDatabase>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "notepad/find_bar.h"
#include "notepad/page.h"
#include "notepad/page_total.h"
#include "notepad/selection_totals.h"

namespace vemo::notepad {

namespace {

constexpr int leastZoom = 50, mostZoom = 400;
constexpr double largerThanMenus = 1.2;

QFont usualFont() {
    QFont font;
    font.setPointSizeF(font.pointSizeF() * largerThanMenus);
    return font;
}

}  // namespace

MainWindow::MainWindow(Calculation& calculation, QWidget* parent)
    : QMainWindow(parent),
      calculation_(calculation),
      tabs_(new QTabWidget(this)),
      find_(new FindBar(this)),
      selection_(new SelectionTotals(calculation, this)),
      selected_(new QLabel(this)),
      total_(new QLabel(this)),
      fileMenu_(buildFileMenu()),
      editMenu_(buildEditMenu()),
      viewMenu_(buildViewMenu()),
      font_(usualFont()) {
    tabs_->setDocumentMode(true);
    tabs_->setMovable(true);
    tabs_->setTabBarAutoHide(true);
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tabs_);
    layout->addWidget(find_);
    setCentralWidget(content);
    total_->setAccessibleName(tr("Total"));
    selected_->setAccessibleName(tr("Selection"));
    constexpr int apart = 16;
    selected_->setContentsMargins(0, 0, apart, 0);
    statusBar()->addPermanentWidget(selected_);
    statusBar()->addPermanentWidget(total_);
    connect(selection_, &SelectionTotals::changed, selected_, &QLabel::setText);
    connect(tabs_, &QTabWidget::currentChanged, this, [this] {
        followCurrentPage();
        Q_EMIT currentPageChanged(currentPage());
    });
    constexpr int usualWidth = 860, usualHeight = 620;
    resize(usualWidth, usualHeight);
}

Page* MainWindow::addPage(const QString& title) {
    auto* page = new Page(calculation_, tabs_);
    dress(*page);
    if (share_ > 0) page->setAnswerShare(share_);
    page->setLineNumbers(numbersAction_->isChecked());
    connect(page, &Page::said, this, &MainWindow::say);
    connect(page, &Page::zoomWanted, this, [this](int steps) { setZoom(zoom_ + 10 * steps); });
    connect(page, &Page::answersSettled, this, [this, page] {
        if (page == currentPage()) showTotal();
    });
    connect(page, &Page::answerShareChanged, this, [this](double share) {
        if (share_ == share) return;
        share_ = share;
        forEachPage([share](Page& each) { each.setAnswerShare(share); });
        Q_EMIT lookChanged();
    });
    tabs_->setCurrentIndex(tabs_->addTab(page, title));
    page->setFocus();
    Q_EMIT pageAdded(page);
    return page;
}

Page* MainWindow::currentPage() const {
    return qobject_cast<Page*>(tabs_->currentWidget());
}

Page* MainWindow::pageAt(int tab) const {
    return qobject_cast<Page*>(tabs_->widget(tab));
}

void MainWindow::forEachPage(const std::function<void(Page&)>& act) {
    for (int i = 0; i < tabs_->count(); ++i)
        if (Page* page = pageAt(i)) act(*page);
}

void MainWindow::dress(Page& page) {
    QFont font = font_;
    constexpr double whole = 100;
    font.setPointSizeF(font_.pointSizeF() * zoom_ / whole);
    // A letter that the font lacks may be in one for symbols, which knows it in black and white only.
    const QString emoji = QStringLiteral("Noto Color Emoji");
    if (QFontDatabase::hasFamily(emoji)) font.setFamilies({QFontInfo(font).family(), emoji});
    page.setFont(font);
}

void MainWindow::setPageFont(const QFont& font) {
    font_ = font;
    forEachPage([this](Page& page) { dress(page); });
}

void MainWindow::setZoom(int percent) {
    zoom_ = std::clamp(percent, leastZoom, mostZoom);
    forEachPage([this](Page& page) { dress(page); });
    say(tr("Zoom: %1%").arg(zoom_));
    Q_EMIT lookChanged();
}

void MainWindow::setLineNumbers(bool shown) {
    numbersAction_->setChecked(shown);
    forEachPage([shown](Page& page) { page.setLineNumbers(shown); });
    Q_EMIT lookChanged();
}

void MainWindow::say(const QString& message) {
    constexpr int duration = 4000;  // milliseconds
    statusBar()->showMessage(message, duration);
}

void MainWindow::followCurrentPage() {
    find_->setPage(currentPage());
    selection_->follow(currentPage());
    showTotal();
}

void MainWindow::showTotal() {
    Page* page = currentPage();
    total_->setText(page ? totalText(*page) : QString());
}

bool MainWindow::event(QEvent* event) {
    const bool done = QMainWindow::event(event);
    if (event->type() == QEvent::Paint && !painted_) {
        painted_ = true;
        followCurrentPage();  // pages may have been added without signals
        QTimer::singleShot(0, this, &MainWindow::shownFirst);
    }
    return done;
}

}  // namespace vemo::notepad
