/*
 * A parsed command line for tests: words without the program's name, as the process would get them.
 */
#pragma once

#include "cmdline/command_line_info.h"

#include <string>
#include <vector>

/** Lets `command_line` parse the words; returns what sanity_check says. */
inline bool parse(DiffMrgCommandLineInfo& command_line, const std::vector<std::string>& words)
{
    std::vector<const char*> vector{"uquarndiffmrg"};
    for (const std::string& word : words)
        vector.push_back(word.c_str());
    const int count = static_cast<int>(vector.size());
    vector.push_back(nullptr);
    return command_line.sanity_check(count, vector.data());
}

inline DiffMrgCommandLineInfo parsed(const std::vector<std::string>& words)
{
    DiffMrgCommandLineInfo command_line{};
    parse(command_line, words);
    return command_line;
}
