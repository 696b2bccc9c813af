// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <string>

#include "vemo/result.h"

namespace vemo::notepad {

// A document as it is edited, and what must be kept of its file when it is written again.
struct FileText {
    QString text;  // lines end with a line feed
    bool byteOrderMark = false;
    bool carriageReturns = false;  // before the line feeds of the file
};

// A failure says why the bytes are no text.
Result<FileText> textOf(const std::string& bytes);
std::string bytesOf(const FileText& file);

// A digest that tells one content from another.
QByteArray digestOf(const std::string& bytes);

}  // namespace vemo::notepad
