/*
 * One viewer, "quarnview" beside the service's program, and the lines that the two exchange:
 *
 *   to its standard input     the paths of the request FIFO and of the response FIFO, one line each
 *                             "gone"        the launcher has ended: close the window
 *   from its standard output  "ready"       it has started and waits for the paths
 *                             "answering"   it writes its answer next
 *                             "shown"       its window is up: time for the next spare
 *                             "reason TEXT" why its answer is 0, for the log
 *
 * The end of its input tells a viewer that the service is gone: one without a request ends then,
 * one with a window keeps it. A viewer has a process group of its own, so that Ctrl-C at a service
 * in the foreground leaves windows open.
 */
#pragma once

#include "service/descriptor.h"
#include "service/events.h"
#include "service/viewer_environment.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

class ViewerProcess
{
  public:
    /** Starts one with these variables and the install sub-directory as its argument. Throws
        std::system_error when no process can be made. */
    ViewerProcess(Events& events, ViewerVariables viewer_variables,
                  const std::string& install_directory);

    const ViewerVariables& variables() const { return own_variables; }

    /** Gives it the launcher's FIFOs, by their full paths. */
    void serve(const std::string& request_path, const std::string& response_path) const;

    void tell_launcher_is_gone() const;

    /** Ends it at once: for one that has no request. */
    void kill() const;

    /** Takes in what it has said and whether it has ended. */
    void look(const Events& events);

    bool is_ready() const { return ready; }
    bool is_answering() const { return answering; }
    bool is_shown() const { return shown; }

    /** The reason that it gave last. */
    const std::optional<std::string>& reason() const { return given_reason; }

    /** Whether it has ended by itself, with status 0. */
    bool ended_in_order() const { return in_order; }

    /** How it ended, for a reader ("was ended by signal 9"); nothing while it lives. */
    const std::optional<std::string>& end() const { return told_end; }

  private:
    void listen();
    void take(std::string_view bytes);
    void take_line(const std::string& line);

    ViewerVariables own_variables;
    pid_t id = 0;
    WatchedDescriptor process;
    Descriptor input;
    WatchedDescriptor output;
    std::string unfinished;
    bool ready = false;
    bool answering = false;
    bool shown = false;
    std::optional<std::string> given_reason;
    bool in_order = false;
    std::optional<std::string> told_end;
};
