// SPDX-License-Identifier: MIT
#include "notepad/calculated_text.h"

#include <QTimer>

#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

// The engine ends a line at more characters than a QTextDocument does.
QString engineText(QString text) {
    for (QChar& unit : text) {
        if (unit == QChar::ParagraphSeparator)
            unit = u'\n';
        else if (unit == u'\r' || unit == u'\u0085' || unit == QChar::LineSeparator)
            unit = u' ';
    }
    return text;
}

}  // namespace

CalculatedText::CalculatedText(Calculation& calculation, std::function<QString()> text, QObject* parent)
    : QObject(parent), calculation_(calculation), text_(std::move(text)) {
    connect(&calculation_, &Calculation::started, this, &CalculatedText::attach);
    connect(&calculation_, &Calculation::contextChanged, this, &CalculatedText::calculate);
    if (calculation_.engine()) attach();
}

void CalculatedText::edit(int start, int removed, const QString& added) {
    ++version_;
    if (!document_) return;
    document_->edit(static_cast<std::size_t>(start), static_cast<std::size_t>(removed), viewOf(engineText(added)),
                    version_);
    calculate();
}

void CalculatedText::calculate() {
    wanted_ = true;
    if (scheduled_ || !document_ || document_->isCalculating()) return;
    scheduled_ = true;
    QTimer::singleShot(0, this, &CalculatedText::ask);
}

std::optional<std::u16string> CalculatedText::readingOf(int line) const {
    // Asked only then, for it would wait for a calculation under way.
    return document_ && isCurrent() ? document_->readingOf(static_cast<std::size_t>(line)) : std::nullopt;
}

void CalculatedText::attach() {
    const QString text = engineText(text_());
    document_.emplace(*calculation_.engine(), std::u16string(viewOf(text)), version_, calculation_.context());
    answer_ = nullptr;
    calculate();
}

void CalculatedText::ask() {
    scheduled_ = false;
    if (!wanted_ || !document_ || document_->isCalculating()) return;
    wanted_ = false;
    Q_EMIT asked();
    document_->calculate([this](const Answer& answer) {
        const bool first = !answer_;
        answer_ = answer;
        Q_EMIT answered(first);
        if (wanted_) calculate();
    });
}

}  // namespace vemo::notepad
