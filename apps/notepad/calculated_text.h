// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "notepad/calculation.h"

namespace vemo::notepad {

// A page's text as the engine has it: follows the edits, and asks for answers when the event loop has nothing more
// pressing. While one is awaited no other is asked for, so that a person who types on sees answers all the same.
class CalculatedText : public QObject {
    Q_OBJECT

public:
    using Answer = std::shared_ptr<const VemoDocument::Answer>;

    // `text` gives the whole text, for an engine that has not seen it.
    CalculatedText(Calculation& calculation, std::function<QString()> text, QObject* parent = nullptr);

    // In UTF-16 units, as QTextDocument tells its edits.
    void edit(int start, int removed, const QString& added);
    void calculate();

    // Null before the first.
    const Answer& answer() const { return answer_; }
    // True when the latest answer is that of the text as it is.
    bool isCurrent() const { return answer_ && answer_->version == version_; }
    std::optional<std::u16string> readingOf(int line) const;

Q_SIGNALS:
    void asked();  // for an answer to the text as it is
    // `first`: an engine's first one, which tells of every line. Of an answer that is not current, the text has been
    // edited meanwhile, and another one follows.
    void answered(bool first);

private:
    void attach();
    void ask();

    Calculation& calculation_;
    std::function<QString()> text_;
    std::optional<VemoDocument> document_;
    Answer answer_;
    qint64 version_ = 0;
    bool wanted_ = false, scheduled_ = false;
};

}  // namespace vemo::notepad
