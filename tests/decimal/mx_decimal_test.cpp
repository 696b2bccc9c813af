// SPDX-License-Identifier: MIT
#include "vemo/mx_decimal.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "decimal/decimal_math.h"

extern "C" int checkDecimalsFromC(void);  // in mx_decimal_c_test.c; the line of the first failure, or 0

namespace vemo {

namespace {

DecimalNumber decimal(std::string_view text) {
    return DecimalNumber::parse(text);
}

bool agree(const DecimalNumber& a, const DecimalNumber& b, int digits) {
    const auto tolerance = mxMultiply(mxAbsoluteValue(b), DecimalNumber::fromParts(0, 1, -digits, false));
    return DecimalNumber::compare(mxAbsoluteValue(mxSubtract(a, b)), tolerance).value_or(1) <= 0;
}

}  // namespace

TEST(MxDecimal, cProgramsCanUseIt) {
    EXPECT_EQ(checkDecimalsFromC(), 0);
}

TEST(MxDecimal, constantsFitTogether) {
    EXPECT_TRUE(agree(mxSqrt(decimal("2")), mxSqrt2(), 36));
    EXPECT_TRUE(agree(mxAtan(decimal("1e40")), mxPi_2(), 36));
    EXPECT_EQ(mxMultiply(mxPi_4(), decimal("8")), mx2Pi());
    EXPECT_TRUE(agree(mxLn(decimal("2")), mxLn2(), 35));
    EXPECT_TRUE(agree(mxLn(decimal("10")), mxLn10(), 35));
    EXPECT_TRUE(agree(mxInverse(mxLn2()), mxLog2e(), 36));
    EXPECT_TRUE(agree(mxInverse(mxLn10()), mxLog10e(), 36));
    EXPECT_TRUE(agree(mxLn(mxE()), decimal("1"), 36));
    EXPECT_TRUE(agree(mxSubtract(mxMultiply(mxPhi(), mxPhi()), mxPhi()), decimal("1"), 36));
    EXPECT_EQ(mxEpsilon(), decimal("1e-64"));
}

TEST(MxDecimal, powersAndFactorials) {
    EXPECT_EQ(mxPower(decimal("2"), decimal("10")), decimal("1024"));
    EXPECT_TRUE(agree(mxPower(decimal("2"), decimal("0.5")), decimal("1.4142135623730951"), 15));
    EXPECT_EQ(mxPower(decimal("2"), decimal("0.5")), mxSqrt2());
    EXPECT_EQ(mxPower(decimal("2"), decimal("-1")), decimal("0.5"));
    EXPECT_EQ(mxPower(decimal("0"), decimal("0")), decimal("1"));
    EXPECT_TRUE(mxPower(decimal("0"), decimal("-1")).notANumber());
    EXPECT_TRUE(mxPower(decimal("-8"), decimal("0.5")).notANumber());
    EXPECT_EQ(mxPower(decimal("-1"), decimal("1e30")), decimal("1"));
    EXPECT_EQ(mxPower(decimal("-1"), decimal("100000000000000000001")), decimal("-1"));
    EXPECT_EQ(mxFactorial(decimal("5")), decimal("120"));
    EXPECT_EQ(mxFactorial(decimal("-5")), decimal("120"));
    EXPECT_EQ(mxFactorial(decimal("0")), decimal("1"));
    EXPECT_EQ(mxFactorial(decimal("30")), decimal("265252859812191058636308480000000"));
    EXPECT_TRUE(agree(mxFactorial(decimal("0.5")), decimal("0.886226925452758013649"), 14));
    EXPECT_FALSE(mxFactorial(decimal("103")).notANumber());
    EXPECT_TRUE(mxFactorial(decimal("107")).notANumber());
    EXPECT_TRUE(mxFactorial(decimal("1e150")).notANumber());
}

TEST(MxDecimal, remaindersAndShifts) {
    EXPECT_EQ(mxMod(decimal("-7"), decimal("3")), decimal("2"));
    EXPECT_EQ(mxMod(decimal("7"), decimal("-3")), decimal("-2"));
    EXPECT_EQ(mxMod(decimal("5.5"), decimal("2")), decimal("1.5"));
    EXPECT_TRUE(mxMod(decimal("5"), decimal("0")).notANumber());
    EXPECT_EQ(mxMod2Pi(mxPi()), mxPi());
    EXPECT_EQ(mxMod2Pi(mxNegated(mxPi())), mxPi());
    EXPECT_EQ(mxMod2Pi(decimal("-1e-128")), decimal("-1e-128"));
    for (const auto* text : {"4", "-4", "1e30", "-1e164", "123456789e100"}) {
        const auto angle = mxMod2Pi(decimal(text));
        EXPECT_LE(DecimalNumber::compare(angle, mxPi()), 0) << text;
        EXPECT_GT(DecimalNumber::compare(angle, mxNegated(mxPi())), 0) << text;
    }
    EXPECT_EQ(mxLeftShift(decimal("1"), decimal("3")), decimal("8"));
    EXPECT_EQ(mxLeftShift(decimal("8"), decimal("-2.5")), decimal("1"));
    EXPECT_EQ(mxLeftShift(decimal("-1"), decimal("1")), decimal("0"));
    EXPECT_EQ(mxLeftShift(decimal("0.25"), decimal("2")), decimal("1"));
    EXPECT_EQ(mxRightShift(decimal("1"), decimal("1")), decimal("0"));
    EXPECT_EQ(mxRightShift(decimal("5"), decimal("1")), decimal("2.5"));
    EXPECT_EQ(mxRightShift(decimal("1e160"), decimal("1e160")), decimal("0"));
    EXPECT_TRUE(mxLeftShift(decimal("1"), decimal("1e160")).notANumber());
    EXPECT_EQ(mxLeftShift(decimal("0"), decimal("1e160")), decimal("0"));
}

TEST(MxDecimal, exactPlaces) {
    EXPECT_EQ(mxSin(decimal("0")), decimal("0"));
    EXPECT_EQ(mxCos(decimal("0")), decimal("1"));
    EXPECT_TRUE(mxTan(mxPi_2()).notANumber());
    EXPECT_TRUE(mxTan(mxMultiply(mxPi_2(), decimal("-3"))).notANumber());
    EXPECT_EQ(mxAsin(decimal("1")), mxPi_2());
    EXPECT_EQ(mxAsin(decimal("-1")), mxNegated(mxPi_2()));
    EXPECT_EQ(mxLn(decimal("1")), decimal("0"));
    EXPECT_TRUE(mxAtanh(decimal("-1")).notANumber() && mxAcoth(decimal("1")).notANumber());
    EXPECT_EQ(mxTanh(decimal("-1e100")), decimal("-1"));
    EXPECT_TRUE(agree(mxTanh(decimal("60")), mxTanh(decimal("61")), 37));
    EXPECT_EQ(mxSech(decimal("-1e100")), decimal("0"));
    EXPECT_EQ(mxCsch(decimal("400")), decimal("0"));
    EXPECT_EQ(mxCoth(decimal("400")), decimal("1"));
    EXPECT_EQ(mxSqrt(decimal("1e40")), decimal("1e20"));
    EXPECT_TRUE(agree(mxLog10(decimal("1000")), decimal("3"), 35));
    EXPECT_TRUE(agree(mxNthLog(decimal("9"), decimal("3")), decimal("2"), 35));
    EXPECT_TRUE(agree(mxAcsc(decimal("2")), mxDivide(mxPi(), decimal("6")), 35));
    EXPECT_TRUE(agree(mxAcot(decimal("2")), mxSubtract(mxPi_2(), mxAtan(decimal("2"))), 36));
}

TEST(MxDecimal, outsideTheDomainEveryFunctionReturnsNotANumber) {
    const auto nan = DecimalNumber::notANumberValue();
    for (const auto function :
         {mxInverse, mxAbsoluteValue, mxMod2Pi, mxSqrt,  mxLn,    mxLog10, mxFactorial, mxSin,   mxCos,  mxTan,  mxCsc,
          mxSec,     mxCot,           mxAsin,   mxAcos,  mxAtan,  mxAcsc,  mxAsec,      mxAcot,  mxSinh, mxCosh, mxTanh,
          mxCsch,    mxSech,          mxCoth,   mxAsinh, mxAcosh, mxAtanh, mxAcsch,     mxAsech, mxAcoth}) {
        EXPECT_TRUE(function(nan).notANumber());
        for (const auto* extreme : {"1e127", "-1e164", "1e-128", "-1e-128"}) function(decimal(extreme));  // ends
    }
    for (const auto* text : {"0", "-1", "-1e-128"}) {
        EXPECT_TRUE(mxSqrt(decimal(text)).notANumber()) << text;
        EXPECT_TRUE(mxLn(decimal(text)).notANumber()) << text;
        EXPECT_TRUE(mxNthRoot(decimal(text), decimal("3")).notANumber()) << text;
    }
    EXPECT_TRUE(mxNthRoot(decimal("8"), decimal("0")).notANumber());
    for (const auto function : {mxAsin, mxAcos, mxAtanh, mxAsinh}) {
        EXPECT_TRUE(function(decimal("2")).notANumber());
        EXPECT_TRUE(function(decimal("-1.0000000000000000000000000000000000001")).notANumber());
    }
    EXPECT_TRUE(mxAcosh(decimal("0.5")).notANumber());
    EXPECT_TRUE(mxNthLog(decimal("2"), decimal("1")).notANumber());
    EXPECT_FALSE(mxIsInteger(nan));
    EXPECT_FALSE(mxIsProbablyEqual(nan, nan));
}

RC_GTEST_PROP(MxDecimalLaws, sineAndCosineLieOnTheCircle, ()) {
    const auto x = DecimalNumber::fromParts(0, *rc::gen::inRange<std::uint64_t>(0, 1'000'000'000), -8, false);
    const DecimalNumber s = mxSin(x);
    const DecimalNumber c = mxCos(x);
    RC_ASSERT(agree(mxAdd(mxMultiply(s, s), mxMultiply(c, c)), decimal("1"), 34));
}

RC_GTEST_PROP(MxDecimalLaws, remainderLiesBetweenZeroAndTheDivisor, ()) {
    const auto a = DecimalNumber::fromInt64(*rc::gen::arbitrary<std::int64_t>()).multiplyingByPowerOf10(-5);
    const auto b = DecimalNumber::fromInt64(*rc::gen::nonZero<std::int64_t>()).multiplyingByPowerOf10(-3);
    const DecimalNumber rest = mxMod(a, b);
    RC_ASSERT(rest.isZero() || rest.isNegative() == b.isNegative());
    RC_ASSERT(DecimalNumber::compare(mxAbsoluteValue(rest), mxAbsoluteValue(b)) == -1);
}

}  // namespace vemo
