/*
 * Where a viewer shows its window and how: the variables of a requester's environment that decide
 * on its display, language, scale and settings.
 */
#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

using ViewerVariables = std::map<std::string, std::string>;

/** Those variables of the process `id`; none when its environment cannot be read. */
ViewerVariables viewer_variables_of(pid_t id);

/** Which display that is. Variables of the same display have the same text; it is empty for none.
 */
std::string display_of(const ViewerVariables& variables);

/** The display as a log or a status shows it: ":0", "wayland-0", "no display". */
std::string display_name(const ViewerVariables& variables);

/** Whether the display is reached through a network, as those that ssh forwards are. */
bool is_remote_display(const ViewerVariables& variables);

/** The service's own environment with these variables in place of its own ones, each entry
    "NAME=value". */
std::vector<std::string> environment_with(const ViewerVariables& variables);
