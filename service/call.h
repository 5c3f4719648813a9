/*
 * One launcher's call, from its announcement to the end of its process and of its viewer.
 *
 *   1. a viewer on the launcher's display gets the paths of its FIFOs, and does the exchange
 * itself: where it dies, the launcher meets the end of the file, which it takes for failure
 *   2. a viewer that ends before it has started is replaced, until the display is left alone
 *   3. where no viewer answers, the service answers itself, with failure
 *   4. when the launcher ends, the viewer is told and the FIFOs are removed
 *
 * The service answers only as long as no viewer has begun to: no launcher ever gets two answers.
 */
#pragma once

#include "service/announcement.h"
#include "service/descriptor.h"
#include "service/events.h"
#include "service/log.h"
#include "service/refusal.h"
#include "service/user_directory.h"
#include "service/viewer_pool.h"

#include <optional>
#include <string>

/** What all calls use; it outlives them. */
struct CallSurroundings {
    const UserDirectory& directory;
    Events& events;
    Log& log;
    ViewerPool& viewers;
};

class Call
{
  public:
    /** Begins it. Throws std::runtime_error when the launcher is gone or a FIFO is not what it
        should be. */
    Call(const CallSurroundings& call_surroundings, Announcement announced);

    /** Goes on with what the last wait has found. */
    void look();

    bool has_ended() const { return !launcher && !viewer; }

    /** The display on which its window is open. */
    std::optional<std::string> display_of_window() const;

  private:
    void hand_over();
    void look_at_viewer();
    void take_leave_of_viewer();
    void refuse();
    void take_leave_of_launcher();
    void log(const std::string& reason);

    const CallSurroundings& surroundings;
    Announcement announcement;
    WatchedDescriptor launcher; // until it ends
    ViewerVariables variables;
    std::optional<ViewerProcess> viewer; // until it ends
    std::optional<Refusal> refusal;
    bool is_answered = false;
    bool is_logged = false;
};
