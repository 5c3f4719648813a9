/*
 * Where the service says why it cannot serve: on standard error as long as somebody may read that,
 * in the system's log after it has left its starter.
 */
#pragma once

#include <string>

void complain(const std::string& text);

/** From here on complaints go to the system's log. */
void complain_to_system_log();
