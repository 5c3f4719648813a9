#include "service/call.h"

#include "service/own_fifo.h"
#include "service/process.h"

#include <stdexcept>
#include <system_error>
#include <utility>

Call::Call(const CallSurroundings& call_surroundings, Announcement announced)
    : surroundings(call_surroundings),
      announcement(std::move(announced)),
      launcher(surroundings.events, open_process(announcement.launcher)),
      variables(viewer_variables_of(announcement.launcher))
{
    for (const std::string& name : {announcement.request, announcement.response})
        if (!is_own_fifo(surroundings.directory.descriptor(), name))
            throw std::runtime_error(name + " is no FIFO of this user");
    hand_over();
}

void Call::hand_over()
{
    viewer = surroundings.viewers.take(variables);
    if (!viewer) {
        log("no viewer can be had on " + display_name(variables));
        return refuse();
    }
    const std::string folder = surroundings.directory.path() + "/";
    viewer->serve(folder + announcement.request, folder + announcement.response);
}

void Call::look()
{
    const bool launcher_ended = surroundings.events.ready(launcher.get());
    if (viewer)
        look_at_viewer();
    if (refusal)
        refusal->look(surroundings.events);
    if (launcher && launcher_ended)
        take_leave_of_launcher();
}

void Call::look_at_viewer()
{
    const bool was_ready = viewer->is_ready();
    const bool was_shown = viewer->is_shown();
    viewer->look(surroundings.events);
    is_answered = is_answered || viewer->is_answering();
    if (viewer->is_ready() && !was_ready)
        surroundings.viewers.note_start(variables, true);
    if (viewer->reason())
        log(*viewer->reason());
    if (viewer->is_shown() && !was_shown)
        surroundings.viewers.warm(variables);
    if (viewer->end())
        take_leave_of_viewer();
}

void Call::take_leave_of_viewer()
{
    const ViewerProcess ended = *std::exchange(viewer, std::nullopt);
    if (!ended.is_ready()) {
        surroundings.viewers.note_start(variables, false);
        if (launcher)
            return hand_over();
    }
    surroundings.viewers.warm(variables);
    if (is_answered)
        return;
    // Which of two ends came first cannot be seen, but only a viewer that was told ends in order.
    log(!launcher && ended.ended_in_order() ? "the launcher ended before it was answered"
                                            : "its viewer " + *ended.end() + " before it answered");
    if (launcher)
        refuse();
}

void Call::refuse()
{
    is_answered = true;
    try {
        refusal.emplace(surroundings.events, surroundings.directory.descriptor(), announcement);
    } catch (const std::system_error& error) {
        log(error.what());
    }
}

void Call::take_leave_of_launcher()
{
    launcher = {};
    refusal.reset();
    surroundings.directory.remove_fifo(announcement.request);
    surroundings.directory.remove_fifo(announcement.response);
    if (viewer)
        viewer->tell_launcher_is_gone();
}

std::optional<std::string> Call::display_of_window() const
{
    return viewer && viewer->is_shown() ? std::optional(display_name(variables)) : std::nullopt;
}

/** One line for one call: the first reason tells. */
void Call::log(const std::string& reason)
{
    if (std::exchange(is_logged, true))
        return;
    surroundings.log.line("launcher " + std::to_string(announcement.launcher) + ": " + reason);
}
