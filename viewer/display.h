/*
 * Whether there is a display to show windows on. Asked before the toolkit starts, which ends its
 * process by an abort when it cannot open one.
 */
#pragma once

#include <optional>
#include <string>
#include <vector>

/** Whether the environment names a display at all. */
bool has_display();

/** The toolkit's platform for a display that the environment names and that can be opened: empty
    where the toolkit shall choose, nothing where there is none. The toolkit opens Wayland displays
    only with a plugin that is a package of its own; `plugin_folders` are where it looks for one. */
std::optional<std::string> platform_of_display(const std::vector<std::string>& plugin_folders);
