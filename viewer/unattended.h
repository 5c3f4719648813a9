/*
 * What is done with a request where there is no display, and so nobody to look: a merge whose
 * changes do not collide is written.
 */
#pragma once

#include "viewer/core/request.h"
#include "viewer/core/text.h"

#include <optional>
#include <string>
#include <sys/types.h>

/** Reads all contributors, which all must be text. Throws std::runtime_error with the path of the
    first that is none, and why. */
Texts read_contributors(const Request& request);

/** Merges without being asked anything; a new output gets the mode 0666 without the bits of
    `file_mode_mask`. Throws std::runtime_error with the reason where that cannot be: there is a
    conflict, there is nothing to merge, a file cannot be read or written. */
void merge_unattended(const Request& request, mode_t file_mode_mask);

/** Waits for a request, carries it out and answers it; the exit status. */
int serve_unattended();
