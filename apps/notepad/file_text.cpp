// SPDX-License-Identifier: MIT
#include "notepad/file_text.h"

#include <QCryptographicHash>

#include "session/document_text.h"

namespace vemo::notepad {

Result<FileText> textOf(const std::string& bytes) {
    if (const auto offset = session::firstInvalidByte(bytes))
        return Failure{"it is not UTF-8 text (at byte " + std::to_string(*offset) + ")"};
    if (bytes.find('\0') != bytes.npos) return Failure{"it is no text: it has zero bytes"};
    FileText file;
    const bool mark = bytes.starts_with(session::byteOrderMark);
    const std::size_t start = mark ? session::byteOrderMark.size() : 0;
    file.byteOrderMark = mark;
    file.text = QString::fromUtf8(bytes.data() + start, static_cast<qsizetype>(bytes.size() - start));
    // A file of both kinds of line ends keeps the kind of its first line.
    const qsizetype feed = file.text.indexOf('\n');
    file.carriageReturns = feed > 0 && file.text[feed - 1] == '\r';
    file.text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace('\r', '\n');
    return file;
}

std::string bytesOf(const FileText& file) {
    QString text = file.text;
    if (file.carriageReturns) text.replace('\n', QStringLiteral("\r\n"));
    return std::string(file.byteOrderMark ? session::byteOrderMark : "") + text.toStdString();
}

QByteArray digestOf(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())),
                                    QCryptographicHash::Sha256)
        .toHex();
}

}  // namespace vemo::notepad
