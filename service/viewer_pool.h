/*
 * The viewers that wait: one spare per display, started before it is wanted, so that a window is
 * there at once. A display on which viewers cannot start is left alone for a while.
 */
#pragma once

#include "service/events.h"
#include "service/log.h"
#include "service/viewer_process.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

class ViewerPool
{
  public:
    /** `install_directory` is each viewer's argument. */
    ViewerPool(Events& loop_events, Log& service_log, std::string install_directory);

    /** A viewer for a requester with these variables: the spare when it has started with the same
        ones, else a new one. Nothing when none can be had now. */
    std::optional<ViewerProcess> take(const ViewerVariables& variables);

    /** Starts the spare for the next such requester, where there is none. A display in the network
        gets none: a waiting viewer would keep its connection, and the ssh session that forwards it,
        from ending. */
    void warm(const ViewerVariables& variables);

    /** Takes note that a viewer with these variables has started, or has ended before it had. Three
        failures in a row, and the display is left alone for a minute. */
    void note_start(const ViewerVariables& variables, bool success);

    /** Looks after the spares. */
    void look();

    /** Ends the spares and starts no more. */
    void close();

    /** Whether every viewer that was ended has gone. */
    bool is_settled() const { return dismissed.empty(); }

    /** The names of the displays that have a spare. */
    std::vector<std::string> displays_with_spare() const;

  private:
    struct Display {
        std::optional<ViewerProcess> spare;
        int failures = 0;
        std::chrono::steady_clock::time_point left_alone_until;
    };

    std::optional<ViewerProcess> start(const ViewerVariables& variables);
    void look_after(Display& display);
    void dismiss(Display& display);

    Events& events;
    Log& log;
    std::string directory;
    std::map<std::string, Display> displays;
    std::vector<ViewerProcess> dismissed;
    bool closed = false;
};
