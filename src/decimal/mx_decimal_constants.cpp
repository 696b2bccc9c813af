// SPDX-License-Identifier: MIT
#include "decimal/decimal_math.h"

namespace vemo {

const DecimalNumber& mxEpsilon() {
    static const auto value = DecimalNumber::fromParts(0, 1, -64, false);
    return value;
}

const DecimalNumber& mxPhi() {
    static const auto value = DecimalNumber::parse(
        "1.618033988749894848204586834365638117720309179805762862135448"
        "62270526046281890");
    return value;
}

const DecimalNumber& mxPi() {
    static const auto value = DecimalNumber::parse(
        "3.141592653589793238462643383279502884197169399375105820974944"
        "592307816406286208998628034825342117068");
    return value;
}

const DecimalNumber& mx2Pi() {
    static const auto value = mxMultiply(mxPi(), DecimalNumber::fromInt64(2));
    return value;
}

const DecimalNumber& mxPi_2() {
    static const auto value = DecimalNumber::parse(
        "1.570796326794896619231321691639751442098584699687552910487472"
        "296153908203143104499314017412671058534");
    return value;
}

const DecimalNumber& mxPi_4() {
    static const auto value = DecimalNumber::parse(
        "0.785398163397448309615660845819875721049292349843776455243736"
        "1480769541015715522496570087063355292670");
    return value;
}

const DecimalNumber& mxSqrt2() {
    static const auto value = DecimalNumber::parse(
        "1.414213562373095048801688724209698078569671875376948073176679"
        "737990732478462107038850387534327641573");
    return value;
}

const DecimalNumber& mxE() {
    static const auto value = DecimalNumber::parse(
        "2.718281828459045235360287471352662497757247093699959574966967"
        "627724076630353547594571382178525166427");
    return value;
}

const DecimalNumber& mxLog2e() {
    static const auto value = DecimalNumber::parse(
        "1.442695040888963407359924681001892137426645954152985934135449"
        "406931109219181185079885526622893506344");
    return value;
}

const DecimalNumber& mxLog10e() {
    static const auto value = DecimalNumber::parse(
        "0.434294481903251827651128918916605082294397005803666566114453"
        "7831658646492088707747292249493384317483");
    return value;
}

const DecimalNumber& mxLn2() {
    static const auto value = DecimalNumber::parse(
        "0.693147180559945309417232121458176568075500134360255254120680"
        "0094933936219696947156058633269964186875");
    return value;
}

const DecimalNumber& mxLn10() {
    static const auto value = DecimalNumber::parse(
        "2.302585092994045684017991454684364207601101488628772976033327"
        "900967572609677352480235997205089598298");
    return value;
}

}  // namespace vemo
