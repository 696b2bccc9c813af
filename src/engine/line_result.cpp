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
    void hash(std::size_t hash) {
        number(hash & 0xffffffff);
        number(hash >> 32);
    }
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
    static Reader atLog(const LineResult& result) {
        Reader reader(result);
        reader.absentKeys([](std::u16string_view, std::size_t) { return true; });
        return reader;
    }
    static Reader atRuns(const LineResult& result) {
        Reader reader = atLog(result);
        reader.text();
        return reader;
    }

    // With their hashes; stops when `visit` returns false, which is given back.
    template <class Visit>
    bool absentKeys(Visit&& visit) {
        for (std::size_t count = number(); count > 0; --count) {
            const std::size_t hash = number() | number() << 32;
            if (!visit(text(), hash)) return false;
        }
        return true;
    }

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

LineResult::LineResult(Value value, ContextMap updates, const ContextMap& dependencies, const AttributedText& text,
                       const FormattedValue& formatted, const QuickTypeData& quickType,
                       std::u16string_view extensionsLog)
    : textLength_(static_cast<std::uint32_t>(text.compoundString().size())),
      value_(std::move(value)),
      updates_(std::move(updates)) {
    Writer writer;
    writer.units(text.compoundString());
    std::vector<const ContextMap::Entry*> absent;
    dependencies.all([&](const auto& entry) {
        if (entry.value().isEmptyValue()) absent.push_back(&entry);
        else seen_.setShared(entry);
        return true;
    });
    writer.number(absent.size());
    for (const auto* entry : absent) {
        writer.hash(entry->hash());
        writer.text(entry->key());
    }
    writer.text(extensionsLog);
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
    texts_ = writer.block();
}

bool LineResult::holdsIn(const Context& context) const {
    const ContextMap& data = context.data();
    return Reader(*this).absentKeys([&](std::u16string_view key, std::size_t hash) {
        const IsEquatable* present = data.find(key, hash);
        return !present || present->isEmptyValue();
    }) && seen_.all([&](const auto& entry) {
        const IsEquatable* present = data.find(entry.key(), entry.hash());
        return present && present->isEqual(entry.value());
    });
}

void LineResult::addDependenciesTo(ContextMap& dependencies) const {
    absentKeys([&](std::u16string_view key) { dependencies.set(key, Value()); });
    seen_.all([&](const auto& entry) {
        dependencies.setShared(entry);
        return true;
    });
}

void LineResult::absentKeys(FunctionRef<void(std::u16string_view)> visit) const {
    Reader(*this).absentKeys([&](std::u16string_view key, std::size_t) {
        visit(key);
        return true;
    });
}

void LineResult::prefetchPlaces(const ContextMap& data) const {
    updates_.prefetchEntries();
    seen_.prefetchEntries();
    Reader(*this).absentKeys([&](std::u16string_view, std::size_t hash) {
        data.prefetchPlace(hash);
        return true;
    });
}

AttributedText LineResult::attributedText() const { return Reader::atRuns(*this).runs(text()); }

FormattedValue LineResult::formattedValue() const {
    Reader reader = Reader::atRuns(*this);
    reader.runs(text());
    return reader.formatted();
}

QuickTypeData LineResult::quickTypeData() const {
    Reader reader = Reader::atRuns(*this);
    reader.runs(text());
    reader.formatted();
    QuickTypeData data;
    data.tokens = reader.texts();
    data.expressions = reader.texts();
    return data;
}

std::u16string_view LineResult::extensionsLog() const { return Reader::atLog(*this).text(); }

}  // namespace vemo
