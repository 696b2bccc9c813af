/* SPDX-License-Identifier: MIT */
/* Calls every function of the C header. */
#include <stddef.h>
#include <stdio.h>
#include <vemo/mx_decimal.h>

typedef MxDecimal (*Constant)(void);
typedef MxDecimal (*Function)(MxDecimal);
typedef MxDecimal (*Operation)(MxDecimal, MxDecimal);

static const Constant constants[] = {
    MxDecimalNAN, MxDecimalEpsilon, MxDecimalNegativeOne, MxDecimalZero, MxDecimalOne,  MxDecimalTwo,
    MxDecimalPhi, MxDecimalPi,      MxDecimal2Pi,         MxDecimalPi_2, MxDecimalPi_4, MxDecimalSqrt2,
    MxDecimalE,   MxDecimalLog2e,   MxDecimalLog10e,      MxDecimalLn2,  MxDecimalLn10};
static const Function functions[] = {
    MxDecimalAbsoluteValue, MxDecimalInverse, MxDecimalMod2Pi, MxDecimalSqrt,  MxDecimalLn,    MxDecimalLog10,
    MxDecimalFactorial,     MxDecimalSin,     MxDecimalCos,    MxDecimalTan,   MxDecimalCsc,   MxDecimalSec,
    MxDecimalCot,           MxDecimalAsin,    MxDecimalAcos,   MxDecimalAtan,  MxDecimalAcsc,  MxDecimalAsec,
    MxDecimalAcot,          MxDecimalSinh,    MxDecimalCosh,   MxDecimalTanh,  MxDecimalCsch,  MxDecimalSech,
    MxDecimalCoth,          MxDecimalAsinh,   MxDecimalAcosh,  MxDecimalAtanh, MxDecimalAcsch, MxDecimalAsech,
    MxDecimalAcoth};
static const Operation operations[] = {MxDecimalAdd,      MxDecimalSubtract,  MxDecimalMultiply,  MxDecimalDivide,
                                       MxDecimalAverage2, MxDecimalMod,       MxDecimalNthRoot,   MxDecimalPower,
                                       MxDecimalNthLog,   MxDecimalLeftShift, MxDecimalRightShift};

#define COUNT(list) (sizeof(list) / sizeof(list)[0])

int main(void) {
    const MxDecimal two = MxDecimalFromInteger(2);
    size_t i, numbers = 0;
    MxDecimal half = MxDecimalFromDouble(0.5);
    for (i = 0; i < COUNT(constants); ++i) numbers += MxDecimalIsProbablyEqual(constants[i](), constants[i]());
    for (i = 0; i < COUNT(functions); ++i) numbers += functions[i](two).length > 0 || functions[i](half).length > 0;
    for (i = 0; i < COUNT(operations); ++i) numbers += operations[i](two, two).length > 0;
    MxDecimalInvert(&half);
    MxDecimalNegate(&half);
    if (numbers < 50 || MxUIntegerFromDecimal(MxDecimalAbsoluteValue(half)) != 2 || !MxDecimalIsNegative(half) ||
        !MxDecimalIsInteger(half) || MxFloatFromDecimal(half) != -2.0f || VemoEngineVersionString[0] == 0 ||
        VemoEngineVersionNumber <= 0) {
        printf("%d numbers\n", (int)numbers);
        return 1;
    }
    printf("%g\n", MxDoubleFromDecimal(MxDecimalPower(two, MxDecimalFromInteger(10))));
    return 0;
}
