// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <sstream>

namespace vemo::test {

// Tries a law on generated cases, and shows the smallest one that breaks it. The cases are the same in every run;
// others come with RC_PARAMS="seed=7 max_success=20000" in the environment. Under a sanitizer, which takes ten times as
// long, the first quarter of them is tried.
template <class Law>
void holds(const Law& law, int cases = 200) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    cases = (cases + 3) / 4;
#endif
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    if (!std::getenv("RC_PARAMS")) {
        params.seed = 20261124;
        params.maxSuccess = cases;
    }
    const auto result = rc::detail::checkTestable(law, rc::detail::TestMetadata(), params);
    if (result.template is<rc::detail::SuccessResult>()) return;
    std::ostringstream message;
    rc::detail::printResultMessage(result, message);
    ADD_FAILURE() << message.str();
}

// Any number of the range, whatever the size of the case; smaller ones as it shrinks.
inline int anyOf(int first, int last) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(first, last + 1));
}

// One of the rows; the first ones as it shrinks.
template <class Rows>
const auto& anyRow(const Rows& rows) {
    return rows[static_cast<std::size_t>(anyOf(0, static_cast<int>(std::size(rows)) - 1))];
}

}  // namespace vemo::test
