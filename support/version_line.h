/*
 * The version line: program name in 33 columns, version, build stamp in brackets, newline. Part of
 * the program's interface; the launcher's own flow never shows it.
 */
#pragma once

/** Shows the version line on standard output; returns the message library's result. */
int uquarndiffmrg_print_verid();

/** Writes the same line and a NUL into `buffer`, which holds 69 bytes or more; returns the message
    library's result. */
int uquarndiffmrg_sprintf_verid(char* buffer);
