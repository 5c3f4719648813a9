/*
 * File utilities of the product family: the system temporary directory.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** Writes the system temporary directory into `buffer`: $TMPDIR when set and not empty, else
   "/tmp", without trailing slashes ("/" itself stays). Returns 0; where the path and its NUL do not
   fit `size` bytes the text is empty, never a truncated path, and the result is -1. `kind` and
   `options` are 0. */
int fileutl_get_tmpdir(int kind, char* buffer, int size, int options);

#ifdef __cplusplus
}
#endif
