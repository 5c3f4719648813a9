/*
 * Clears away the FIFOs that launchers left which ended before they could remove them.
 */
#pragma once

#include "service/user_directory.h"

/** Removes every launcher's FIFO in `directory` whose launcher no longer lives; a process that
    started after the FIFO was made has only inherited its number. */
void sweep(const UserDirectory& directory);
