// SPDX-License-Identifier: MIT
#include "records/line_result.h"

#include <algorithm>

#include "records/context_parts.h"
#include "records/run_types.h"

namespace vemo {

namespace {

// Whether a result text is stored.
enum class Presence : char16_t { absent, present, sameAsRegular };

// Numbers take two units, texts their length and their units.
class Writer {
public:
    Writer() { block_.reserve(usual); }
    std::u16string_view block() const { return block_; }

    void units(std::u16string_view text) { block_ += text; }
    void hash(std::size_t hash) {
        number(hash & 0xffffffff);
        number(hash >> 32);
    }
    void number(std::size_t number) {
        const char16_t units[] = {static_cast<char16_t>(number & 0xffff), static_cast<char16_t>(number >> 16)};
        block_.append(units, std::size(units));
    }
    void text(std::u16string_view text) {
        number(text.size());
        units(text);
    }
    void texts(const std::vector<std::u16string>& texts) {
        number(texts.size());
        for (const std::u16string& each : texts) text(each);
    }
    void runs(const AttributedText& text) {
        // A run that is longer than a number can tell beside the type is stored as several.
        constexpr std::size_t longest = UINT32_MAX >> runTypeBits;
        std::size_t count = text.elementsCount();
        for (const AttributedText::Run& run : text.runs()) count += run.length > 0 ? (run.length - 1) / longest : 0;
        number(count);
        for (const AttributedText::Run& run : text.runs()) {
            std::size_t left = run.length;
            for (; left > longest; left -= longest) number(longest << runTypeBits | static_cast<std::size_t>(run.type));
            number(left << runTypeBits | static_cast<std::size_t>(run.type));
        }
    }
    void remarks(const LineRemarks& remarks) {
        number(remarks.notes.size() << 1 | (remarks.reason ? 1 : 0));
        for (const Note& note : remarks.notes) {
            number(static_cast<std::size_t>(note.kind));
            number(note.start);
            number(note.length);
            text(note.message);
        }
        if (!remarks.reason) return;
        number(static_cast<std::size_t>(remarks.reason->code));
        text(remarks.reason->message);
    }
    void formatted(const FormattedValue& formatted) {
        for (const auto* result : {&formatted.regular, &formatted.shortText}) {
            if (!*result) {
                presence(Presence::absent);
            } else if (result != &formatted.regular && *result == formatted.regular) {
                presence(Presence::sameAsRegular);
            } else {
                presence(Presence::present);
                text(**result);
            }
        }
    }

private:
    static constexpr std::size_t usual = 256;  // units

    void presence(Presence presence) { block_ += static_cast<char16_t>(presence); }

    std::u16string block_;
};

}  // namespace

// Reads what stands after the line, in the order in which it was written.
class LineResult::Reader {
public:
    explicit Reader(const LineResult& result)
        : at_(result.texts() + result.textLength_), end_(result.texts() + result.unitsAfter_) {}
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

    // Visits every key with its hash. Stops and returns false when `visit` returns false.
    template <class Visit>
    bool absentKeys(Visit&& visit) {
        for (std::size_t count = number(); count > 0; --count) {
            const std::size_t hash = number() | number() << 32;
            if (!visit(text(), hash)) return false;
        }
        return true;
    }

    // What has not been read.
    std::u16string_view rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }

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
            result.append(
                AttributedText(line.substr(0, length), static_cast<RunType>(packed & ((1u << runTypeBits) - 1))));
            line.remove_prefix(length);
        }
        return result;
    }
    LineRemarks remarks() {
        const std::size_t counts = number();
        LineRemarks result;
        result.notes.resize(counts >> 1);
        for (Note& note : result.notes) {
            note.kind = static_cast<NoteKind>(number());
            note.start = static_cast<std::uint32_t>(number());
            note.length = static_cast<std::uint32_t>(number());
            note.message = text();
        }
        if ((counts & 1) != 0) {
            Reason& reason = result.reason.emplace();
            reason.code = static_cast<ReasonCode>(number());
            reason.message = text();
        }
        return result;
    }
    FormattedValue formatted() {
        FormattedValue result;
        for (auto* text : {&result.regular, &result.shortText}) {
            switch (static_cast<Presence>(*at_++)) {
                case Presence::absent:
                    break;
                case Presence::present:
                    *text = this->text();
                    break;
                case Presence::sameAsRegular:
                    *text = result.regular;
                    break;
            }
        }
        return result;
    }

private:
    const char16_t* at_;
    const char16_t* end_;
};

// Allocates one object together with that many bytes after it.
template <class T>
class LineResult::SpaceAfter {
public:
    using value_type = T;

    explicit SpaceAfter(std::size_t bytes) : bytes_(bytes) {}
    template <class U>
    SpaceAfter(const SpaceAfter<U>& other) : bytes_(other.bytes()) {}

    std::size_t bytes() const { return bytes_; }
    T* allocate(std::size_t count) { return static_cast<T*>(::operator new(count * sizeof(T) + bytes_)); }
    void deallocate(T* address, std::size_t) { ::operator delete(address); }
    friend bool operator==(const SpaceAfter&, const SpaceAfter&) { return true; }

private:
    std::size_t bytes_;
};

LineResultPointer LineResult::make(Value value, const ContextMap& updates, const ContextMap& dependencies,
                                   const AttributedText& text, const FormattedValue& formatted,
                                   const QuickTypeData& quickType, std::u16string_view extensionsLog,
                                   const LineRemarks& remarks, bool repeats) {
    std::vector<EntryPointer> written;
    updates.all([&](const auto& entry) {
        written.emplace_back(&entry);
        return true;
    });
    std::vector<EntryPointer> seen;
    std::vector<const ContextMap::Entry*> absent;
    dependencies.all([&](const auto& entry) {
        if (entry.value().isEmptyValue())
            absent.push_back(&entry);
        else
            seen.emplace_back(&entry);
        return true;
    });
    Writer writer;
    writer.units(text.compoundString());
    writer.number(absent.size());
    for (const auto* entry : absent) {
        writer.hash(entry->hash());
        writer.text(entry->key());
    }
    writer.text(extensionsLog);
    writer.runs(text);
    writer.formatted(formatted);
    writer.texts(quickType.tokens);
    writer.texts(quickType.expressions);
    writer.remarks(remarks);
    const std::size_t space =
        (written.size() + seen.size()) * sizeof(EntryPointer) + writer.block().size() * sizeof(char16_t);
    return std::allocate_shared<LineResult>(SpaceAfter<LineResult>(space), Key(), std::move(value),
                                            text.compoundString().size(), written, seen, writer.block(), repeats);
}

LineResult::LineResult(Key, Value value, std::size_t textLength, std::span<EntryPointer> updates,
                       std::span<EntryPointer> seen, std::u16string_view texts, bool repeats)
    : textLength_(static_cast<std::uint32_t>(textLength)),
      updateCount_(static_cast<std::uint32_t>(updates.size()) & 0x7fffffff),
      repeatsLines_(repeats ? 1 : 0),
      seenCount_(static_cast<std::uint32_t>(seen.size())),
      unitsAfter_(static_cast<std::uint32_t>(texts.size())),
      value_(std::move(value)) {
    auto* entries = const_cast<EntryPointer*>(this->entries());
    entries = std::uninitialized_move(updates.begin(), updates.end(), entries);
    std::uninitialized_move(seen.begin(), seen.end(), entries);
    std::copy(texts.begin(), texts.end(), const_cast<char16_t*>(this->texts()));
}

LineResult::~LineResult() {
    for (const EntryPointer& entry : updates()) entry.~EntryPointer();
    for (const EntryPointer& entry : seen()) entry.~EntryPointer();
}

bool LineResult::tellsSameAs(const LineResult& other) const {
    if (this == &other) return true;
    return text() == other.text() && Reader::atLog(*this).rest() == Reader::atLog(other).rest() &&
           value_.isEqual(other.value_);
}

std::size_t LineResult::bytes() const {
    constexpr std::size_t entry = sizeof(EntryPointer) + sizeof(ContextMap::Entry) + 32;  // and a key of usual length
    return sizeof(LineResult) + (updateCount_ + seenCount_) * entry + unitsAfter_ * sizeof(char16_t);
}

bool LineResult::holdsIn(const Context& context) const {
    const ContextMap& data = ContextParts::data(context);
    // The entries it saw come first: where one has changed, the absent keys need not be read.
    const auto entries = seen();
    return std::all_of(entries.begin(), entries.end(),
                       [&](const EntryPointer& entry) {
                           const IsEquatable* present = data.find(entry->key(), entry->hash());
                           return present && present->isEqual(entry->value());
                       }) &&
           Reader(*this).absentKeys([&](std::u16string_view key, std::size_t hash) {
               const IsEquatable* present = data.find(key, hash);
               return !present || present->isEmptyValue();
           });
}

void LineResult::addDependenciesTo(ContextMap& dependencies) const {
    absentKeys([&](std::u16string_view key) { dependencies.set(key, Value()); });
    for (const EntryPointer& entry : seen()) dependencies.setShared(*entry);
}

void LineResult::absentKeys(FunctionRef<void(std::u16string_view)> visit) const {
    Reader(*this).absentKeys([&](std::u16string_view key, std::size_t) {
        visit(key);
        return true;
    });
}

AttributedText LineResult::attributedText() const {
    return Reader::atRuns(*this).runs(text());
}

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

LineRemarks LineResult::remarks() const {
    Reader reader = Reader::atRuns(*this);
    reader.runs(text());
    reader.formatted();
    reader.texts();
    reader.texts();
    return reader.remarks();
}

std::u16string_view LineResult::extensionsLog() const {
    return Reader::atLog(*this).text();
}

}  // namespace vemo
