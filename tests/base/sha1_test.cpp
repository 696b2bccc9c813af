// SPDX-License-Identifier: MIT
#include "base/sha1.h"

#include <gtest/gtest.h>

namespace vemo {
namespace {

TEST(Sha1, isThatOfTheStandard) {
    EXPECT_EQ(sha1Hex(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(sha1Hex("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    // The padding takes the block that is begun, or one more.
    EXPECT_EQ(sha1Hex(std::string(55, 'x')), "cef734ba81a024479e09eb5a75b6ddae62e6abf1");
    EXPECT_EQ(sha1Hex(std::string(56, 'x')), "901305367c259952f4e7af8323f480d59f81335b");
    EXPECT_EQ(sha1Hex(std::string(64, 'x')), "bb2fa3ee7afb9f54c6dfb5d021f14b1ffe40c163");
    EXPECT_EQ(sha1Hex(std::string(1000, 'x')), "c3efa690fa3fdd2e2526853eed670538ea127638");
}

}  // namespace
}  // namespace vemo
