// SPDX-License-Identifier: MIT
#include "prompt/edited_line.h"

#include "session/characters.h"

namespace vemo::cli {

namespace {

// Signs of ASCII end words; everything else may be in one.
bool isInWord(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_' || c >= 0xc0;
}

}  // namespace

void EditedLine::set(std::u16string_view text) {
    text_ = text;
    cursor_ = text_.size();
}

void EditedLine::insert(std::u16string_view text) {
    text_.insert(cursor_, text);
    cursor_ += text.size();
}

void EditedLine::replaceBefore(std::size_t units, std::u16string_view text) {
    erase(cursor_ - units, cursor_, false);
    insert(text);
}

std::size_t EditedLine::wordLeft() const {
    std::size_t at = cursor_;
    while (at > 0 && !isInWord(text_[at - 1])) --at;
    while (at > 0 && isInWord(text_[at - 1])) --at;
    return at;
}

std::size_t EditedLine::wordRight() const {
    std::size_t at = cursor_;
    while (at < text_.size() && !isInWord(text_[at])) ++at;
    while (at < text_.size() && isInWord(text_[at])) ++at;
    return at;
}

void EditedLine::erase(std::size_t from, std::size_t to, bool keeps) {
    if (keeps && to > from) kept_ = text_.substr(from, to - from);
    text_.erase(from, to - from);
    cursor_ = from;
}

void EditedLine::swap() {
    const std::size_t right = session::nextStop(text_, cursor_);
    const std::size_t middle = right > cursor_ ? cursor_ : session::previousStop(text_, cursor_);
    if (middle == 0) return;
    const std::size_t left = session::previousStop(text_, middle);
    const std::u16string first = text_.substr(left, middle - left), second = text_.substr(middle, right - middle);
    text_.replace(left, right - left, second + first);
    cursor_ = right;
}

bool EditedLine::obey(Press press) {
    switch (press) {
        case Press::left:
            cursor_ = session::previousStop(text_, cursor_);
            return true;
        case Press::right:
            cursor_ = session::nextStop(text_, cursor_);
            return true;
        case Press::wordLeft:
            cursor_ = wordLeft();
            return true;
        case Press::wordRight:
            cursor_ = wordRight();
            return true;
        case Press::start:
            cursor_ = 0;
            return true;
        case Press::end:
            cursor_ = text_.size();
            return true;
        case Press::erase:
            erase(session::previousStop(text_, cursor_), cursor_, false);
            return true;
        case Press::eraseHere:
        case Press::endOrErase:
            erase(cursor_, session::nextStop(text_, cursor_), false);
            return true;
        case Press::eraseWord:
            erase(wordLeft(), cursor_, true);
            return true;
        case Press::eraseWordRight:
            erase(cursor_, wordRight(), true);
            return true;
        case Press::eraseToStart:
            erase(0, cursor_, true);
            return true;
        case Press::eraseToEnd:
            erase(cursor_, text_.size(), true);
            return true;
        case Press::putBack:
            insert(kept_);
            return true;
        case Press::swap:
            swap();
            return true;
        default:
            return false;
    }
}

}  // namespace vemo::cli
