/*
 * The trace log: an optional text file, "uquarndiffmrg.log" in the per-user temporary directory,
 * for the failures that the user cannot see otherwise. The presence of TOLM_SERVICE_LOG in the
 * environment, even empty, switches it on. A record is its caller's text and nothing else: no time,
 * no line end of its own.
 */
#pragma once

#include <string>

/** Whether tracing is on and the file could be created: callers test it before they write. */
extern bool logging_enabled;

/** The trace file's path, set by init_logging and kept even when creating the file failed. */
extern std::string log_file_name;

/** Whether the environment asks for tracing now. */
bool check_log_env();

/** Names the trace file and creates it empty; false when that fails. */
bool init_logging();

/** Appends `text`, or drops it without a word when the file cannot be opened. Opens the file anew
    for every record, so that records of the forked child and of its parent stand in the order
    written. Safe in a signal handler. */
void write_log(const char* text);
