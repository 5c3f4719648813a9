/*
 * Processes by their descriptors, which a process id that the system gives away again cannot fool.
 */
#pragma once

#include "service/descriptor.h"

#include <ctime>
#include <sys/types.h>

/** A descriptor of the process `id`, readable when it ends. Throws std::system_error when there is
    no such process. */
Descriptor open_process(pid_t id);

/** Sends a signal to the process that a descriptor stands for; nothing when it has ended. */
void send_signal(int process, int signal_number);

/** Whether a process `id` lives that may have made a file at that time: one that started later has
    only inherited the number. */
bool lives_since(pid_t id, const timespec& file_time);
