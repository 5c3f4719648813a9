/*
 * Whether there is a display to show windows on. Asked before the toolkit starts, which ends its
 * process when it cannot open one.
 */
#pragma once

/** Whether the environment names a display at all. */
bool has_display();

/** Whether that display can be opened. */
bool can_open_display();
