// SPDX-License-Identifier: MIT
#include "vemo/attributed_text.h"

#include <algorithm>
#include <cassert>

#include "records/run_types.h"

namespace vemo {

std::u16string_view runTypeCode(RunType type) {
    return runTypeCodes[static_cast<std::size_t>(type)];
}

AttributedText::AttributedText(std::u16string_view text, RunType type) : text_(text) {
    runs_.push_back({static_cast<std::uint32_t>(text.size()), type});
}

void AttributedText::Runs::push_back(Run run) {
    append(&run, 1);
}
void AttributedText::Runs::append(const Runs& other) {
    append(other.begin(), other.size());
}

void AttributedText::Runs::append(const Run* runs, std::size_t count) {
    if (many_.empty() && fewCount_ + count <= few_.size()) {
        std::copy_n(runs, count, few_.begin() + fewCount_);
        fewCount_ += static_cast<std::uint32_t>(count);
        return;
    }
    if (many_.empty()) many_.assign(few_.begin(), few_.begin() + fewCount_);
    many_.insert(many_.end(), runs, runs + count);
}

void AttributedText::Runs::reserve(std::size_t count) {
    if (count > few_.size()) many_.reserve(count);
}

bool operator==(const AttributedText::Runs& a, const AttributedText::Runs& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

AttributedTextElement AttributedText::elementAt(std::size_t index) const {
    assert(index < runs_.size());
    std::size_t location = 0;
    for (std::size_t i = 0; i < index; ++i) location += runs_[i].length;
    return {text_.substr(location, runs_[index].length), runs_[index].type};
}

bool AttributedText::hasAttributeOf(RunType type) const {
    return std::any_of(runs_.begin(), runs_.end(), [&](const Run& run) { return run.type == type; });
}

std::vector<RunType> AttributedText::usedAttributes() const {
    std::vector<RunType> types;
    for (const Run& run : runs_) {
        if (run.type != RunType::none && std::find(types.begin(), types.end(), run.type) == types.end())
            types.push_back(run.type);
    }
    return types;
}

void AttributedText::enumerate(const std::function<void(std::u16string_view, RunType, std::size_t)>& visit) const {
    std::size_t location = 0;
    for (const Run& run : runs_) {
        visit(std::u16string_view(text_).substr(location, run.length), run.type, location);
        location += run.length;
    }
}

void AttributedText::append(const AttributedText& other) {
    text_ += other.text_;
    runs_.append(other.runs_);
}

void AttributedText::reserve(std::size_t length, std::size_t runs) {
    text_.reserve(length);
    runs_.reserve(runs);
}

std::u16string AttributedText::description() const {
    if (runs_.size() == 0) return u"AttributedText: {}";
    std::u16string result = u"AttributedText: {\n";
    enumerate([&](std::u16string_view text, RunType type, std::size_t) {
        result += u"\t[\"";
        result += text;
        result += u"\": ";
        if (type == RunType::none)
            result += u"nil";
        else
            result.append(u"\"").append(runTypeCode(type)).append(u"\"");
        result += u"]\n";
    });
    return result + u"}";
}

}  // namespace vemo
