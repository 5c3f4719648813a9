/*
 * FIFOs that are opened only when they are what they should be: FIFOs, and this user's.
 */
#pragma once

#include "service/descriptor.h"

#include <string>

/** Opens the FIFO `name` in the open `directory` (AT_FDCWD for a full path), never blocking and
    never through a link. Throws std::system_error when that fails or what is there is no FIFO of
    this user. */
Descriptor open_own_fifo(int directory, const std::string& name, int access);

/** Whether what is there now is such a FIFO. */
bool is_own_fifo(int directory, const std::string& name);
