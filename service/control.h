/*
 * What can be asked of the running service from outside. Both return the exit status to give: 0, or
 * 1 with a line on standard output when no service runs, on standard error when one does not obey.
 */
#pragma once

#include <string>

/** Shows how the service of that per-user directory is doing. */
int show_status(const std::string& directory_path);

/** Has it end in order, and waits until its lock is free. */
int stop_service(const std::string& directory_path);
