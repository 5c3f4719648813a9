/*
 * How much processor time the service itself uses for one launcher until the viewer has the
 * request, which the viewer's stand-in records, and how much the least that can serve launchers
 * uses for all it does. Launchers come one by one to a service at rest. Prints the medians and
 * their ratio.
 *
 *   hand_over LAUNCHERS ECHO_SERVICE LAUNCHER WORD...
 *                                           the service is the program beside the launcher
 */
#include "bench/processes.h"
#include "bench/statistics.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>

namespace
{

using std::chrono::nanoseconds;

double microseconds(nanoseconds time)
{
    return std::chrono::duration<double, std::micro>(time).count();
}

/** For each launcher, until the service rests again. */
Samples whole_times(int launchers, const Words& service_words, const Words& launcher)
{
    const Scratch scratch;
    const pid_t service = start_service(scratch, service_words);
    Samples times;
    for (int i = 0; i < launchers; ++i) {
        const auto before = processor_time_at_rest(service);
        wait_for_success(start(scratch, launcher));
        times.push_back(microseconds(processor_time_at_rest(service) - before));
    }
    return times;
}

/** For each launcher that was handed over. */
Samples hand_over_times(int launchers, const Words& service_words, const Words& launcher)
{
    const Scratch scratch;
    const std::string record = scratch / "hand_over";
    ::setenv("HAND_OVER_RECORD", record.c_str(), 1);
    const pid_t service = start_service(scratch, service_words);
    Samples times;
    for (int i = 0; i < launchers; ++i) {
        const auto before = processor_time_at_rest(service);
        wait_for_success(start(scratch, launcher));
        if (nanoseconds::rep at_hand_over = 0; std::ifstream(record) >> at_hand_over)
            times.push_back(microseconds(nanoseconds(at_hand_over) - before));
        std::filesystem::remove(record);
    }
    return times;
}

void measure(int launchers, const Words& echo_service, const Words& launcher)
{
    const double floor = median(whole_times(launchers, echo_service, launcher));
    const Samples times = hand_over_times(launchers, service_beside(launcher.front()), launcher);
    std::printf("processor time for a launcher, us (medians of %d)\n", launchers);
    std::printf("%-38s %9.1f\n", "echo_service, all", floor);
    if (!times.empty())
        std::printf("%-38s %9.1f %6.2f\n", "tolm_service, up to the hand-over", median(times),
                    median(times) / floor);
}

} // namespace

int main(int argc, char* argv[])
{
    const long launchers = argc >= 4 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (launchers < 1 || launchers > 10'000) {
        std::fputs("usage: hand_over LAUNCHERS ECHO_SERVICE LAUNCHER WORD...\n", stderr);
        return 1;
    }
    try {
        catch_interruptions();
        measure(static_cast<int>(launchers), {argv[2]}, Words(argv + 3, argv + argc));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "hand_over: %s\n", error.what());
        return 1;
    }
}
