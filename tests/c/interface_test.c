/* SPDX-License-Identifier: MIT */
/* The C interface: interface_test FOLDER_OF_SCRIPTS. Says which checks fail. */
#include <pthread.h>
#include <stdatomic.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <vemo/mx_decimal.h>
#include <vemo/vemo.h>

static atomic_int failures;

#define CHECK(condition)                                                                             \
    do {                                                                                             \
        if (!(condition)) {                                                                          \
            const char* error = vemo_last_error();                                                   \
            fprintf(stderr, "line %d: %s (%s)\n", __LINE__, #condition, error ? error : "no error"); \
            ++failures;                                                                              \
        }                                                                                            \
    } while (0)

/* That a call failed in this way, with a message. */
#define FAILS(status, call) CHECK(((void)(call), vemo_last_status() == (status) && vemo_last_error() != NULL))

static bool is(vemo_text text, const char* expected) {
    if (!expected || !text.data) return !expected && !text.data && text.length == 0;
    if (text.length == strlen(expected) && strcmp(text.data, expected) == 0) return true;
    fprintf(stderr, "'%s' is not '%s'\n", text.data, expected);
    return false;
}

static bool has(vemo_text text, const char* part) {
    if (text.data && strstr(text.data, part)) return true;
    fprintf(stderr, "'%s' is not in '%s'\n", part, text.data ? text.data : "nothing");
    return false;
}

static vemo_engine* english(void) {
    vemo_options* options = vemo_options_create();
    CHECK(vemo_options_set_language(options, "en") == VEMO_OK);
    CHECK(vemo_options_set_locale(options, "en_US") == VEMO_OK);
    CHECK(vemo_options_set_time_zone(options, "Europe/Berlin") == VEMO_OK);
    CHECK(vemo_options_set_now(options, INT64_C(1795608000000)) == VEMO_OK); /* 2026-11-25T12:00:00Z */
    vemo_engine* engine = vemo_engine_create(options);
    vemo_options_destroy(options);
    CHECK(engine != NULL);
    return engine;
}

static void lines_tell_what_they_know(void) {
    vemo_engine* engine = english();
    static const char text[] =
        "width = 5 inch in cm\n1,234,567.125 + 0\nnow in Tokyo\n1 / 0\nRent * 12\n\n"
        "\"\xf0\x9f\x8d\x8e\" width * 2 // twice";
    vemo_result* result = vemo_engine_calculate(engine, text, sizeof text - 1);
    int64_t milliseconds = 0;
    CHECK(vemo_last_status() == VEMO_OK && vemo_last_error() == NULL);
    CHECK(vemo_result_line_count(result) == 7);
    CHECK(is(vemo_result_text(result, 0), "width = 5 inch in cm"));
    CHECK(is(vemo_result_regular(result, 0), "12.7 cm") && is(vemo_result_short(result, 0), "12.7 cm"));
    CHECK(is(vemo_result_number(result, 0), "12.7") && is(vemo_result_unit(result, 0), "cm"));
    CHECK(is(vemo_result_number(result, 1), "1234567.125") && is(vemo_result_unit(result, 1), NULL));
    CHECK(is(vemo_result_instant(result, 1), NULL) && !vemo_result_milliseconds(result, 1, &milliseconds));
    CHECK(is(vemo_result_instant(result, 2), "2026-11-25T12:00:00Z") && is(vemo_result_zone(result, 2), "Asia/Tokyo"));
    CHECK(vemo_result_milliseconds(result, 2, &milliseconds) && milliseconds == INT64_C(1795608000000));
    CHECK(is(vemo_result_number(result, 2), NULL));
    CHECK(is(vemo_result_reason_code(result, 3), "division_by_zero") && vemo_result_reason(result, 3).length > 0);
    CHECK(is(vemo_result_regular(result, 3), NULL) && is(vemo_result_reason(result, 0), NULL));
    CHECK(is(vemo_result_regular(result, 5), NULL) && vemo_last_status() == VEMO_OK);

    CHECK(vemo_result_note_count(result, 4) == 1 && vemo_result_note_count(result, 0) == 0);
    const vemo_note note = vemo_result_note(result, 4, 0);
    CHECK(is(note.kind, "unknown_word") && note.start == 0 && note.length == 4 && has(note.message, "Rent"));
    CHECK(vemo_result_name_count(result, 0) == 1 && vemo_result_name(result, 0, 0).defines);
    /* Places are in bytes: the apple takes four. */
    const vemo_name name = vemo_result_name(result, 6, 0);
    CHECK(is(name.name, "width") && name.start == 7 && name.length == 5 && !name.defines);

    size_t joined = 0;
    for (size_t i = 0; i < vemo_result_run_count(result, 6); ++i) joined += vemo_result_run(result, 6, i).text.length;
    CHECK(joined == vemo_result_text(result, 6).length && is(vemo_result_run(result, 6, 0).type, "cmnt"));
    CHECK(has(vemo_result_reading(result, 6), "2") && is(vemo_result_reading(result, 5), NULL));
    CHECK(vemo_result_total(result).length > 0 && vemo_result_total_is_partial(result));
    CHECK(is(vemo_result_log(result), ""));
    vemo_engine_destroy(engine);
    CHECK(is(vemo_result_regular(result, 6), "25.4 cm"));
    FAILS(VEMO_CLOSED, vemo_result_reading(result, 0));
    vemo_result_destroy(result);
}

static void formats_are_those_of_the_command(void) {
    vemo_engine* engine = english();
    vemo_result* result = vemo_engine_calculate(engine, "caf\xc3\xa9: $4 * 2\n\xe6\x98\xbc: $12\n", VEMO_TO_NUL);
    CHECK(is(vemo_result_formatted(result, VEMO_FORMAT_TEXT),
             "caf\xc3\xa9: $4 * 2  $8\n\xe6\x98\xbc: $12      $12\n----------------\ntotal        $20\n"));
    CHECK(has(vemo_result_formatted(result, VEMO_FORMAT_CSV), "caf\xc3\xa9: $4 * 2,$8,8,USD,\n"));
    CHECK(has(vemo_result_formatted(result, VEMO_FORMAT_TSV), "caf\xc3\xa9: $4 * 2\t$8\t8\tUSD\t\n"));
    CHECK(has(vemo_result_formatted(result, VEMO_FORMAT_MARKDOWN), "| **total** | **$20** |"));
    CHECK(has(vemo_result_formatted(result, VEMO_FORMAT_HTML), "<td>total</td><td>$20</td>"));
    const vemo_text json = vemo_result_formatted(result, VEMO_FORMAT_JSON);
    CHECK(has(json, "\"value\":{\"number\":\"8\",\"unit\":\"USD\"}"));
    CHECK(vemo_result_formatted(result, VEMO_FORMAT_JSON).data == json.data);
    FAILS(VEMO_BAD_ARGUMENT, vemo_result_formatted(result, (vemo_format)6));
    vemo_result_destroy(result);
    vemo_engine_destroy(engine);
}

static bool offers(const vemo_completions* completions, const char* text, const char* kind) {
    for (size_t i = 0; i < vemo_completions_count(completions); ++i)
        if (strcmp(vemo_completions_text(completions, i).data, text) == 0)
            return is(vemo_completions_kind(completions, i), kind);
    return false;
}

static void words_are_completed(void) {
    vemo_engine* engine = english();
    const char* text = "kitchen width = 5 m\n\xc3\xa9 5 kitch + 1\n// kilo";
    vemo_completions* completions = vemo_engine_complete(engine, text, VEMO_TO_NUL, 30, 20);
    CHECK(vemo_completions_start(completions) == 25 && offers(completions, "kitchen width", "variable"));
    vemo_completions_destroy(completions);
    completions = vemo_engine_complete(engine, "5 kilom", VEMO_TO_NUL, 7, 5);
    CHECK(vemo_completions_start(completions) == 2 && vemo_completions_count(completions) <= 5);
    CHECK(offers(completions, "kilometer", "unit") || offers(completions, "kilometers", "unit"));
    FAILS(VEMO_BAD_ARGUMENT, vemo_completions_text(completions, 99));
    vemo_completions_destroy(completions);
    completions = vemo_engine_complete(engine, text, VEMO_TO_NUL, strlen(text), 20);
    CHECK(vemo_completions_count(completions) == 0);
    vemo_completions_destroy(completions);
    FAILS(VEMO_BAD_ARGUMENT, vemo_engine_complete(engine, text, VEMO_TO_NUL, 999, 20));
    FAILS(VEMO_NOT_UTF8, vemo_engine_complete(engine, text, VEMO_TO_NUL, 21, 20)); /* inside the é */
    vemo_engine_destroy(engine);
}

static void settings_are_checked(const char* scripts) {
    vemo_options* options = vemo_options_create();
    CHECK(vemo_options_set_locale(options, "de_DE") == VEMO_OK && vemo_options_set_language(options, "de") == VEMO_OK);
    CHECK(vemo_options_set_precision(options, 4) == VEMO_OK);
    CHECK(vemo_options_set_extensions(options, scripts) == VEMO_OK);
    FAILS(VEMO_UNUSABLE, vemo_options_set_locale(options, "xx_YY"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_language(options, "tlh"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_time_zone(options, "Mars/Olympus"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_extensions(options, "/no/such/folder"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_caches(options, "/no/such/folder"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_rates(options, "file:///etc/passwd"));
    FAILS(VEMO_UNUSABLE, vemo_options_set_coins(options, ""));
    FAILS(VEMO_UNUSABLE, vemo_options_set_places(options, "places"));
    FAILS(VEMO_BAD_ARGUMENT, vemo_options_set_precision(options, -1));
    FAILS(VEMO_BAD_ARGUMENT, vemo_options_set_now(options, INT64_MAX));
    FAILS(VEMO_NOT_UTF8, vemo_options_set_language(options, "\xff"));
    FAILS(VEMO_BAD_ARGUMENT, vemo_options_set_language(options, NULL));
    vemo_engine* engine = vemo_engine_create(options);
    vemo_options_destroy(options);
    CHECK(has(vemo_engine_log(engine), "cooking.js"));
    vemo_result* result = vemo_engine_calculate(engine, "10 / 3", VEMO_TO_NUL);
    CHECK(is(vemo_result_regular(result, 0), "3,3333"));
    vemo_result_destroy(result);
    vemo_engine_destroy(engine);
}

static void rates_are_taken(void) {
    vemo_engine* engine = english();
    CHECK(vemo_engine_take_rates(engine, "{\"rates\":{\"EUR\":0.5}}", VEMO_TO_NUL) == VEMO_OK);
    CHECK(vemo_engine_take_coins(engine, "{\"rates\":{\"QQQ\":0.25}}", VEMO_TO_NUL) == VEMO_OK);
    FAILS(VEMO_UNUSABLE, vemo_engine_take_rates(engine, "{}", VEMO_TO_NUL));
    FAILS(VEMO_UNUSABLE, vemo_engine_take_coins(engine, "[[[[", VEMO_TO_NUL));
    vemo_result* result = vemo_engine_calculate(engine, "$10 in EUR", VEMO_TO_NUL);
    CHECK(is(vemo_result_number(result, 0), "5") && is(vemo_result_unit(result, 0), "EUR"));
    vemo_result_destroy(result);
    CHECK(vemo_engine_wait(engine, 1000) == VEMO_OK); /* nothing is fetched */
    vemo_engine_destroy(engine);

    vemo_options* options = vemo_options_create();
    CHECK(vemo_options_set_rates(options, "http://127.0.0.1:1/rates.json") == VEMO_OK);
    const char* folder = getenv("TMPDIR") ? getenv("TMPDIR") : "/tmp";
    CHECK(vemo_options_set_caches(options, folder) == VEMO_OK);
    engine = vemo_engine_create(options);
    vemo_options_destroy(options);
    FAILS(VEMO_NOT_FETCHED, vemo_engine_wait(engine, 60000));
    vemo_engine_destroy(engine);
}

/* Everything with NULL. */
static void null_is_an_error(void) {
    vemo_engine* engine = english();
    vemo_document* document = vemo_document_create(engine, NULL, NULL);
    vemo_result* result = vemo_engine_calculate(engine, "", VEMO_TO_NUL);
    int64_t milliseconds;
    const vemo_status bad = VEMO_BAD_ARGUMENT;
    FAILS(bad, vemo_options_set_language(NULL, "en"));
    FAILS(bad, vemo_options_set_locale(NULL, "en_US"));
    FAILS(bad, vemo_options_set_time_zone(NULL, "UTC"));
    FAILS(bad, vemo_options_set_precision(NULL, 2));
    FAILS(bad, vemo_options_set_now(NULL, 0));
    FAILS(bad, vemo_options_set_extensions(NULL, "/"));
    FAILS(bad, vemo_options_set_caches(NULL, "/"));
    FAILS(bad, vemo_options_set_rates(NULL, "http://a"));
    FAILS(bad, vemo_options_set_coins(NULL, "http://a"));
    FAILS(bad, vemo_options_set_places(NULL, "http://a"));
    FAILS(bad, vemo_engine_log(NULL));
    FAILS(bad, vemo_engine_calculate(NULL, "1", 1));
    FAILS(bad, vemo_engine_calculate(engine, NULL, 1));
    FAILS(bad, vemo_engine_take_rates(NULL, "{}", 2));
    FAILS(bad, vemo_engine_take_coins(engine, NULL, 2));
    FAILS(bad, vemo_engine_wait(NULL, 0));
    FAILS(bad, vemo_engine_wait(engine, -1));
    FAILS(bad, vemo_engine_complete(NULL, "1", 1, 1, 1));
    FAILS(bad, vemo_engine_complete(engine, NULL, 1, 1, 1));
    FAILS(bad, vemo_completions_count(NULL));
    FAILS(bad, vemo_completions_start(NULL));
    FAILS(bad, vemo_completions_text(NULL, 0));
    FAILS(bad, vemo_completions_kind(NULL, 0));
    FAILS(bad, vemo_document_create(NULL, NULL, NULL));
    FAILS(bad, vemo_document_set_text(NULL, "1", 1));
    FAILS(bad, vemo_document_set_text(document, NULL, 1));
    FAILS(bad, vemo_document_latest(NULL));
    FAILS(bad, vemo_document_wait(NULL, 1));
    FAILS(bad, vemo_document_wait(document, 1)); /* no text yet */
    CHECK(vemo_document_latest(document) == NULL && vemo_last_status() == VEMO_OK);
    FAILS(bad, vemo_result_line_count(NULL));
    FAILS(bad, vemo_result_text(NULL, 0));
    FAILS(bad, vemo_result_regular(result, 0)); /* an empty text has no line */
    FAILS(bad, vemo_result_short(result, SIZE_MAX));
    FAILS(bad, vemo_result_number(NULL, 0));
    FAILS(bad, vemo_result_unit(NULL, 0));
    FAILS(bad, vemo_result_instant(NULL, 0));
    FAILS(bad, vemo_result_zone(NULL, 0));
    FAILS(bad, vemo_result_milliseconds(NULL, 0, &milliseconds));
    FAILS(bad, vemo_result_reason_code(NULL, 0));
    FAILS(bad, vemo_result_reason(NULL, 0));
    FAILS(bad, vemo_result_reading(NULL, 0));
    FAILS(bad, vemo_result_log(NULL));
    FAILS(bad, vemo_result_run_count(NULL, 0));
    FAILS(bad, vemo_result_run(NULL, 0, 0));
    FAILS(bad, vemo_result_note_count(NULL, 0));
    FAILS(bad, vemo_result_note(NULL, 0, 0));
    FAILS(bad, vemo_result_name_count(NULL, 0));
    FAILS(bad, vemo_result_name(NULL, 0, 0));
    FAILS(bad, vemo_result_total(NULL));
    FAILS(bad, vemo_result_total_short(NULL));
    FAILS(bad, vemo_result_total_is_partial(NULL));
    FAILS(bad, vemo_result_formatted(NULL, VEMO_FORMAT_TEXT));
    /* Each call tells of itself, these too. */
    FAILS(VEMO_BAD_ARGUMENT, vemo_result_line_count(NULL));
    vemo_options_destroy(NULL);
    CHECK(vemo_last_status() == VEMO_OK);
    vemo_engine_destroy(NULL);
    vemo_document_destroy(NULL);
    FAILS(VEMO_BAD_ARGUMENT, vemo_result_line_count(NULL));
    vemo_completions_destroy(NULL);
    CHECK(vemo_last_status() == VEMO_OK);
    FAILS(VEMO_BAD_ARGUMENT, vemo_result_line_count(NULL));
    vemo_result_destroy(NULL);
    CHECK(vemo_last_status() == VEMO_OK);
    vemo_result_destroy(result);
    result = vemo_engine_calculate(engine, "1", VEMO_TO_NUL);
    FAILS(bad, vemo_result_milliseconds(result, 0, NULL));
    FAILS(bad, vemo_result_run(result, 0, 7));
    FAILS(bad, vemo_result_note(result, 0, 0));
    FAILS(bad, vemo_result_name(result, 0, 0));
    vemo_result_destroy(result);
    vemo_document_destroy(document);
    vemo_engine_destroy(engine);
}

static void hostile_text_is_an_error_or_a_result(void) {
    static const char* const broken[] = {"\xff", "5 \xc3", "\xed\xa0\x80", "\xc0\x80", "\xf5\x80\x80\x80", "a\x80"};
    vemo_engine* engine = english();
    vemo_document* document = vemo_document_create(engine, NULL, NULL);
    for (size_t i = 0; i < sizeof broken / sizeof *broken; ++i) {
        FAILS(VEMO_NOT_UTF8, vemo_engine_calculate(engine, broken[i], VEMO_TO_NUL));
        FAILS(VEMO_NOT_UTF8, vemo_document_set_text(document, broken[i], VEMO_TO_NUL));
        FAILS(VEMO_NOT_UTF8, vemo_engine_take_rates(engine, broken[i], VEMO_TO_NUL));
    }
    const size_t size = 1 << 20;
    char* large = malloc(size);
    memset(large, '(', size);
    vemo_result* result = vemo_engine_calculate(engine, large, size);
    CHECK(vemo_result_line_count(result) == 1 && is(vemo_result_reason_code(result, 0), "too_long"));
    CHECK(vemo_result_formatted(result, VEMO_FORMAT_JSON).length > size);
    vemo_result_destroy(result);
    FAILS(VEMO_BAD_ARGUMENT, vemo_engine_calculate(engine, large, (size_t)1 << 40));
    /* Every byte of ASCII, NUL among them. */
    for (size_t i = 0; i < 4096; ++i) large[i] = (char)(i * 7 % 128);
    result = vemo_engine_calculate(engine, large, 4096);
    size_t length = 0;
    for (size_t i = 0; i < vemo_result_line_count(result); ++i) length += vemo_result_text(result, i).length;
    CHECK(length > 3900);
    vemo_result_destroy(result);
    free(large);
    vemo_document_destroy(document);
    vemo_engine_destroy(engine);
}

struct listener {
    vemo_engine* engine;
    vemo_document* document;
    atomic_int calls;
    atomic_int refused;
};

static void hear(void* user) {
    struct listener* listener = user;
    vemo_result* result = vemo_document_latest(listener->document);
    if (result && vemo_result_line_count(result) > 0) ++listener->calls;
    vemo_result_destroy(result);
    /* What would wait for this very thread is refused; a calculation is not. */
    vemo_engine_destroy(listener->engine);
    if (vemo_last_status() == VEMO_IN_CALLBACK) ++listener->refused;
    if (vemo_engine_wait(listener->engine, 1) == VEMO_IN_CALLBACK) ++listener->refused;
    result = vemo_engine_calculate(listener->engine, "1 + 1", VEMO_TO_NUL);
    if (is(vemo_result_regular(result, 0), "2")) ++listener->refused;
    vemo_result_destroy(result);
}

static void hear_and_destroy(void* user) {
    struct listener* listener = user;
    ++listener->calls;
    vemo_document_destroy(listener->document);
    listener->document = NULL;
}

static void documents_follow_their_text(void) {
    struct listener listener = {english(), NULL, 0, 0};
    listener.document = vemo_document_create(listener.engine, hear, &listener);
    char text[64];
    for (int i = 1; i <= 200; ++i) {
        snprintf(text, sizeof text, "a = %d\na * 2", i);
        CHECK(vemo_document_set_text(listener.document, text, VEMO_TO_NUL) == VEMO_OK);
    }
    vemo_result* result = vemo_document_wait(listener.document, -1);
    CHECK(is(vemo_result_regular(result, 1), "400"));
    vemo_result_destroy(result);
    /* Rates that come later calculate it again. */
    vemo_document_set_text(listener.document, "$10 in EUR", VEMO_TO_NUL);
    result = vemo_document_wait(listener.document, 60000);
    CHECK(is(vemo_result_reason_code(result, 0), "no_rates"));
    vemo_result_destroy(result);
    CHECK(vemo_engine_take_rates(listener.engine, "{\"rates\":{\"EUR\":0.5}}", VEMO_TO_NUL) == VEMO_OK);
    bool known = false;
    for (int i = 0; i < 10000 && !known; ++i) {
        const int before = listener.calls;
        result = vemo_document_latest(listener.document);
        known = vemo_result_number(result, 0).data != NULL;
        vemo_result_destroy(result);
        if (!known && before == listener.calls) CHECK(vemo_engine_wait(listener.engine, 1) == VEMO_OK);
    }
    CHECK(known);
    vemo_document_destroy(listener.document);
    const int calls = listener.calls;
    CHECK(calls >= 3 && listener.refused == 3 * calls);

    /* One that its callback destroys. */
    listener.calls = 0;
    listener.document = vemo_document_create(listener.engine, hear_and_destroy, &listener);
    vemo_document_set_text(listener.document, "1", 1);
    while (listener.calls == 0) CHECK(vemo_engine_wait(listener.engine, 1) == VEMO_OK);
    vemo_document* orphan = vemo_document_create(listener.engine, NULL, NULL);
    vemo_document_set_text(orphan, "1 + 2", VEMO_TO_NUL);
    vemo_result_destroy(vemo_document_wait(orphan, -1));
    vemo_engine_destroy(listener.engine);
    CHECK(listener.document == NULL && listener.calls == 1);
    result = vemo_document_latest(orphan);
    CHECK(is(vemo_result_regular(result, 0), "3"));
    vemo_result_destroy(result);
    FAILS(VEMO_CLOSED, vemo_document_set_text(orphan, "2", 1));
    FAILS(VEMO_CLOSED, vemo_document_wait(orphan, -1));
    vemo_document_destroy(orphan);
}

static void ten_thousand_calls(void) {
    vemo_engine* engine = english();
    char text[64];
    for (int i = 0; i < 10000; ++i) {
        snprintf(text, sizeof text, "a = %d\na in cm\nb", i % 100);
        vemo_result* result = vemo_engine_calculate(engine, text, VEMO_TO_NUL);
        CHECK(vemo_result_regular(result, 0).length > 0);
        vemo_result_destroy(result);
    }
    vemo_engine_destroy(engine);
}

/* An engine of its own, and a document of another thread's. */
static void* work(void* shared) {
    vemo_engine* engine = english();
    vemo_document* document = vemo_document_create(shared, NULL, NULL);
    char text[64];
    for (int i = 0; i < 300; ++i) {
        snprintf(text, sizeof text, "width = %d ft\nwidth in cm\nMarch 4, 2027 + %d days", i, i);
        vemo_document_set_text(document, text, VEMO_TO_NUL);
        vemo_result* own = vemo_engine_calculate(engine, text, VEMO_TO_NUL);
        vemo_result* theirs = vemo_document_wait(document, -1);
        CHECK(is(vemo_result_regular(theirs, 1), vemo_result_regular(own, 1).data));
        vemo_result_destroy(theirs);
        vemo_result_destroy(own);
    }
    vemo_document_destroy(document);
    vemo_engine_destroy(engine);
    return NULL;
}

static void threads_share_engines(void) {
    vemo_engine* shared = english();
    pthread_t threads[2];
    for (int i = 0; i < 2; ++i) CHECK(pthread_create(&threads[i], NULL, work, shared) == 0);
    vemo_result* result = vemo_engine_calculate(shared, "1 + 1\n2 + 2\nx = 5 km in mi", VEMO_TO_NUL);
    for (int i = 0; i < 100; ++i) CHECK(vemo_result_regular(result, (size_t)i % 3).length > 0);
    vemo_result_destroy(result);
    for (int i = 0; i < 2; ++i) pthread_join(threads[i], NULL);
    vemo_engine_destroy(shared);
}

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    CHECK(strcmp(vemo_version(), (const char*)VemoEngineVersionString) == 0);
    lines_tell_what_they_know();
    formats_are_those_of_the_command();
    words_are_completed();
    settings_are_checked(argv[1]);
    rates_are_taken();
    null_is_an_error();
    hostile_text_is_an_error_or_a_result();
    documents_follow_their_text();
    ten_thousand_calls();
    threads_share_engines();
    if (failures == 0) puts("all right");
    return failures != 0;
}
