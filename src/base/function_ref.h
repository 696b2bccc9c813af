// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace vemo {

// A callable passed down the stack without ownership or allocation.
template <class Signature>
class FunctionRef;

template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
public:
    template <class Callable>
    // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the constraint leaves copies to the other constructors.
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef>) FunctionRef(Callable&& callable)
        : object_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          call_([](void* object, Arguments... arguments) -> Result {
              return (*static_cast<std::remove_reference_t<Callable>*>(object))(std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const { return call_(object_, std::forward<Arguments>(arguments)...); }

private:
    void* object_;
    Result (*call_)(void*, Arguments...);
};

}  // namespace vemo
