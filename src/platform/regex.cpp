// SPDX-License-Identifier: MIT
#include "platform/regex.h"

#include <unicode/regex.h>

#include <cassert>
#include <mutex>

namespace vemo {

namespace {

// ICU counts time in steps of its own, of about a millisecond: a bound against patterns that backtrack
// without end on hostile lines.
constexpr std::int32_t timeLimit = 50;

}  // namespace

struct Regex::Compiled {
    std::unique_ptr<icu::RegexPattern> pattern;
    // Matchers keep state while searching; one is kept for the usual case of a single searching thread.
    mutable std::mutex mutex;
    mutable std::unique_ptr<icu::RegexMatcher> matcher;
};

Regex::Regex(std::u16string_view pattern, bool caseInsensitive) : compiled_(std::make_unique<Compiled>()) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError where;
    std::uint32_t flags = UREGEX_COMMENTS;
    if (caseInsensitive) flags |= UREGEX_CASE_INSENSITIVE;
    compiled_->pattern.reset(icu::RegexPattern::compile(
        icu::UnicodeString(pattern.data(), static_cast<std::int32_t>(pattern.size())), flags, where, status));
    assert(U_SUCCESS(status));
    compiled_->matcher.reset(compiled_->pattern->matcher(status));
    compiled_->matcher->setTimeLimit(timeLimit, status);
    assert(U_SUCCESS(status));
}

Regex::~Regex() = default;

std::vector<TextRange> Regex::ranges(std::u16string_view text, bool groups) const {
    std::vector<TextRange> result;
    const std::lock_guard lock(compiled_->mutex);
    icu::RegexMatcher& matcher = *compiled_->matcher;
    const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
    matcher.reset(alias);
    UErrorCode status = U_ZERO_ERROR;
    while (matcher.find(status) && U_SUCCESS(status)) {
        const std::int32_t last = groups ? matcher.groupCount() : 0;
        for (std::int32_t group = 0; group <= last; ++group) {
            const std::int32_t start = matcher.start(group, status);
            if (start < 0) continue;
            const std::int32_t end = matcher.end(group, status);
            result.push_back({static_cast<std::size_t>(start), static_cast<std::size_t>(end - start)});
        }
    }
    return result;
}

}  // namespace vemo
