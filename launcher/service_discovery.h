/*
 * Where the service's program is, and whether a service of this user runs. A service lives exactly
 * as long as it holds the lock on its pid file; process ids are never probed, so a stale file does
 * no harm. The launcher never creates, changes or removes the pid file.
 */
#pragma once

#include <string>

/** Full path of the service's program; empty until set_ks_product_path. */
extern std::string product_path;

/** Sets product_path below the product installation directory. */
void set_ks_product_path();

/** Whether a service runs: its pid file can be read and proc_exists says so. */
bool tolm_service_process_check();

/** Whether another process locks the pid file. The process id plays no part, deliberately: the lock
    alone decides. A file that cannot be opened for writing counts as no service; any failure of the
    lock call counts as a running one. */
bool proc_exists(int process_id);
