// SPDX-License-Identifier: MIT
#include "notepad/answer_texts.h"

#include <QCoreApplication>

#include "notepad/texts.h"
#include "session/rows.h"

namespace vemo::notepad {

namespace {

constexpr std::int64_t valuePrecision = 12;

session::Row rowOf(const AnsweredLine& line) {
    VemoEngine::Result result;
    result.lines.push_back(line);
    return session::rowOf(result, 0, {});
}

// The digits of a number, however they are grouped, without zeros at its end.
QString digitsOf(const std::string& number) {
    QString digits;
    for (const QChar c : QString::fromStdString(number))
        if (c.isDigit()) digits += c;
    while (digits.endsWith(u'0')) digits.chop(1);
    return digits;
}

QString tr(const char* text) {
    return QCoreApplication::translate("Answer", text);
}

}  // namespace

QString plainNumber(const AnsweredLine& line) {
    return QString::fromStdString(rowOf(line).number);
}

QString valueText(Calculation& calculation, const AnsweredLine& line) {
    const auto shown = line.formattedResult().regular;
    const Value value = line.value();
    if (VemoEngine* engine = calculation.engine(); engine && value.has(Attribute::decimal)) {
        Context context;
        context.setPrecision(valuePrecision);
        const auto exact = engine->format(value, context);
        if (exact && exact->regular) return toQt(*exact->regular);
    }
    return shown ? toQt(*shown) : QString();
}

QString answerTip(const AnsweredLine& line, const std::optional<std::u16string>& reading) {
    const session::Row row = rowOf(line);
    QStringList parts;
    const auto part = [&](const QString& text) { parts << text.toHtmlEscaped(); };
    if (row.result.empty()) {
        if (const auto reason = line.reason()) part(toQt(reason->message));
    } else {
        parts << QStringLiteral("<b>%1</b>").arg(QString::fromStdString(row.result).toHtmlEscaped());
        const QString exact = QString::fromStdString(session::plainResult(row));
        const bool rounded = digitsOf(row.result) != digitsOf(row.number);
        if (!exact.isEmpty() && rounded && !line.value().has(Attribute::date)) part(tr("exactly %1").arg(exact));
        if (reading) part(QStringLiteral("= ") + toQt(*reading));
    }
    for (const Note& note : line.notes()) part(toQt(note.message));
    return parts.join(QStringLiteral("<br>"));
}

}  // namespace vemo::notepad
