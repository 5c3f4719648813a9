/*
 * An X server of a test's own that nobody sees, and a user of the windows that viewers show there.
 */
#pragma once

#include "tests/harness/program.h"

#include <csignal>
#include <string>
#include <vector>

class XServer
{
  public:
    /** Returns when it serves: the wanted display, or a free one. The file `name` in the scratch
        directory gets the display's number. */
    explicit XServer(const Scratch& scratch, const std::string& name = "display",
                     const std::string& wanted = "");

    const std::string& display() const { return display_; }

    void end(int signal = SIGTERM);

    Outcome xdotool(std::vector<std::string> words) const;

    /** Presses a key in a viewer's window, where there is one. */
    void press(const std::string& key) const;

    /** Presses keys, one after the other, again and again until the launcher ends: a window takes
        some of them only when its work is done. */
    void press_until_end(const Program& launcher, const std::vector<std::string>& keys) const;

  private:
    const Scratch& scratch_directory;
    Program server;
    std::string display_;
};
