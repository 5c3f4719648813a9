/*
 * Starting the service as a detached process.
 */
#pragma once

/** Forks once; the child detaches from the terminal and becomes the service. Returns whether this
    process goes on with the run: true in the launcher, at once, without waiting for the service;
    false where the fork failed, and in a child that could not become the service. Both end with -1,
    and only the trace log tells why. */
bool start_tolm_service();
