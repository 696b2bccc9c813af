// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vemo {

// What a run of text is, for colouring.
enum class RunType : std::uint8_t {
    none,
    variable,
    parenthesis,
    number,
    comment,
    unit,
    header,
    label,
    function,
    operatorWord,
    operatorSymbol,
};

// The code an application receives: "var", "prnth", "num", "cmnt", "unit", "hdr", "lbl", "fn",
// "oprtr", "oprtrsmb"; empty for none.
std::u16string_view runTypeCode(RunType type);

// One run with its text.
struct AttributedTextElement {
    std::u16string text;
    RunType type = RunType::none;

    friend bool operator==(const AttributedTextElement&, const AttributedTextElement&) = default;
};

// A text cut into consecutive typed runs. Runs are neither merged nor normalised; ranges are in UTF-16
// units. Not synchronised.
class AttributedText {
public:
    struct Run {
        std::uint32_t length;
        RunType type;
        friend bool operator==(const Run&, const Run&) = default;
    };

    // A list that needs no allocation for one or two runs. (Room for more would make the elements of a line so large
    // that those of a document lie scattered in memory: measure before you change it.)
    class Runs {
    public:
        const Run* begin() const { return many_.empty() ? few_.data() : many_.data(); }
        const Run* end() const { return begin() + size(); }
        std::size_t size() const { return many_.empty() ? fewCount_ : many_.size(); }
        const Run& operator[](std::size_t index) const { return begin()[index]; }
        void append(const Runs& other);
        void push_back(Run run);
        void reserve(std::size_t count);
        friend bool operator==(const Runs& a, const Runs& b);

    private:
        void append(const Run* runs, std::size_t count);

        std::array<Run, 2> few_{};
        std::uint32_t fewCount_ = 0;
        std::vector<Run> many_;  // all runs, once there are more
    };

    AttributedText() = default;
    // One run.
    explicit AttributedText(std::u16string_view text, RunType type = RunType::none);

    std::size_t elementsCount() const { return runs_.size(); }
    // The index must be below `elementsCount`.
    AttributedTextElement elementAt(std::size_t index) const;
    // The whole text.
    const std::u16string& compoundString() const { return text_; }
    bool hasAttributeOf(RunType type) const;
    std::vector<RunType> usedAttributes() const;  // distinct, without none, in order of appearance
    // The runs, without their texts.
    const Runs& runs() const { return runs_; }
    // Calls `visit(text, type, location)` once per run, in order.
    void enumerate(const std::function<void(std::u16string_view, RunType, std::size_t)>& visit) const;
    // Adds the runs of another text after these.
    void append(const AttributedText& other);
    // Makes room for a text of so many UTF-16 units and runs.
    void reserve(std::size_t length, std::size_t runs);

    // For debugging.
    std::u16string description() const;
    friend bool operator==(const AttributedText&, const AttributedText&) = default;

private:
    std::u16string text_;
    Runs runs_;
};

// The result text of a line: in full, and abbreviated where a formatter provides that.
struct FormattedValue {
    std::optional<std::u16string> regular;
    std::optional<std::u16string> shortText;

    friend bool operator==(const FormattedValue&, const FormattedValue&) = default;
};

}  // namespace vemo
