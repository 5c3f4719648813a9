/*
 * Runs a program as a shell of an ordinary user would, in surroundings that the test alone decides:
 * an environment built from nothing, no inherited descriptors, default signal dispositions, file
 * permissions that count even when the tests are run by root. It collects what the program prints
 * until the program itself ends; children that it left behind are not waited for. A program that
 * lasts longer than a minute is killed and reported as timed out.
 */
#pragma once

#include "tests/harness/scratch.h"

#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <sys/types.h>
#include <vector>

using Environment = std::map<std::string, std::string>;

/** All that is decided about a run before it starts. */
struct Invocation {
    std::string path;
    std::vector<std::string> arguments{}; // without the program's name
    Environment environment{};
    std::string directory{};
    mode_t file_mode_mask = 022;
    std::set<int> closed_descriptors{}; // of 0, 1 and 2, which else are /dev/null and two pipes
    std::set<int> ignored_signals{};
};

/** How a run ended: `exit_status` counts when `signal` is 0. */
struct Outcome {
    int exit_status = -1;
    int signal = 0;
    bool timed_out = false;
    std::string out{};
    std::string err{};

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome);

/** What an ordinary run of `path` in the scratch directory starts from: TMPDIR there, LC_ALL=C,
   PATH, and the variables by which sanitizers and coverage are told what to do. */
Invocation invocation(const Scratch& scratch, std::string path,
                      std::vector<std::string> arguments = {});

class Program
{
  public:
    explicit Program(Invocation invocation);

    /** Kills the program when it still runs. */
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    Program(Program&&) = delete;
    Program& operator=(Program&&) = delete;

    /** Throws std::system_error when no process can be made. A program that cannot be executed ends
        with status 126 and says so on standard error. */
    void start();

    /** Waits for the end; to be called once after each start. */
    Outcome wait();

    Outcome run()
    {
        start();
        return wait();
    }

    bool is_running() const;
    void send_signal(int number) const;

    pid_t pid() const { return pid_; }

  private:
    [[noreturn]] void become_program(const int* streams, char* const* arguments,
                                     char* const* variables) const;
    bool collect(int descriptor, std::string& text) const;
    void collect_until_end(Outcome& outcome);
    void close_streams();

    Invocation invocation_;
    pid_t pid_ = -1;
    int end_ = -1; // a pidfd
    int out_ = -1;
    int err_ = -1;
};
