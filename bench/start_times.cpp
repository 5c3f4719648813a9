/*
 * How long a launcher takes, by what it finds: a service that runs; no service, but the rendezvous
 * FIFO that an earlier one left; not even that. In the last case a launcher may meet the pause of
 * ten seconds: such a run is counted, and ended after one second. Prints one line for each case.
 *
 *   start_times RUNS LAUNCHER WORD...    the service is the program beside the launcher
 */
#include "bench/processes.h"
#include "bench/statistics.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <sys/wait.h>

namespace
{

Milliseconds since(Clock::time_point begin)
{
    return Clock::now() - begin;
}

double time_of_launcher(const Scratch& scratch, const Words& launcher)
{
    const auto begin = Clock::now();
    wait_for_success(start(scratch, launcher));
    return since(begin).count();
}

Samples times_with_service(int runs, const Words& launcher)
{
    const Scratch scratch;
    start_service(scratch, service_beside(launcher.front()));
    Samples times;
    for (int run = 0; run < runs; ++run)
        times.push_back(time_of_launcher(scratch, launcher));
    return times;
}

Samples times_with_fifo(int runs, const Words& launcher)
{
    const Scratch scratch;
    end_service(start_service(scratch, service_beside(launcher.front())));
    Samples times;
    for (int run = 0; run < runs; ++run) {
        times.push_back(time_of_launcher(scratch, launcher));
        end_service(wait_for_service(scratch));
    }
    return times;
}

/** Of the launchers that did not pause. */
Samples times_with_nothing(int runs, const Words& launcher)
{
    const Scratch scratch;
    Samples times;
    for (int run = 0; run < runs; ++run) {
        const auto begin = Clock::now();
        const pid_t child = start(scratch, launcher);
        if (ends_within(child, std::chrono::seconds(1))) {
            times.push_back(since(begin).count());
            wait_for_success(child);
        } else {
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
        }
        end_service(wait_for_service(scratch));
        std::filesystem::remove_all(scratch.user_directory());
    }
    return times;
}

void print(const char* found, int runs, const Samples& times)
{
    std::printf("%-34s %4zu of %d", found, times.size(), runs);
    if (!times.empty()) {
        const auto [least, most] = std::minmax_element(times.begin(), times.end());
        std::printf(" %9.2f %9.2f %9.2f", median(times), *least, *most);
    }
    std::printf("\n");
}

void measure(int runs, const Words& launcher)
{
    std::printf("%-34s %10s %9s %9s %9s\n", "wall time, ms, from exec to exit", "unpaused",
                "median", "least", "most");
    print("a running service", runs, times_with_service(runs, launcher));
    print("the FIFO of an earlier service", runs, times_with_fifo(runs, launcher));
    print("nothing", runs, times_with_nothing(runs, launcher));
}

} // namespace

int main(int argc, char* argv[])
{
    const long runs = argc >= 3 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (runs < 1 || runs > 10'000) {
        std::fputs("usage: start_times RUNS LAUNCHER WORD...\n", stderr);
        return 1;
    }
    try {
        catch_interruptions();
        measure(static_cast<int>(runs), Words(argv + 2, argv + argc));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "start_times: %s\n", error.what());
        return 1;
    }
}
