/* SPDX-License-Identifier: MIT */
/* Calculates standard input and prints what each line gave:
 *     cc -std=c11 lines.c $(pkg-config --cflags --libs vemo) -o lines */
#include <stdio.h>
#include <vemo/vemo.h>

int main(void) {
    static char text[1 << 16];
    const size_t length = fread(text, 1, sizeof text, stdin);
    vemo_engine* engine = vemo_engine_create(NULL);
    vemo_result* result = vemo_engine_calculate(engine, text, length);
    if (!result) {
        fprintf(stderr, "%s\n", vemo_last_error());
        vemo_engine_destroy(engine);
        return 1;
    }
    for (size_t line = 0; line < vemo_result_line_count(result); ++line) {
        const vemo_text regular = vemo_result_regular(result, line);
        const vemo_text reason = vemo_result_reason(result, line);
        if (regular.data)
            puts(regular.data);
        else
            printf("%s%s\n", reason.data ? "! " : "", reason.data ? reason.data : "");
    }
    const vemo_text total = vemo_result_total(result);
    if (total.data) printf("total %s\n", total.data);
    vemo_result_destroy(result);
    vemo_engine_destroy(engine);
    return 0;
}
