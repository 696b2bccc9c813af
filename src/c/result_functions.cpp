// SPDX-License-Identifier: MIT
// The functions that read results.
#include "c/failure.h"
#include "c/result.h"
#include "c/texts.h"

namespace {

using namespace vemo;
using c::LineTexts;

const vemo_result& given(const vemo_result* result) {
    return c::given(result, "the result");
}

template <auto member>
vemo_text textOf(const vemo_result* result, std::size_t line) {
    return c::guarded(vemo_text{}, [&] { return c::handed(given(result).line(line).*member); });
}

template <auto member>
std::size_t countOf(const vemo_result* result, std::size_t line) {
    return c::guarded<std::size_t>(0, [&] { return (given(result).line(line).*member).size(); });
}

// An entry of one of a line's lists.
template <auto member>
const auto& entryOf(const vemo_result* result, std::size_t line, std::size_t index, const char* what) {
    const auto& entries = given(result).line(line).*member;
    c::checkIndex(index, entries.size(), what);
    return entries[index];
}

}  // namespace

void vemo_result_destroy(vemo_result* result) {
    c::guardedStatus([&] { delete result; });
}

size_t vemo_result_line_count(const vemo_result* result) {
    return c::guarded<std::size_t>(0, [&] { return given(result).lineCount(); });
}

vemo_text vemo_result_text(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::text>(result, line);
}
vemo_text vemo_result_regular(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::regular>(result, line);
}
vemo_text vemo_result_short(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::shortText>(result, line);
}
vemo_text vemo_result_number(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::number>(result, line);
}
vemo_text vemo_result_unit(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::unit>(result, line);
}
vemo_text vemo_result_instant(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::instant>(result, line);
}
vemo_text vemo_result_zone(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::zone>(result, line);
}
vemo_text vemo_result_reason_code(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::reasonCode>(result, line);
}
vemo_text vemo_result_reason(const vemo_result* result, size_t line) {
    return textOf<&LineTexts::reason>(result, line);
}

bool vemo_result_milliseconds(const vemo_result* result, size_t line, int64_t* milliseconds) {
    return c::guarded(false, [&] {
        const LineTexts& texts = given(result).line(line);
        std::int64_t& place = c::given(milliseconds, "the place for the milliseconds");
        if (texts.instant) place = texts.milliseconds;
        return texts.instant.has_value();
    });
}

vemo_text vemo_result_reading(const vemo_result* result, size_t line) {
    return c::guarded(vemo_text{}, [&] { return given(result).reading(line); });
}

vemo_text vemo_result_log(const vemo_result* result) {
    return c::guarded(vemo_text{}, [&] { return c::handed(given(result).log()); });
}

size_t vemo_result_run_count(const vemo_result* result, size_t line) {
    return countOf<&LineTexts::runs>(result, line);
}

vemo_run vemo_result_run(const vemo_result* result, size_t line, size_t index) {
    return c::guarded(vemo_run{}, [&] {
        const auto& run = entryOf<&LineTexts::runs>(result, line, index, "run");
        return vemo_run{c::handed(run.text), run.type.empty() ? vemo_text{} : c::handed(run.type)};
    });
}

size_t vemo_result_note_count(const vemo_result* result, size_t line) {
    return countOf<&LineTexts::notes>(result, line);
}

vemo_note vemo_result_note(const vemo_result* result, size_t line, size_t index) {
    return c::guarded(vemo_note{}, [&] {
        const auto& note = entryOf<&LineTexts::notes>(result, line, index, "note");
        return vemo_note{c::handed(note.kind), note.start, note.length, c::handed(note.message)};
    });
}

size_t vemo_result_name_count(const vemo_result* result, size_t line) {
    return countOf<&LineTexts::names>(result, line);
}

vemo_name vemo_result_name(const vemo_result* result, size_t line, size_t index) {
    return c::guarded(vemo_name{}, [&] {
        const auto& name = entryOf<&LineTexts::names>(result, line, index, "name");
        return vemo_name{c::handed(name.name), name.start, name.length, name.defines};
    });
}

vemo_text vemo_result_total(const vemo_result* result) {
    return c::guarded(vemo_text{}, [&] { return c::handed(given(result).total(false)); });
}

vemo_text vemo_result_total_short(const vemo_result* result) {
    return c::guarded(vemo_text{}, [&] { return c::handed(given(result).total(true)); });
}

bool vemo_result_total_is_partial(const vemo_result* result) {
    return c::guarded(false, [&] { return given(result).isTotalPartial(); });
}

vemo_text vemo_result_formatted(const vemo_result* result, vemo_format format) {
    return c::guarded(vemo_text{}, [&] { return c::handed(given(result).formatted(format)); });
}
