// SPDX-License-Identifier: MIT
#include "notepad/selection_totals.h"

#include <QTextCursor>
#include <algorithm>
#include <vector>

#include "notepad/line_editing.h"
#include "notepad/page.h"
#include "notepad/texts.h"

namespace vemo::notepad {

namespace {

constexpr int delay = 40;               // milliseconds; a selection is often on its way to a larger one
constexpr std::size_t mostMixed = 500;  // values of several units

// A name for a value, of letters only.
std::u16string nameOf(std::size_t index) {
    std::u16string name = u"selected";
    do name += static_cast<char16_t>(u'a' + index % 26);
    while ((index /= 26) > 0);
    return name;
}

// True for plain numbers, and for amounts of one unit.
bool areAlike(const std::vector<Value>& values) {
    const auto unit = values.front().string(Attribute::unit);
    return std::all_of(values.begin(), values.end(), [&](const Value& value) {
        return value.has(Attribute::decimal) && !value.isNotANumber() && !value.has(Attribute::date) &&
               !value.has(Attribute::precision) && value.string(Attribute::unit) == unit;
    });
}

// True for a note that does not make a sum doubtful.
bool isHarmless(NoteKind kind) {
    return kind == NoteKind::oldRates || kind == NoteKind::averageLength || kind == NoteKind::metricTon;
}

}  // namespace

SelectionTotals::SelectionTotals(Calculation& calculation, QObject* parent)
    : QObject(parent), calculation_(calculation) {
    soon_.setSingleShot(true);
    soon_.setInterval(delay);
    connect(&soon_, &QTimer::timeout, this, &SelectionTotals::calculate);
    connect(&calculation_, &Calculation::started, this, [this] { document_.reset(); });
}

void SelectionTotals::follow(Page* page) {
    if (page_) page_->disconnect(this), page_->disconnect(&soon_);
    page_ = page;
    const auto start = qOverload<>(&QTimer::start);
    if (page) {
        connect(page, &QPlainTextEdit::selectionChanged, &soon_, start);
        connect(page, &Page::answersSettled, &soon_, start);
    }
    soon_.start();
}

void SelectionTotals::calculate() {
    if (document_) document_->close();
    std::vector<Value> values;
    if (page_ && page_->textCursor().hasSelection()) {
        const SelectedLines lines = selectedLines(page_->textCursor());
        for (int line = lines.first; line <= lines.last && lines.first < lines.last; ++line) {
            const LineList::Line* told = page_->lines().told(line);
            if (!told) continue;
            Value value = told->value();
            const bool none = value.isEmpty() || value.has(Attribute::error) || value.isNotANumber();
            if (!none) values.push_back(std::move(value));
        }
    }
    if (values.size() < 2) return Q_EMIT changed({});
    ask(values);
}

void SelectionTotals::ask(const std::vector<Value>& values) {
    const QString count = tr("Count: %1").arg(values.size());
    const bool alike = areAlike(values);
    if (!calculation_.isReady() || (!alike && values.size() > mostMixed)) return Q_EMIT changed(count);
    // Values are handed in under names, so that no text of theirs is read again.
    Context context = calculation_.context();
    std::u16string text;
    const std::u16string sum = nameOf(values.size()), number = nameOf(values.size() + 1);
    context.setValue(Value(DecimalNumber::fromUInt64(values.size())), number);
    if (alike) {
        DecimalNumber total;
        for (const Value& value : values) total = total.adding(*value.decimal());
        context.setValue(values.front().with(total), sum);
    } else {
        // From the last to the first, whose unit the sum then has.
        for (std::size_t i = values.size(); i-- > 0;) {
            const std::u16string name = nameOf(i);
            context.setValue(values[i], name);
            text += sum + (i + 1 == values.size() ? u" = " + name : u" = " + sum + u" + " + name) + u'\n';
        }
    }
    text += sum + u'\n' + sum + u" / " + number;
    document_.emplace(*calculation_.engine(), text, 0, context);
    document_->calculate([this, count](const auto& answer) {
        const auto& lines = answer->result.lines;
        const auto shown = [&](std::size_t fromEnd) {
            return toQt(lines[lines.size() - fromEnd].formattedResult().regular.value_or(u""));
        };
        const bool failed = std::any_of(lines.begin(), lines.end(), [](const auto& line) {
            const auto notes = line.notes();
            return line.reason() || !line.formattedResult().regular ||
                   std::any_of(notes.begin(), notes.end(), [](const Note& note) { return !isHarmless(note.kind); });
        });
        Q_EMIT changed(failed ? count : tr("Sum: %1   Average: %2   %3").arg(shown(2), shown(1), count));
    });
}

}  // namespace vemo::notepad
