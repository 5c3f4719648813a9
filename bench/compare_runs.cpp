/*
 * Times two programs against each other: runs them in interleaved pairs with the same words, and
 * prints the median processor time (user + system of the finished child) and wall time (before exec
 * to exit) of each, in microseconds, and the median of the pairs' ratios. The programs take turns
 * in going first, so that neither always finds the other's warm caches. Ends with 1 as soon as one
 * run fails: a failed run's time means nothing.
 *
 *   compare_runs PAIRS PROGRAM FLOOR WORD...
 */
#include "bench/statistics.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr int warm_up_pairs = 5; // not counted
constexpr int least_pairs = 1;
constexpr int first_word = 4;

struct Times {
    double processor = 0;
    double wall = 0;
};

struct Figure {
    Samples program;
    Samples floor;
    Samples ratio;

    void add(double program_time, double floor_time)
    {
        program.push_back(program_time);
        floor.push_back(floor_time);
        ratio.push_back(program_time / floor_time);
    }
};

double microseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

[[noreturn]] void give_up(const char* program, const char* reason)
{
    std::fprintf(stderr, "compare_runs: %s %s\n", program, reason);
    std::exit(1);
}

/** One run with the words after `words[0]`, which becomes the program's name. */
Times run(char* program, std::vector<char*>& words)
{
    words[0] = program;
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (::posix_spawn(&child, program, nullptr, nullptr, words.data(), environ) != 0)
        give_up(program, "cannot be started");
    int status = 0;
    rusage usage{};
    if (::wait4(child, &status, 0, &usage) != child)
        give_up(program, "cannot be waited for");
    const std::chrono::duration<double, std::micro> wall = std::chrono::steady_clock::now() - start;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        give_up(program, "did not end with 0");
    return {microseconds(usage.ru_utime) + microseconds(usage.ru_stime), wall.count()};
}

void print(const char* name, const Figure& figure)
{
    std::printf("%s %.1f %.1f %.3f\n", name, median(figure.program), median(figure.floor),
                median(figure.ratio));
}

void compare(int pairs, char* program, char* floor, std::vector<char*>& words)
{
    Figure processor;
    Figure wall;
    for (int pair = -warm_up_pairs; pair < pairs; ++pair) {
        const bool floor_first = pair % 2 != 0;
        Times floor_times;
        if (floor_first)
            floor_times = run(floor, words);
        const Times program_times = run(program, words);
        if (!floor_first)
            floor_times = run(floor, words);
        if (pair < 0)
            continue;
        processor.add(program_times.processor, floor_times.processor);
        wall.add(program_times.wall, floor_times.wall);
    }
    print("processor", processor);
    print("wall", wall);
}

} // namespace

int main(int argc, char* argv[])
{
    const long pairs = argc >= first_word ? std::strtol(argv[1], nullptr, 10) : 0;
    if (pairs < least_pairs || pairs > 1'000'000) {
        std::fputs("usage: compare_runs PAIRS PROGRAM FLOOR WORD...\n", stderr);
        return 1;
    }
    std::vector<char*> words{nullptr};
    words.insert(words.end(), argv + first_word, argv + argc);
    words.push_back(nullptr);
    compare(static_cast<int>(pairs), argv[2], argv[3], words);
    return 0;
}
