// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "base/function_ref.h"
#include "records/context_map.h"
#include "records/remarks.h"

namespace vemo {

class LineResult;
using LineResultPointer = std::shared_ptr<const LineResult>;

// What one line gave. Documents keep one for every line, and look at all of them when one changes: so each is one block
// of memory. The object is followed by the entries it refers to and by its texts.
// (With a struct of vectors, strings and optionals in its place, a changed document of 10,000 lines takes 1.36 to 1.38
// times as long: changedDocument of vemo_bench, seven pairs in one run.)
class LineResult {
    class Key {};  // for `make` alone

public:
    using EntryPointer = ContextMap::EntryPointer;

    // `dependencies` are the entries that the line read, with what it saw; `repeats` is for `repeatsLines`.
    static LineResultPointer make(Value value, const ContextMap& updates, const ContextMap& dependencies,
                                  const AttributedText& text, const FormattedValue& formatted,
                                  const QuickTypeData& quickType, std::u16string_view extensionsLog,
                                  const LineRemarks& remarks = {}, bool repeats = false);
    LineResult(Key, Value value, std::size_t textLength, std::span<EntryPointer> updates, std::span<EntryPointer> seen,
               std::u16string_view texts, bool repeats);
    LineResult(const LineResult&) = delete;
    LineResult& operator=(const LineResult&) = delete;
    ~LineResult();

    const Value& value() const { return value_; }  // without attributes when the line yields nothing
    // True for a line that only shows again what others gave, which the grand total leaves out.
    bool repeatsLines() const { return repeatsLines_ != 0; }

    // The entries it set; those it saw; and the keys under which it saw none.
    std::span<const EntryPointer> updates() const { return {entries(), updateCount_}; }
    std::span<const EntryPointer> seen() const { return {entries() + updateCount_, seenCount_}; }
    void absentKeys(FunctionRef<void(std::u16string_view)> visit) const;

    // True when the line would be read in the same way with this context: what it saw must be unchanged there, and what
    // was absent must still be so.
    bool holdsIn(const Context& context) const;
    void addDependenciesTo(ContextMap& dependencies) const;

    // True when an application is told the same of both: text, runs, result, value, completions and remarks.
    bool tellsSameAs(const LineResult& other) const;

    // About how much memory it takes, with the entries it refers to.
    std::size_t bytes() const;

    std::u16string_view text() const { return {texts(), textLength_}; }
    AttributedText attributedText() const;
    FormattedValue formattedValue() const;
    QuickTypeData quickTypeData() const;
    LineRemarks remarks() const;
    std::u16string_view extensionsLog() const;

private:
    class Reader;
    template <class T>
    class SpaceAfter;

    const EntryPointer* entries() const { return reinterpret_cast<const EntryPointer*>(this + 1); }
    const char16_t* texts() const { return reinterpret_cast<const char16_t*>(entries() + updateCount_ + seenCount_); }

    std::uint32_t textLength_;
    std::uint32_t updateCount_ : 31;
    std::uint32_t repeatsLines_ : 1;
    std::uint32_t seenCount_;
    std::uint32_t unitsAfter_;
    Value value_;
    // After it: updates, entries seen, and in UTF-16 units the line, the absent keys, log, runs, results, tokens,
    // expressions and remarks.
};

}  // namespace vemo
