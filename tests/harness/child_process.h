/*
 * A function that runs in a fork of the test, so that what it does to its process, and be it the
 * process's end, stays there. Other programs are not run in this way: program.h does that.
 */
#pragma once

#include <functional>

/** Runs `body` in a forked child, whose exit status its result is. Answers that status, or minus
    the number of the signal that ended the child. */
int run_in_child(const std::function<int()>& body);
