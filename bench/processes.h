/*
 * The processes of a benchmark: launchers, which it starts and waits for, and the service that they
 * meet in TMPDIR, whoever started it. What cannot be done throws std::runtime_error, as does an
 * interruption of the benchmark: its scratch directory then ends all its processes.
 */
#pragma once

#include "tests/harness/scratch.h"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using Words = std::vector<std::string>;

/** From now on a signal that would end the benchmark interrupts it. */
void catch_interruptions();

/** Starts the program `words[0]` with the benchmark's own environment, but with the scratch
    directory's TMPDIR. */
pid_t start(const Scratch& scratch, const Words& words);

/** The same for a program that leads a session of its own, and whose output nobody reads. */
pid_t start_session(const Scratch& scratch, const Words& words);

/** Waits until a child, or just the one `expected`, has ended, and gives its process id. An end
   with another status than 0 is a failure: such a launcher's time means nothing. */
pid_t wait_for_success(pid_t expected = -1);

/** Whether the child ends within that time; it still has to be waited for. */
bool ends_within(pid_t child, std::chrono::milliseconds time);

/** The service of the launcher's product tree, and its argument. */
Words service_beside(const std::string& launcher);

/** Starts a service and waits until it serves; gives its process id. */
pid_t start_service(const Scratch& scratch, const Words& words);

/** Waits until a service serves in the scratch directory, and gives its process id. */
pid_t wait_for_service(const Scratch& scratch);

/** Ends a service that is a child or became one: by SIGTERM, and by force where that does not end
    it within two seconds. Returns when it has gone. */
void end_service(pid_t service);

/** The processor time that a process itself has used, its children's not counted, once it rests. */
std::chrono::nanoseconds processor_time_at_rest(pid_t process);
