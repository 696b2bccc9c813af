/* SPDX-License-Identifier: MIT */
#ifndef VEMO_VEMO_H
#define VEMO_VEMO_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/*
 * The calculator for C, and for every language that can call C.
 *
 *     vemo_engine* engine = vemo_engine_create(NULL);
 *     vemo_result* result = vemo_engine_calculate(engine, "5 inch in cm", VEMO_TO_NUL);
 *     puts(vemo_result_regular(result, 0).data);
 *     vemo_result_destroy(result);
 *     vemo_engine_destroy(engine);
 *
 * Texts are UTF-8. One that is handed in is copied; its length is in bytes, or VEMO_TO_NUL where a NUL ends it. One
 * that comes back is a vemo_text, which belongs to the object that it was asked of and stays until that is destroyed.
 * Positions and lengths in texts are counted in bytes, lines and entries from 0.
 *
 * Errors. NULL where an object or a text is expected, text that is not UTF-8, and numbers out of range are errors, as
 * is everything else that can't be done. A function that gives no status gives NULL, a text without data, 0 or false
 * then. vemo_last_status and vemo_last_error tell what became of the latest call of the calling thread. Nothing is
 * thrown.
 *
 * Threads. Every function may be called from any thread. Each engine has a thread of its own, on which documents are
 * calculated and callbacks run; calls of one engine wait for each other. A thread that an engine started does not
 * survive fork().
 *
 * Ownership. What a function named create, calculate, latest, wait or complete gives is the caller's, who destroys it
 * with the function that is named so. Destroying NULL does nothing. Results outlive their engine.
 */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct vemo_options vemo_options;         /* how an engine is to be made */
typedef struct vemo_engine vemo_engine;           /* a calculator with its rates and threads */
typedef struct vemo_document vemo_document;       /* a text that is edited and calculated again and again */
typedef struct vemo_result vemo_result;           /* what the lines of a text gave; never changes */
typedef struct vemo_completions vemo_completions; /* what the word at a place may become; never changes */

/* Bytes of UTF-8 with a NUL after them, which may hold others. Without data where there is no text. */
typedef struct vemo_text {
    const char* data;
    size_t length;
} vemo_text;

#define VEMO_TO_NUL ((size_t)-1)

typedef enum vemo_status {
    VEMO_OK = 0,
    VEMO_BAD_ARGUMENT = 1, /* NULL, or a number out of range */
    VEMO_NOT_UTF8 = 2,
    VEMO_UNUSABLE = 3,    /* a locale, a language, a folder, a URL or a text of rates that is none */
    VEMO_NOT_FETCHED = 4, /* rates or places that did not come */
    VEMO_TIMED_OUT = 5,
    VEMO_CLOSED = 6,      /* the engine is destroyed */
    VEMO_IN_CALLBACK = 7, /* in a callback, which would wait for itself */
    VEMO_NO_MEMORY = 8,
    VEMO_FAILED = 9
} vemo_status;

/* What became of the latest call of this thread, calls of these two aside. The message is in English, stays until the
 * next call, and is NULL after a success. */
vemo_status vemo_last_status(void);
const char* vemo_last_error(void);

/* The version of the library, such as "1.2.3". */
const char* vemo_version(void);

/*
 * Options: what is not set is as the system has it, and nothing is fetched. Each setting is checked at once; one that
 * is no use changes nothing. An object of options is used by one thread at a time.
 */
vemo_options* vemo_options_create(void);
void vemo_options_destroy(vemo_options* options);
vemo_status vemo_options_set_language(vemo_options* options, const char* code);     /* of the words: "de" */
vemo_status vemo_options_set_locale(vemo_options* options, const char* identifier); /* of the numbers: "de_DE" */
vemo_status vemo_options_set_time_zone(vemo_options* options, const char* name);    /* "Europe/Berlin" */
vemo_status vemo_options_set_precision(vemo_options* options, int digits);          /* most fraction digits, 0 to 999 */
vemo_status vemo_options_set_now(vemo_options* options, int64_t milliseconds); /* the clock stands there, from 1970 */
vemo_status vemo_options_set_extensions(vemo_options* options, const char* folder); /* of user scripts */
vemo_status vemo_options_set_caches(vemo_options* options, const char* folder);     /* for what is fetched */
vemo_status vemo_options_set_rates(vemo_options* options, const char* url);  /* exchange rates, fetched now and then */
vemo_status vemo_options_set_coins(vemo_options* options, const char* url);  /* those of crypto-currencies */
vemo_status vemo_options_set_places(vemo_options* options, const char* url); /* a service for places' time zones */

/* An engine, ready when this returns. It takes what it needs of the options, which may be NULL. */
vemo_engine* vemo_engine_create(const vemo_options* options);
/* Waits for the line being calculated. Not in a callback. No call of the engine may be under way. */
void vemo_engine_destroy(vemo_engine* engine);
/* What loading the user scripts said. */
vemo_text vemo_engine_log(const vemo_engine* engine);

/* Calculates a text of one calculation per line. */
vemo_result* vemo_engine_calculate(vemo_engine* engine, const char* text, size_t length);

/* Takes rates from a JSON text, {"rates": {"EUR": 0.92, ...}} per US dollar: of currencies, of crypto-currencies. */
vemo_status vemo_engine_take_rates(vemo_engine* engine, const char* json, size_t length);
vemo_status vemo_engine_take_coins(vemo_engine* engine, const char* json, size_t length);

/* Waits until everything that lines need has been fetched: rates, and places of the latest calculation. A calculation
 * never waits by itself. VEMO_NOT_FETCHED when something went wrong since the last call, which the message tells. */
vemo_status vemo_engine_wait(vemo_engine* engine, int milliseconds);

/* What the end of the first `position` bytes of a text may become, names of the text included; at most `most`. */
vemo_completions* vemo_engine_complete(vemo_engine* engine, const char* text, size_t length, size_t position,
                                       size_t most);
void vemo_completions_destroy(vemo_completions* completions);
size_t vemo_completions_count(const vemo_completions* completions);
/* Where the part of the text begins that a completion replaces; it ends at the position that was asked for. */
size_t vemo_completions_start(const vemo_completions* completions);
vemo_text vemo_completions_text(const vemo_completions* completions, size_t index);
/* "operator", "unit", "currency", "function", "variable", "place" or "script". */
vemo_text vemo_completions_kind(const vemo_completions* completions, size_t index);

/*
 * A document is calculated whenever its text is set, and again when what its lines depend on changed: the minute,
 * rates, places. `answered`, which may be NULL, is called with `user` after each calculation, on the engine's thread;
 * it should return soon, may ask for the result, and may destroy the document. A newer text stops the calculation of an
 * older one.
 */
typedef void (*vemo_answered)(void* user);
vemo_document* vemo_document_create(vemo_engine* engine, vemo_answered answered, void* user);
/* When this returns, the callback has run for the last time. */
void vemo_document_destroy(vemo_document* document);
/* Returns at once. */
vemo_status vemo_document_set_text(vemo_document* document, const char* text, size_t length);
/* The latest result; NULL, which is no error, before the first. */
vemo_result* vemo_document_latest(vemo_document* document);
/* The result of the text as it is. Waits so long for it; a negative time has no end. */
vemo_result* vemo_document_wait(vemo_document* document, int milliseconds);

void vemo_result_destroy(vemo_result* result);
size_t vemo_result_line_count(const vemo_result* result);
vemo_text vemo_result_text(const vemo_result* result, size_t line); /* of the line */

/* The result as it is shown: in full, and abbreviated where there is such a form. No text for a line without a result.
 */
vemo_text vemo_result_regular(const vemo_result* result, size_t line);
vemo_text vemo_result_short(const vemo_result* result, size_t line);

/* The value: an exact number, such as "-12.7", with its unit's identifier where it has one; or an instant in UTC, such
 * as "2027-03-04T10:00:00Z" and in milliseconds since 1970, with the time zone it is shown in. */
vemo_text vemo_result_number(const vemo_result* result, size_t line);
vemo_text vemo_result_unit(const vemo_result* result, size_t line);
vemo_text vemo_result_instant(const vemo_result* result, size_t line);
vemo_text vemo_result_zone(const vemo_result* result, size_t line);
/* False, and nothing written, where the value is no instant. */
bool vemo_result_milliseconds(const vemo_result* result, size_t line, int64_t* milliseconds);

/* Why a line that asks for a result has none: a code for programs, such as "division_by_zero", and a sentence in the
 * user's language. No text for any other line. */
vemo_text vemo_result_reason_code(const vemo_result* result, size_t line);
vemo_text vemo_result_reason(const vemo_result* result, size_t line);

/* The line as it was calculated, fully bracketed. Calculates it again with what the engine knows at the time. */
vemo_text vemo_result_reading(const vemo_result* result, size_t line);

/* What user scripts said while the text was calculated. */
vemo_text vemo_result_log(const vemo_result* result);

/* The line cut into pieces for colouring. Types are "num", "oprtr", "oprtrsmb", "unit", "var", "fn", "prnth", "cmnt",
 * "hdr" and "lbl"; plain text has none. */
typedef struct vemo_run {
    vemo_text text;
    vemo_text type;
} vemo_run;
size_t vemo_result_run_count(const vemo_result* result, size_t line);
vemo_run vemo_result_run(const vemo_result* result, size_t line, size_t index);

/* Remarks on a part of the line: what took no part in the result, or was read in a way a person may not expect. The
 * kind is for programs, such as "unused_value", the message in the user's language. */
typedef struct vemo_note {
    vemo_text kind;
    size_t start;
    size_t length;
    vemo_text message;
} vemo_note;
size_t vemo_result_note_count(const vemo_result* result, size_t line);
vemo_note vemo_result_note(const vemo_result* result, size_t line, size_t index);

/* The names that the line defines and uses, from the left to the right, in lower case. */
typedef struct vemo_name {
    vemo_text name;
    size_t start;
    size_t length;
    bool defines;
} vemo_name;
size_t vemo_result_name_count(const vemo_result* result, size_t line);
vemo_name vemo_result_name(const vemo_result* result, size_t line, size_t index);

/* The grand total of all lines; partial where the results of some could not be added. */
vemo_text vemo_result_total(const vemo_result* result);
vemo_text vemo_result_total_short(const vemo_result* result);
bool vemo_result_total_is_partial(const vemo_result* result);

/* All lines with their results in one text, as the command `vemo` writes it. */
typedef enum vemo_format {
    VEMO_FORMAT_TEXT = 0,
    VEMO_FORMAT_CSV = 1,
    VEMO_FORMAT_TSV = 2,
    VEMO_FORMAT_MARKDOWN = 3,
    VEMO_FORMAT_HTML = 4,
    VEMO_FORMAT_JSON = 5
} vemo_format;
vemo_text vemo_result_formatted(const vemo_result* result, vemo_format format);

#ifdef __cplusplus
}
#endif

#endif
