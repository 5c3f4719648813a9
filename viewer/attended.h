/*
 * A request shown in a window: the event loop between the service, the launcher and the window.
 */
#pragma once

/** Starts the toolkit, makes the window, and waits for a request; shows it, answers it, and returns
    the exit status: 0 when it was answered, or its launcher or the service has gone before. */
int serve_attended(int argc, char* argv[]);
