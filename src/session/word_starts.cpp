// SPDX-License-Identifier: MIT
#include "session/word_starts.h"

#include <algorithm>

namespace vemo::session {

namespace {

constexpr std::size_t mostWords = 4;
constexpr std::u16string_view separators = u" \t()+-*/^=,;:<>&|\"#";
constexpr std::u16string_view leading = u"0123456789.%";  // an amount may stand right in front of its unit

}  // namespace

std::vector<std::size_t> wordStarts(std::u16string_view text) {
    std::vector<std::size_t> starts;
    std::size_t position = text.size();
    while (starts.size() < mostWords && position > 0) {
        std::size_t start = position;
        while (start > 0 && separators.find(text[start - 1]) == separators.npos) --start;
        std::size_t word = start;
        while (word < position && leading.find(text[word]) != leading.npos) ++word;
        if (word == position) break;
        starts.insert(starts.begin(), word);
        if (word != start || start == 0 || text[start - 1] != u' ') break;
        position = start - 1;
    }
    return starts;
}

bool beginsWith(std::u16string_view text, std::u16string_view beginning) {
    const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; };
    return text.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), text.begin(),
                                                         [&](char16_t a, char16_t b) { return lower(a) == lower(b); });
}

}  // namespace vemo::session
