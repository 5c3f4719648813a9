/*
 * A pseudo-terminal with a program on it, for prompts that ask only on a terminal.
 */
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

class TerminalProgram
{
  public:
    /** Starts the program with a terminal as its standard streams and no display. */
    explicit TerminalProgram(const std::vector<std::string>& words);
    ~TerminalProgram();
    TerminalProgram(const TerminalProgram&) = delete;
    TerminalProgram& operator=(const TerminalProgram&) = delete;
    TerminalProgram(TerminalProgram&&) = delete;
    TerminalProgram& operator=(TerminalProgram&&) = delete;

    /** Waits until the program has printed `text`; false when it ends before. */
    bool await(const std::string& text);

    void type(const std::string& keys) const;

    /** The exit status, or -1 where a signal ended it. */
    int wait();

  private:
    std::string printed;
    int terminal = -1;
    pid_t process = 0;
};
