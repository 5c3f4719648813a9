/*
 * System utilities of the product family: who the user is.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** The login name of the real user as the user database has it, or the user id in decimal where
    the database has no entry. The text belongs to the library and holds until the next call. */
const char* sysutl_myloginname(void);

#ifdef __cplusplus
}
#endif
