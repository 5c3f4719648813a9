/*
 * Child processes of a test: another program run to its end with its output kept, or a function
 * run in a fork, so that what it does to its process stays there.
 */
#pragma once

#include "tests/support/tools/scratch_directory.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

struct Outcome {
    int status; /**< the exit status, or minus the number of the signal that ended it */
    std::string output;
    std::string error;
};

struct Command {
    std::vector<std::string> words; /**< the program's path and its arguments */
    std::vector<std::pair<std::string, std::string>> environment = {}; /**< added to ours */
    std::vector<int> closed = {}; /**< descriptors that are closed when it starts */
    std::string error_file = {};  /**< where standard error goes instead of Outcome::error */
};

/** Runs the command to its end; its output passes through files in `scratch`. */
Outcome run_program(const ScratchDirectory& scratch, const Command& command);

/** Runs `body` in a forked child; its result is the exit status. Answers as Outcome::status. */
int run_in_child(const std::function<int()>& body);
