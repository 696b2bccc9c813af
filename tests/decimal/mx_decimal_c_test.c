/* SPDX-License-Identifier: MIT */
#include <string.h>

#include "vemo/mx_decimal.h"

int checkDecimalsFromC(void);

#define CHECK(condition) \
    if (!(condition)) return __LINE__

static bool same(MxDecimal a, MxDecimal b) {
    return memcmp(&a, &b, sizeof a) == 0;
}

int checkDecimalsFromC(void) {
    MxDecimal d = MxDecimalFromInteger(-1200);
    MxDecimal loose = d;
    CHECK(sizeof(MxDecimal) == 20);
    CHECK(d.exponent == 2 && d.length == 1 && d.isNegative == 1 && d.isCompact == 1 && d.mantissa[0] == 12);
    CHECK(MxDecimalFromInteger(INT64_MIN).length == 4 && MxDecimalFromInteger(INT64_MIN).mantissa[3] == 0x8000);

    /* Another writer's notation of the same number, with a word that counts for nothing. */
    loose.exponent = 0;
    loose.isCompact = 0;
    loose.mantissa[0] = 1200;
    loose.mantissa[1] = 0xffff;
    CHECK(same(MxDecimalAdd(loose, MxDecimalZero()), d));
    loose.length = 15;
    CHECK(MxDecimalIsInteger(loose));

    MxDecimalNegate(&d);
    CHECK(MxUIntegerFromDecimal(d) == 1200 && !MxDecimalIsNegative(d));
    MxDecimalInvert(&d);
    CHECK(same(d, MxDecimalDivide(MxDecimalOne(), MxDecimalFromInteger(1200))));
    CHECK(same(MxDecimalMultiply(MxDecimalFromDouble(0.1), MxDecimalFromInteger(3)), MxDecimalFromDouble(0.3)));
    CHECK(MxDoubleFromDecimal(MxDecimalPi()) == 3.141592653589793 && MxFloatFromDecimal(MxDecimalTwo()) == 2.0F);

    d = MxDecimalDivide(MxDecimalOne(), MxDecimalZero());
    CHECK(d.length == 0 && d.isNegative == 1 && same(d, MxDecimalNAN()));
    CHECK(same(MxDecimalSqrt(MxDecimalNegativeOne()), MxDecimalNAN()));
    CHECK(same(MxDecimalSubtract(MxDecimalOne(), MxDecimalOne()), MxDecimalZero()));
    CHECK(MxDecimalPi().length == 8);
    CHECK(MxDecimalIsProbablyEqual(MxDecimalMultiply(MxDecimalPi_4(), MxDecimalFromInteger(8)), MxDecimal2Pi()));

    CHECK(VemoEngineVersionNumber >= 0.1);
    CHECK(strchr((const char*)VemoEngineVersionString, '.') != NULL);
    return 0;
}
