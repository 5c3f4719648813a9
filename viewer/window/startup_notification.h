/*
 * Tells a desktop on X11 that what the user started is there now: whoever was started with a
 * DESKTOP_STARTUP_ID, it was not this process, which ran before. Does nothing on other platforms.
 */
#pragma once

#include <QWidget>
#include <string>

/** Names the start on the window, before it is shown, so that it may come to the front. */
void name_startup(const QWidget& window, const std::string& startup_id);

/** Sends what has been asked of the display: it works on that while this process does other things.
 */
void send_to_display();

/** Ends the desktop's waiting. */
void end_startup(const std::string& startup_id);
