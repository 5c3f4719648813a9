/*
 * The text encodings that a command line may name, and the type managers that stand for them in a
 * request: two tables of fixed-width, NUL-padded rows. Row i of one belongs to row i of the other.
 */
#pragma once

inline constexpr int encoding_rows = 6;

/** The values of "-encoding", ended by the row " ", which is never a valid value. */
extern const char encoding_types[encoding_rows][10];

/** The type manager of each encoding; the first is the default of a request. */
extern const char type_manager_names[encoding_rows][25];

/** What ends both tables. */
inline constexpr const char* end_marker = " ";
