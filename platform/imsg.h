/*
 * Messages of the product family: looks a program's messages up in its catalogue and shows them on
 * the console, or hands them to callbacks.
 *
 * A catalogue is looked for through NLSPATH when that is set (as catopen does), then below the
 * product directory as share/locale/<locale>/LC_MESSAGES/<catalogue name>.cat. <locale> is the
 * LC_MESSAGES locale; in a UTF-8 locale also its name without the codeset and its bare language,
 * since the installed catalogues are UTF-8.
 */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A program's message table. `texts` and `catalogue_numbers` are parallel, `count` entries each;
    a position is an index into them. `catalogue_id` is the set of the catalogue that holds the
    numbers. */
struct imsg_table {
    const char* catalogue_name;
    const char* short_prefix;
    uint16_t catalogue_id;
    uint16_t count;
    const char* const* texts;
    const uint16_t* catalogue_numbers;
};

enum {
    IMSG_LITERAL = 0,          /**< the source is a printf format, shown on standard output */
    IMSG_ERROR = 6,            /**< the source is an imsg_table, shown on standard error */
    IMSG_LITERAL_POSITION = -1 /**< the position to pass when the source is itself the format */
};

/** Receives one piece of output; `context` is what was given with the callback. */
typedef void (*imsg_output_callback)(void* context, char* text);

/** Registers the program's name, which then stands before the library's own complaints. `name` must
    outlive its use. */
void imsg_set_app_name(char* name);

/** Shows one message. IMSG_ERROR: the catalogue's text for the entry at `position` of the table
    `source`, or else its built-in text, and a newline; the text is never taken as a format.
    IMSG_LITERAL: the arguments formatted by the format `source`.
    Returns the number of characters shown; -1 for an unknown kind, for a position that the table
    does not have (it then complains on standard error), or when the console takes no output. */
int imsg_print(int kind, const void* source, int position, ...);

/** Formats into `buffer`, which the caller made large enough, and returns the number of characters
    written without the NUL. `position` is IMSG_LITERAL_POSITION. */
int imsg_sprintf(char* buffer, const char* format, int position, ...);

/** From now on hands what would go to standard output and standard error to the callbacks, in the
    same pieces; a null callback gives its channel back to the console. Returns 0. */
int imsg_redirect_output(imsg_output_callback out_callback, void* out_context,
                         imsg_output_callback err_callback, void* err_context);

#ifdef __cplusplus
}
#endif
