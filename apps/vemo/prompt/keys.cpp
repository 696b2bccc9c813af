// SPDX-License-Identifier: MIT
#include "prompt/keys.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <string_view>
#include <utility>

#include "prompt/raw_terminal.h"
#include "session/printable.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr int escapeWait = 40;  // milliseconds in which the rest of a key's bytes come
constexpr std::string_view pasteStart = "\033[200~";
constexpr std::string_view pasteEnd = "\033[201~";

struct Binding {
    std::string_view bytes;
    Press press;
};

constexpr Binding bindings[] = {
    {"\r", Press::enter},
    {"\n", Press::enter},
    {"\t", Press::complete},
    {"\033[Z", Press::completeBack},
    {"\x02", Press::left},
    {"\033[D", Press::left},
    {"\x06", Press::right},
    {"\033[C", Press::right},
    {"\033b", Press::wordLeft},
    {"\033[1;5D", Press::wordLeft},
    {"\033[1;3D", Press::wordLeft},
    {"\033f", Press::wordRight},
    {"\033[1;5C", Press::wordRight},
    {"\033[1;3C", Press::wordRight},
    {"\x01", Press::start},
    {"\033[H", Press::start},
    {"\033[1~", Press::start},
    {"\033[7~", Press::start},
    {"\x05", Press::end},
    {"\033[F", Press::end},
    {"\033[4~", Press::end},
    {"\033[8~", Press::end},
    {"\x10", Press::up},
    {"\033[A", Press::up},
    {"\x0e", Press::down},
    {"\033[B", Press::down},
    {"\x7f", Press::erase},
    {"\x08", Press::erase},
    {"\033[3~", Press::eraseHere},
    {"\x17", Press::eraseWord},
    {"\033\x7f", Press::eraseWord},
    {"\033d", Press::eraseWordRight},
    {"\033[3;5~", Press::eraseWordRight},
    {"\x15", Press::eraseToStart},
    {"\x0b", Press::eraseToEnd},
    {"\x19", Press::putBack},
    {"\x14", Press::swap},
    {"\x12", Press::search},
    {"\x0c", Press::clearScreen},
    {"\x03", Press::drop},
    {"\x04", Press::endOrErase},
    {"\x1a", Press::suspend},
    {"\033", Press::escape},
};

Press pressOf(std::string sequence) {
    // Keys of a keypad say O where others say [.
    if (sequence.size() == 3 && sequence[1] == 'O') sequence[1] = '[';
    for (const Binding& binding : bindings)
        if (binding.bytes == sequence) return binding.press;
    return Press::none;
}

}  // namespace

KeyReader::Arrival KeyReader::await(int milliseconds) {
    pollfd descriptor{descriptor_, POLLIN, 0};
    timespec time{milliseconds / 1000, (milliseconds % 1000) * 1000000L};
    const int ready = ppoll(&descriptor, 1, milliseconds < 0 ? nullptr : &time, RawTerminal::signalsWhileWaiting());
    if (ready < 0 && errno != EINTR) return Arrival::end;
    resized_ = RawTerminal::takeResized() || resized_;
    if (ready <= 0) return Arrival::nothing;
    std::array<char, 4096> buffer;
    const ssize_t count = read(descriptor_, buffer.data(), buffer.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return Arrival::nothing;
    if (count <= 0) return Arrival::end;
    bytes_.append(buffer.data(), static_cast<std::size_t>(count));
    return Arrival::bytes;
}

// True once so many bytes are there. Waits a little for them, as those of one key belong together.
bool KeyReader::holds(std::size_t bytes) {
    while (bytes_.size() < bytes)
        if (await(escapeWait) != Arrival::bytes) return false;
    return true;
}

bool KeyReader::hasMore() {
    return !bytes_.empty() || await(0) == Arrival::bytes || resized_;
}

Key KeyReader::next(int milliseconds) {
    while (bytes_.empty()) {
        if (std::exchange(resized_, false)) return {Press::resized, {}, false};
        switch (await(milliseconds)) {
            case Arrival::bytes:
                break;
            case Arrival::end:
                return {Press::hangUp, {}, false};
            case Arrival::nothing:
                if (milliseconds >= 0 && !resized_) return {};
                break;
        }
    }
    if (pasting_) return takePasted();
    const auto first = static_cast<unsigned char>(bytes_.front());
    if (first >= 0x20 && first != 0x7f) return takeCharacter();
    const std::string sequence = takeSequence();
    if (sequence == pasteStart) {
        pasting_ = true;
        afterReturn_ = false;
        return next(milliseconds);
    }
    return {pressOf(sequence), {}, false};
}

std::string KeyReader::takeSequence() {
    std::size_t length = 1;
    if (bytes_.front() == '\033' && holds(2)) {
        length = 2;
        if (bytes_[1] == 'O' && holds(3)) length = 3;
        if (bytes_[1] == '[')
            while (holds(length + 1) && static_cast<unsigned char>(bytes_[length++]) < 0x40) {
            }
    }
    std::string sequence = bytes_.substr(0, length);
    bytes_.erase(0, length);
    return sequence;
}

Key KeyReader::takeCharacter() {
    const auto first = static_cast<unsigned char>(bytes_.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    holds(length);
    const Key key{Press::character, utf16(std::string_view(bytes_).substr(0, length)), pasting_};
    bytes_.erase(0, length);
    return key.text.size() == 1 && session::isControl(key.text[0]) ? Key{} : key;
}

// What is pasted can do no more than end lines.
Key KeyReader::takePasted() {
    const char first = bytes_.front();
    const bool repeated = first == '\n' && afterReturn_;
    afterReturn_ = first == '\r';
    if (first == '\r' || first == '\n') {
        bytes_.erase(0, 1);
        return repeated ? Key{} : Key{Press::enter, {}, true};
    }
    if (first == '\t') bytes_[0] = ' ';
    if (static_cast<unsigned char>(bytes_.front()) >= 0x20 && first != 0x7f) return takeCharacter();
    if (first == '\033' && holds(pasteEnd.size()) && bytes_.starts_with(pasteEnd)) {
        bytes_.erase(0, pasteEnd.size());
        pasting_ = false;
    } else {
        bytes_.erase(0, 1);
    }
    return {};
}

}  // namespace vemo::cli
