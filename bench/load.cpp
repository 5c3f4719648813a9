/*
 * Many launchers against the product's service and, in the same run, against the least that can
 * serve them: how many a second, how long one takes, and how much processor time the service itself
 * uses for each. The services take turns, a quarter of the launchers at a time, so that neither has
 * the quieter machine. Prints one line for each service and number of launchers at a time.
 *
 *   load LAUNCHERS ECHO_SERVICE LAUNCHER WORD...    the service is the program beside the launcher
 */
#include "bench/processes.h"
#include "bench/statistics.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>

namespace
{

constexpr int turns = 4;

using Microseconds = std::chrono::duration<double, std::micro>;

/** What all launchers of one service came to so far. */
struct Figures {
    Samples wall_times{}; // in milliseconds
    Milliseconds duration{};
    Microseconds processor_time{};

    double processor_time_of_each() const
    {
        return processor_time.count() / static_cast<double>(wall_times.size());
    }
};

/** A service that serves in a directory of its own. */
class Served
{
  public:
    explicit Served(const Words& program) : service(start_service(scratch, program)) {}

    /** Runs that many launchers, never more than `at_a_time` of them at once. */
    void run(int launchers, std::size_t at_a_time, const Words& launcher, Figures& figures) const
    {
        const auto used_before = processor_time_at_rest(service);
        const auto begin = Clock::now();
        std::map<pid_t, Clock::time_point> running;
        while (launchers > 0 || !running.empty()) {
            while (launchers > 0 && running.size() < at_a_time) {
                const auto start_time = Clock::now();
                running.emplace(start(scratch, launcher), start_time);
                --launchers;
            }
            const auto ended = running.find(wait_for_success());
            if (ended == running.end())
                continue; // what the service left
            figures.wall_times.push_back(Milliseconds(Clock::now() - ended->second).count());
            running.erase(ended);
        }
        figures.duration += Clock::now() - begin;
        figures.processor_time += processor_time_at_rest(service) - used_before;
    }

  private:
    Scratch scratch;
    pid_t service;
};

void print(const char* service, std::size_t at_a_time, const Figures& figures)
{
    std::printf("%-14s %9zu %11.0f %9.2f %9.2f %15.1f", service, at_a_time,
                static_cast<double>(figures.wall_times.size()) / figures.duration.count() * 1000,
                median(figures.wall_times), percentile(figures.wall_times, 0.99),
                figures.processor_time_of_each());
}

void measure(int launchers, const Words& echo_service, const Words& launcher)
{
    std::printf("%-14s %9s %11s %9s %9s %15s %6s\n", "service", "at a time", "per second",
                "p50, ms", "p99, ms", "service, us", "ratio");
    const Served product(service_beside(launcher.front()));
    const Served floor(echo_service);
    for (const std::size_t at_a_time : {1U, 8U, 64U}) {
        Figures of_product;
        Figures of_floor;
        for (int turn = 0; turn < turns; ++turn) {
            product.run(launchers / turns, at_a_time, launcher, of_product);
            floor.run(launchers / turns, at_a_time, launcher, of_floor);
        }
        print("tolm_service", at_a_time, of_product);
        std::printf(" %6.2f\n",
                    of_product.processor_time_of_each() / of_floor.processor_time_of_each());
        print("echo_service", at_a_time, of_floor);
        std::printf("\n");
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const long launchers = argc >= 4 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (launchers < turns || launchers > 1'000'000) {
        std::fputs("usage: load LAUNCHERS ECHO_SERVICE LAUNCHER WORD...\n", stderr);
        return 1;
    }
    try {
        catch_interruptions();
        measure(static_cast<int>(launchers), {argv[2]}, Words(argv + 3, argv + argc));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "load: %s\n", error.what());
        return 1;
    }
}
