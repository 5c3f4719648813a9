/*
 * System services of the product family: process preparation and the product installation
 * directory. A C interface, so that the family's own library can be linked in its place.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** Makes sure that descriptors 0, 1 and 2 are open, on /dev/null where the starter closed them,
    so that no file or FIFO opened later becomes a standard stream. Called first, once. */
void ks_system_init(void);

/** Writes the product installation directory, without a trailing slash, into `buffer` (4096 bytes)
    and returns `buffer`. That is the parent of the `bin` directory that holds the running program's
    real file, else the configured install prefix; a path that does not fit gives an empty text.
    `reserved` is 0. */
char* ks_product_dir(char* buffer, int reserved);

#ifdef __cplusplus
}
#endif
