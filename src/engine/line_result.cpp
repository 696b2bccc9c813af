// SPDX-License-Identifier: MIT
#include "engine/line_result.h"

#include <algorithm>

namespace vemo {

namespace {

constexpr std::uint32_t runTypeBits = 4;

// How a result text is there.
enum class Presence : char16_t { absent, present, sameAsRegular };

// Numbers take two units, texts their length and their units.
class Writer {
public:
    void units(std::u16string_view text) { block_ += text; }
    void number(std::size_t number) {
        block_ += static_cast<char16_t>(number & 0xffff);
        block_ += static_cast<char16_t>(number >> 16);
    }
    void text(std::u16string_view text) {
        number(text.size());
        units(text);
    }
    void texts(const std::vector<std::u16string>& texts) {
        number(texts.size());
        for (const std::u16string& each : texts) text(each);
    }
    void presence(Presence presence) { block_ += static_cast<char16_t>(presence); }

    std::unique_ptr<char16_t[]> block() const {
        auto copy = std::make_unique_for_overwrite<char16_t[]>(block_.size());
        std::copy(block_.begin(), block_.end(), copy.get());
        return copy;
    }

private:
    std::u16string block_;
};

}  // namespace

// Reads what stands behind the line, in the order in which it was written.
class LineResult::Reader {
public:
    explicit Reader(const LineResult& result) : at_(result.texts_.get() + result.textLength_) {}

    std::size_t number() {
        const std::size_t low = *at_++;
        return low | static_cast<std::size_t>(*at_++) << 16;
    }
    std::u16string_view text() {
        const std::size_t length = number();
        const std::u16string_view text(at_, length);
        at_ += length;
        return text;
    }
    std::vector<std::u16string> texts() {
        std::vector<std::u16string> result(number());
        for (std::u16string& each : result) each = text();
        return result;
    }
    AttributedText runs(std::u16string_view line) {
        AttributedText result;
        const std::size_t count = number();
        result.reserve(line.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t packed = number();
            const std::size_t length = packed >> runTypeBits;
            result.append(AttributedText(line.substr(0, length), static_cast<RunType>(packed & ((1u << runTypeBits) - 1))));
            line.remove_prefix(length);
        }
        return result;
    }
    FormattedValue formatted() {
        FormattedValue result;
        for (auto* text : {&result.regular, &result.shortText}) {
            switch (static_cast<Presence>(*at_++)) {
                case Presence::absent: break;
                case Presence::present: *text = this->text(); break;
                case Presence::sameAsRegular: *text = result.regular; break;
            }
        }
        return result;
    }

private:
    const char16_t* at_;
};

LineResult::LineResult(Value value, ContextMap updates, ContextMap dependencies, const AttributedText& text,
                       const FormattedValue& formatted, const QuickTypeData& quickType,
                       std::u16string_view extensionsLog)
    : textLength_(static_cast<std::uint32_t>(text.compoundString().size())),
      value_(std::move(value)),
      updates_(std::move(updates)),
      dependencies_(std::move(dependencies)) {
    Writer writer;
    writer.units(text.compoundString());
    writer.number(text.elementsCount());
    for (const AttributedText::Run& run : text.runs())
        writer.number(std::size_t{run.length} << runTypeBits | static_cast<std::size_t>(run.type));
    for (const auto* result : {&formatted.regular, &formatted.shortText}) {
        if (!*result) {
            writer.presence(Presence::absent);
        } else if (result != &formatted.regular && *result == formatted.regular) {
            writer.presence(Presence::sameAsRegular);
        } else {
            writer.presence(Presence::present);
            writer.text(**result);
        }
    }
    writer.texts(quickType.tokens);
    writer.texts(quickType.expressions);
    writer.text(extensionsLog);
    texts_ = writer.block();
}

AttributedText LineResult::attributedText() const { return Reader(*this).runs(text()); }

FormattedValue LineResult::formattedValue() const {
    Reader reader(*this);
    reader.runs(text());
    return reader.formatted();
}

QuickTypeData LineResult::quickTypeData() const {
    Reader reader(*this);
    reader.runs(text());
    reader.formatted();
    QuickTypeData data;
    data.tokens = reader.texts();
    data.expressions = reader.texts();
    return data;
}

std::u16string_view LineResult::extensionsLog() const {
    Reader reader(*this);
    reader.runs(text());
    reader.formatted();
    reader.texts();
    reader.texts();
    return reader.text();
}

}  // namespace vemo
