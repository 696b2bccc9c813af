// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vemo::lsp {

// One message of the stream, or what is wrong with a piece of it.
struct Frame {
    enum class Kind : std::uint8_t { message, tooLarge, malformed };

    Kind kind = Kind::message;
    std::string text;  // of a message
};

// Cuts the bytes that a client sends into messages: headers with "Content-Length", an empty line, and as many bytes.
// Holds no more than one message of the largest size; what is larger is passed over, and after bytes that are no header
// the next one is looked for.
class Framing {
public:
    static constexpr std::size_t usualLimit = std::size_t{16} << 20;  // bytes

    explicit Framing(std::size_t largest = usualLimit) : largest_(largest) {}

    void feed(std::string_view bytes, const std::function<void(Frame)>& take);

private:
    enum class State : std::uint8_t { header, body, skipping, lost };

    std::string_view feedHeader(std::string_view bytes, const std::function<void(Frame)>& take);
    std::string_view feedBody(std::string_view bytes, const std::function<void(Frame)>& take);
    std::string_view find(std::string_view bytes);
    void beginBody(const std::function<void(Frame)>& take);

    std::size_t largest_;
    State state_ = State::header;
    std::string header_;
    std::string body_;
    std::uint64_t missing_ = 0;  // bytes of the body that have not come
};

// A message with its header, as it is sent.
std::string framed(std::string_view message);

}  // namespace vemo::lsp
