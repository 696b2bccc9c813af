// SPDX-License-Identifier: MIT
#include "c/result.h"

#include <clocale>
#include <cmath>
#include <sstream>

#include "c/failure.h"
#include "c/texts.h"
#include "session/json.h"
#include "session/listing.h"
#include "session/tables.h"

namespace {

using namespace vemo;
using c::LineTexts;
using c::Refusal;

std::optional<std::string> utf8IfAny(const std::optional<std::u16string>& text) {
    return text ? std::optional(utf8(*text)) : std::nullopt;
}

void addValue(LineTexts& texts, const VemoEngine::Result& result, std::size_t index) {
    const Value value = result.lines[index].value();
    if (const auto instant = result.instantOf(index)) {
        texts.instant = session::instantText(*instant);
        texts.milliseconds = std::llround(instant->time_since_epoch().count() * 1000);
        if (const TimeZone* zone = value.timeZone()) texts.zone = utf8(zone->identifier);
        return;
    }
    const auto number = value.decimal();
    if (!number || number->notANumber()) return;
    texts.number = number->toString();
    if (const auto unit = value.string(Attribute::unit)) texts.unit = utf8(*unit);
}

std::unique_ptr<LineTexts> textsOf(const VemoEngine::Result& result, std::size_t index) {
    const auto& line = result.lines[index];
    auto texts = std::make_unique<LineTexts>();
    const AttributedText attributed = line.attributedText();
    const std::u16string& text = attributed.compoundString();
    texts->text = utf8(text);
    attributed.enumerate([&](std::u16string_view run, RunType type, std::size_t) {
        texts->runs.push_back({utf8(run), utf8(runTypeCode(type))});
    });
    const FormattedValue formatted = line.formattedResult();
    texts->regular = utf8IfAny(formatted.regular);
    texts->shortText = utf8IfAny(formatted.shortText);
    addValue(*texts, result, index);
    for (const Note& note : line.notes())
        texts->notes.push_back({utf8(noteKindName(note.kind)), c::bytesOf(text, 0, note.start),
                                c::bytesOf(text, note.start, note.length), utf8(note.message)});
    for (const auto& name : line.names())
        texts->names.push_back({utf8(name.name), c::bytesOf(text, 0, name.start),
                                c::bytesOf(text, name.start, name.length), name.defines});
    if (const auto reason = line.reason()) {
        texts->reasonCode = utf8(reasonCodeName(reason->code));
        texts->reason = utf8(reason->message);
    }
    return texts;
}

// Columns are counted in this locale, whatever the program's: the text is UTF-8.
class Utf8Locale {
public:
    Utf8Locale() : own_(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{})) {
        if (own_) before_ = uselocale(own_);
    }
    ~Utf8Locale() {
        if (!own_) return;
        uselocale(before_);
        freelocale(own_);
    }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t own_;
    locale_t before_{};
};

std::string tableText(const VemoEngine::Result& result) {
    const Utf8Locale locale;
    std::ostringstream out;
    session::printResult(out, result, session::Layout());
    return out.str();
}

}  // namespace

vemo_result::vemo_result(const std::shared_ptr<c::Host>& host, std::u16string text, VemoEngine::Result result)
    : host_(host), text_(std::move(text)), result_(std::move(result)), lines_(result_.lines.size()) {
    if (const FormattedValue* total = result_.context->grandTotalFormatted()) {
        total_ = utf8IfAny(total->regular);
        totalShort_ = utf8IfAny(total->shortText);
    }
    partial_ = result_.context->isGrandTotalPartial();
}

LineTexts& vemo_result::made(std::size_t index) const {
    c::checkIndex(index, lines_.size(), "line");
    if (!lines_[index]) lines_[index] = textsOf(result_, index);
    return *lines_[index];
}

const LineTexts& vemo_result::line(std::size_t index) const {
    const std::lock_guard lock(mutex_);
    return made(index);
}

vemo_text vemo_result::reading(std::size_t index) const {
    {
        const std::lock_guard lock(mutex_);
        const LineTexts& texts = made(index);
        if (texts.readingAsked) return c::handed(texts.reading);
    }
    // Asked without the lock: the engine's thread may be in a callback that reads this result.
    const auto host = host_.lock();
    if (!host) throw Refusal{VEMO_CLOSED, "the engine is destroyed"};
    auto reading = utf8IfAny(host->readingOf(index, text_));
    const std::lock_guard lock(mutex_);
    LineTexts& texts = made(index);
    if (!std::exchange(texts.readingAsked, true)) texts.reading = std::move(reading);
    return c::handed(texts.reading);
}

const std::string& vemo_result::logText() const {
    if (!log_) {
        log_.emplace();
        for (const auto& line : result_.lines) *log_ += utf8(line.extensionsLog());
    }
    return *log_;
}

const std::string& vemo_result::log() const {
    const std::lock_guard lock(mutex_);
    return logText();
}

const std::optional<std::string>& vemo_result::total(bool shortText) const {
    return shortText ? totalShort_ : total_;
}

const std::string& vemo_result::formatted(vemo_format format) const {
    const auto number = static_cast<std::size_t>(format);
    c::checkIndex(number, formatCount, "format");
    const std::lock_guard lock(mutex_);
    auto& kept = formats_[number];
    if (kept) return *kept;
    switch (format) {
        case VEMO_FORMAT_TEXT:
            kept = tableText(result_);
            break;
        case VEMO_FORMAT_CSV:
            kept = session::csvText(session::rowsOf(result_, {}));
            break;
        case VEMO_FORMAT_TSV:
            kept = session::tsvText(session::rowsOf(result_, {}));
            break;
        case VEMO_FORMAT_MARKDOWN:
            kept = session::markdownText(session::rowsOf(result_, {}), session::totalOf(result_, false));
            break;
        case VEMO_FORMAT_HTML:
            kept = session::htmlText(session::rowsOf(result_, {}), session::totalOf(result_, false), "vemo");
            break;
        case VEMO_FORMAT_JSON:
            kept = session::jsonText(result_, logText(), {});
            break;
    }
    return *kept;
}
