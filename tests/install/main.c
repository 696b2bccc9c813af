/* SPDX-License-Identifier: MIT */
#include <stdio.h>
#include <vemo/mx_decimal.h>

int main(void) {
    const MxDecimal result = MxDecimalPower(MxDecimalFromInteger(2), MxDecimalFromInteger(10));
    printf("%g\n", MxDoubleFromDecimal(result));
    return 0;
}
