#include "service/viewer_pool.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace
{

constexpr int most_failures = 3;
constexpr std::chrono::minutes left_alone_for{1};

} // namespace

ViewerPool::ViewerPool(Events& loop_events, Log& service_log, std::string install_directory)
    : events(loop_events), log(service_log), directory(std::move(install_directory))
{
}

std::optional<ViewerProcess> ViewerPool::take(const ViewerVariables& variables)
{
    Display& display = displays[display_of(variables)];
    if (display.spare && display.spare->variables() == variables)
        return std::exchange(display.spare, std::nullopt);
    dismiss(display);
    return start(variables);
}

void ViewerPool::warm(const ViewerVariables& variables)
{
    if (closed || is_remote_display(variables))
        return;
    Display& display = displays[display_of(variables)];
    if (!display.spare)
        display.spare = start(variables);
}

/** Tries until it succeeds or the display is left alone. */
std::optional<ViewerProcess> ViewerPool::start(const ViewerVariables& variables)
{
    const Display& display = displays[display_of(variables)];
    while (std::chrono::steady_clock::now() >= display.left_alone_until) {
        try {
            return ViewerProcess(events, variables, directory);
        } catch (const std::system_error& error) {
            log.line(display_name(variables) + ": no viewer: " + error.what());
            note_start(variables, false);
        }
    }
    return std::nullopt;
}

void ViewerPool::note_start(const ViewerVariables& variables, bool success)
{
    Display& display = displays[display_of(variables)];
    display.failures = success ? 0 : display.failures + 1;
    if (display.failures < most_failures)
        return;
    log.line(display_name(variables) + ": viewers do not start; left alone for a minute");
    display.failures = 0;
    display.left_alone_until = std::chrono::steady_clock::now() + left_alone_for;
}

void ViewerPool::look()
{
    for (auto& [key, display] : displays)
        look_after(display);
    for (ViewerProcess& viewer : dismissed)
        viewer.look(events);
    std::erase_if(dismissed, [](const ViewerProcess& viewer) { return viewer.end().has_value(); });
    std::erase_if(displays, [now = std::chrono::steady_clock::now()](const auto& entry) {
        const Display& display = entry.second;
        return !display.spare && display.failures == 0 && display.left_alone_until <= now;
    });
}

void ViewerPool::look_after(Display& display)
{
    if (!display.spare)
        return;
    const bool was_ready = display.spare->is_ready();
    display.spare->look(events);
    if (display.spare->is_ready() && !was_ready)
        note_start(display.spare->variables(), true);
    if (!display.spare->end())
        return;
    const ViewerProcess ended = *std::exchange(display.spare, std::nullopt);
    // One that was ready has most likely lost its display: the next request tries again.
    if (ended.is_ready())
        return;
    log.line(display_name(ended.variables()) + ": a spare viewer " + *ended.end());
    note_start(ended.variables(), false);
}

void ViewerPool::close()
{
    closed = true;
    for (auto& [key, display] : displays)
        dismiss(display);
}

std::vector<std::string> ViewerPool::displays_with_spare() const
{
    std::vector<std::string> names;
    for (const auto& [key, display] : displays)
        if (display.spare)
            names.push_back(display_name(display.spare->variables()));
    return names;
}

void ViewerPool::dismiss(Display& display)
{
    if (!display.spare)
        return;
    display.spare->kill();
    dismissed.push_back(*std::exchange(display.spare, std::nullopt));
}
