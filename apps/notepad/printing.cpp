// SPDX-License-Identifier: MIT
#include "notepad/printing.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextLayout>
#include <algorithm>
#include <memory>
#include <vector>

#include "notepad/line_formats.h"
#include "notepad/texts.h"
#include "notepad/theme.h"

namespace vemo::notepad {

namespace {

constexpr double answerShare = 0.36;  // of the width, at most
constexpr double gap = 1;             // between text and answer, in heights of a row
constexpr int mostWide = 1'000'000;

QString translated(const char* text) {
    return QCoreApplication::translate("Printing", text);
}

// A text in rows of a width.
struct Block {
    std::unique_ptr<QTextLayout> layout;
    qreal height = 0, width = 0;
};

Block blockOf(const QString& text, const QFont& font, QPaintDevice& device, qreal width, Qt::Alignment alignment,
              const LineFormats& formats = {}) {
    Block block{std::make_unique<QTextLayout>(text, font, &device), 0, 0};
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    block.layout->setTextOption(option);
    block.layout->setFormats(formats);
    block.layout->beginLayout();
    for (QTextLine row = block.layout->createLine(); row.isValid(); row = block.layout->createLine()) {
        row.setLineWidth(width);
        row.setPosition({0, block.height});
        block.height += row.height();
        block.width = std::max(block.width, row.naturalTextWidth());
    }
    block.layout->endLayout();
    return block;
}

// A line with its answer: the answer stands in the first row, or where it has no room there, below.
struct Row {
    Block text, answer;
    QColor color;
    qreal answerTop = 0, height = 0;
    bool below = false;  // the answer has rows of its own
    bool ruled = false;  // a line is drawn above
};

class Paper {
public:
    Paper(const Printout& printout, QPagedPaintDevice& device) : printout_(printout), device_(device) {
        const QRectF area = device.pageLayout().paintRectPixels(device_.logicalDpiX());
        width_ = area.width();
        const QFontMetricsF metrics(printout.font, &device);
        rowHeight_ = metrics.height();
        height_ = area.height() - 2 * rowHeight_;
        for (const auto& line : printout.result.lines) add(line);
        addTotal();
        paginate();
    }

    int pages() const { return static_cast<int>(starts_.size()); }

    void paint(QPainter& painter, int page) const {
        const std::size_t from = starts_[static_cast<std::size_t>(page)];
        const std::size_t to = page + 1 < pages() ? starts_[static_cast<std::size_t>(page) + 1] : rows_.size();
        const Theme& theme = Theme::light();
        qreal y = 0;
        for (std::size_t i = from; i < to; ++i) {
            const Row& row = rows_[i];
            if (row.ruled) {
                painter.setPen(QPen(theme.divider, rowHeight_ / 20));
                const qreal rule = y + rowHeight_ / 4;
                painter.drawLine(QPointF(0, rule), QPointF(width_, rule));
            }
            painter.setPen(theme.text);
            row.text.layout->draw(&painter, {0, y});
            if (row.answer.layout) {
                painter.setPen(row.color);
                row.answer.layout->draw(&painter, {row.below ? 0 : width_ - row.answer.width, y + row.answerTop});
            }
            y += row.height;
        }
        painter.setPen(theme.reason);
        painter.setFont(printout_.font);
        const QRectF foot(0, height_ + rowHeight_, width_, rowHeight_);
        const QString number = translated("Page %1 of %2").arg(page + 1).arg(pages());
        const qreal numberWidth = painter.fontMetrics().horizontalAdvance(number);
        painter.drawText(foot, Qt::AlignRight, number);
        painter.drawText(foot, Qt::AlignLeft,
                         painter.fontMetrics().elidedText(printout_.title, Qt::ElideMiddle,
                                                          static_cast<int>(width_ - numberWidth - rowHeight_)));
    }

private:
    void add(const VemoEngine::Result::Line& line) {
        const FormattedValue value = line.formattedResult();
        const auto reason = line.reason();
        QString answer = value.regular ? toQt(*value.regular) : reason ? toQt(reason->message) : QString();
        add(toQt(line.attributedText().compoundString()), answer,
            value.regular ? Theme::light().answer : Theme::light().reason, formatsOf(line, Theme::light()));
    }

    void add(const QString& text, const QString& answer, QColor color, const LineFormats& formats) {
        Row row;
        row.color = color;
        qreal width = width_;
        if (!answer.isEmpty()) {
            row.answer = blockOf(answer, printout_.font, device_, mostWide, Qt::AlignLeft);
            if (row.answer.width <= width_ * answerShare)
                width = width_ - row.answer.width - gap * rowHeight_;
            else
                row.answer = blockOf(answer, printout_.font, device_, width_, Qt::AlignRight);
        }
        row.text = blockOf(text, printout_.font, device_, width, Qt::AlignLeft, sized(formats));
        row.below = row.answer.layout && width == width_;
        // Beside a header, which is larger, both stand on one line.
        if (row.below)
            row.answerTop = row.text.height;
        else if (row.answer.layout)
            row.answerTop = std::max(0.0, row.text.layout->lineAt(0).ascent() - row.answer.layout->lineAt(0).ascent());
        row.height = std::max(row.text.height, row.answerTop + row.answer.height);
        rows_.push_back(std::move(row));
    }

    // Sizes that are told by steps, in points of the font on the paper.
    LineFormats sized(LineFormats formats) const {
        constexpr double factors[] = {1, 1.2, 1.5, 2};
        for (auto& range : formats) {
            const int steps = range.format.intProperty(QTextFormat::FontSizeAdjustment);
            range.format.clearProperty(QTextFormat::FontSizeAdjustment);
            if (steps > 0) range.format.setFontPointSize(printout_.font.pointSizeF() * factors[std::min(steps, 3)]);
        }
        return formats;
    }

    void addTotal() {
        if (printout_.total.isEmpty()) return;
        QFont font = printout_.font;
        font.setBold(true);
        Row row;
        row.ruled = true;
        row.color = Theme::light().answer;
        row.answer = blockOf(printout_.total, font, device_, width_, Qt::AlignRight);
        row.text = blockOf(QString(), font, device_, width_, Qt::AlignLeft);
        row.below = true;
        row.answerTop = rowHeight_ / 2;
        row.height = row.answerTop + row.answer.height;
        rows_.push_back(std::move(row));
    }

    // Finds the rows that begin a page. A row that is higher than a page has one of its own.
    void paginate() {
        qreal y = height_;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (y + rows_[i].height > height_) {
                starts_.push_back(i);
                y = 0;
            }
            y += rows_[i].height;
        }
        if (starts_.empty()) starts_.push_back(0);
    }

    const Printout& printout_;
    QPagedPaintDevice& device_;
    qreal width_ = 0, height_ = 0, rowHeight_ = 0;
    std::vector<Row> rows_;
    std::vector<std::size_t> starts_;
};

}  // namespace

int print(const Printout& printout, QPagedPaintDevice& device, int from, int to) {
    const Paper paper(printout, device);
    const int first = std::max(from, 1), last = to > 0 ? std::min(to, paper.pages()) : paper.pages();
    QPainter painter(&device);
    for (int page = first; page <= last; ++page) {
        if (page > first) device.newPage();
        paper.paint(painter, page - 1);
    }
    return paper.pages();
}

QString writePdf(const Printout& printout, const QString& name) {
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    {
        QPdfWriter writer(&file);
        writer.setResolution(600);
        writer.setTitle(printout.title);
        writer.setCreator("Vemo");
        const bool letter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
        writer.setPageLayout(QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait,
                                         QMarginsF(18, 16, 18, 14), QPageLayout::Millimeter));
        print(printout, writer);
    }
    return file.commit() ? QString() : file.errorString();
}

}  // namespace vemo::notepad
