// SPDX-License-Identifier: MIT
#include "scanning/words/strings_file.h"

#include <cstdint>
#include <optional>
#include <set>

namespace vemo {

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {
        if (text_.starts_with("\xef\xbb\xbf")) position_ = 3;
    }

    Result<std::vector<StringsEntry>> read() {
        std::vector<StringsEntry> entries;
        std::set<std::u16string> keys;
        while (skipSpace() && position_ < text_.size()) {
            const int line = line_;
            auto key = readString();
            if (!key || !expect('=')) break;
            skipSpace();
            auto value = error_ ? std::nullopt : readString();
            if (!value || !expect(';')) break;
            if (!keys.insert(*key).second) fail("duplicate key", line);
            entries.push_back({*std::move(key), *std::move(value), line});
        }
        if (error_) return *error_;
        return entries;
    }

private:
    void fail(std::string message, int line) {
        if (!error_) error_ = Failure{std::move(message), line};
    }
    void fail(std::string message) { fail(std::move(message), line_); }

    char take() {
        const char c = text_[position_++];
        if (c == '\n') ++line_;
        return c;
    }

    // Skips white space and comments; false after an error.
    bool skipSpace() {
        while (!error_ && position_ < text_.size()) {
            const std::string_view rest = text_.substr(position_);
            if (rest.starts_with("//")) {
                while (position_ < text_.size() && text_[position_] != '\n') ++position_;
            } else if (rest.starts_with("/*")) {
                const std::size_t end = rest.find("*/", 2);
                if (end == rest.npos) fail("comment without end");
                for (std::size_t stop = position_ + (end == rest.npos ? 0 : end + 2); position_ < stop;) take();
            } else if (rest[0] == ' ' || rest[0] == '\t' || rest[0] == '\n' || rest[0] == '\r') {
                take();
            } else {
                break;
            }
        }
        return !error_;
    }

    bool expect(char wanted) {
        skipSpace();
        if (position_ < text_.size() && text_[position_] == wanted) {
            ++position_;
            return !error_;
        }
        fail(std::string("expected '") + wanted + "'");
        return false;
    }

    std::optional<std::u16string> readString() {
        if (position_ >= text_.size() || text_[position_] != '"') {
            fail("expected '\"'");
            return std::nullopt;
        }
        const int line = line_;
        ++position_;
        std::u16string result;
        while (!error_) {
            if (position_ >= text_.size()) {
                fail("string without end", line);
            } else if (text_[position_] == '"') {
                ++position_;
                return result;
            } else if (text_[position_] == '\\') {
                readEscape(result);
            } else {
                readCharacter(result);
            }
        }
        return std::nullopt;
    }

    void readEscape(std::u16string& result) {
        ++position_;
        const char kind = position_ < text_.size() ? take() : '\0';
        switch (kind) {
            case '"':
                result += u'"';
                return;
            case '\\':
                result += u'\\';
                return;
            case 'n':
                result += u'\n';
                return;
            case 't':
                result += u'\t';
                return;
            case 'u':
            case 'U':
                break;
            default:
                fail("unknown escape");
                return;
        }
        unsigned unit = 0;
        for (int i = 0; i < 4; ++i) {
            const char c = position_ < text_.size() ? text_[position_] : '\0';
            const int digit = c >= '0' && c <= '9'   ? c - '0'
                              : c >= 'a' && c <= 'f' ? c - 'a' + 10
                              : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                     : -1;
            if (digit < 0) return fail("\\U takes four hexadecimal digits");
            unit = unit * 16 + static_cast<unsigned>(digit);
            ++position_;
        }
        result += static_cast<char16_t>(unit);
    }

    void readCharacter(std::u16string& result) {
        const auto lead = static_cast<unsigned char>(take());
        const int more = lead < 0x80 ? 0 : lead < 0xc2 ? -1 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : lead < 0xf5 ? 3 : -1;
        std::uint32_t code = more == 0 ? lead : lead & (0x3fu >> (more < 0 ? 0 : more));
        bool valid = more >= 0;
        for (int i = 0; valid && i < more; ++i) {
            const auto next = position_ < text_.size() ? static_cast<unsigned char>(text_[position_]) : 0u;
            valid = (next & 0xc0) == 0x80;
            code = code << 6 | (next & 0x3f);
            if (valid) ++position_;
        }
        constexpr std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (!valid || code < least[more] || code > 0x10ffff || (code >= 0xd800 && code < 0xe000)) {
            fail("not UTF-8");
        } else if (code < 0x10000) {
            result += static_cast<char16_t>(code);
        } else {
            result += static_cast<char16_t>(0xd7c0 + (code >> 10));
            result += static_cast<char16_t>(0xdc00 + (code & 0x3ff));
        }
    }

    std::string_view text_;
    std::size_t position_ = 0;
    int line_ = 1;
    std::optional<Failure> error_;
};

}  // namespace

Result<std::vector<StringsEntry>> parseStrings(std::string_view utf8) {
    return Reader(utf8).read();
}

}  // namespace vemo
