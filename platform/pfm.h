/*
 * Process services of the product family: ending at once.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** Ends the process with `status` at once: nothing is flushed and no destructor runs, so that a
    signal handler may call it. */
#ifdef __cplusplus
[[noreturn]]
#endif
void pfm_exit(int status);

#ifdef __cplusplus
}
#endif
