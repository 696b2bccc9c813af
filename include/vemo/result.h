// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace vemo {

// Why something could not be done, for a person to read.
struct Failure {
    std::string message;
    int line = 0;  // of the text at fault, from 1; 0 where there is none
};

// What a step that can fail gave: a value, or why there is none.
template <class T>
class Result {
public:
    Result(T value) : content_(std::move(value)) {}
    Result(Failure failure) : content_(std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }
    // Only of a success.
    T& operator*() { return *std::get_if<0>(&content_); }
    T* operator->() { return std::get_if<0>(&content_); }
    const T& operator*() const { return *std::get_if<0>(&content_); }
    const T* operator->() const { return std::get_if<0>(&content_); }
    // Only of a failure.
    const Failure& failure() const { return *std::get_if<1>(&content_); }

private:
    std::variant<T, Failure> content_;
};

}  // namespace vemo
