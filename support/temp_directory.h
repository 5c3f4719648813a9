/*
 * The per-user temporary directory, "<system temporary directory>/<login name>.uquarndiffmrg": the
 * one place for the trace file, the pid file and the FIFOs, shared by the launcher and the service.
 */
#pragma once

#include <string>

/** The directory's path; empty until set_temp_directory. */
extern std::string modified_temp_directory;

/** Computes the path and creates the directory, mode 0777 less the umask. False when there is no
    system temporary directory (the path stays empty) or the creation fails (the path stays set). An
    existing entry of that name is success whatever it is: its kind, owner and mode are deliberately
    not looked at. */
bool set_temp_directory();

/** The directory's path, never with a trailing slash of its own. */
std::string get_temp_directory();
