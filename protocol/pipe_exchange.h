/*
 * One request to the service and its answer, over FIFOs in the per-user temporary directory.
 *
 *   1. open the service's rendezvous FIFO, retrying while the service starts
 *   2. make a request and a response FIFO of our own
 *   3. write their two paths, a line each, to the rendezvous FIFO
 *   4. open the request FIFO, then the response FIFO: each open ends when the service opens its
 * side
 *   5. write the request and a line feed, read the reply once
 *   6. close both, remove both
 *
 * No open may last longer than 90 seconds: the alarm's handler then ends the process, and our FIFOs
 * stay on disk. They stay too when the announcement cannot be written or an open fails; the service
 * sweeps what dead launchers leave.
 */
#pragma once

#include <string>

/** Delivers the request document and returns whether the service answered with success; false on
    every failure that returns. Prints "Launcher Wrapper dead" on standard output, without a line
    end, when the announcement cannot be written. From here on the process ignores SIGPIPE. */
bool send_data_unix(const std::string& request);

/** Seconds between two attempts to open the rendezvous FIFO: 10. */
int get_default_timeout();

/** Ends the process with status -1 when `signal_number` is SIGALRM, with a record in the trace log
    when the environment asks for tracing; returns on any other signal. */
void pipe_alarm_signal_handler(int signal_number);
