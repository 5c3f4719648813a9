// Many launchers at once against one service.
#include "protocol/wire_names.h"
#include "tests/service/service_process.h"

#include <cstddef>
#include <iostream>
#include <list>
#include <string>

namespace
{

class ManyLaunchers : public ServiceProcess
{
  protected:
    /** Runs `count` launchers at once, every third of which must fail. */
    void run_at_once(int count)
    {
        std::list<Program> launchers;
        for (int i = 0; i < count; ++i)
            launchers.emplace_back(launcher({"a", i % 3 == 0 ? "bad" : "b"})).start();
        int i = 0;
        for (Program& program : launchers) {
            EXPECT_EQ(program.wait(), i % 3 == 0 ? silent_failure : success) << "launcher " << i;
            ++i;
        }
    }
};

TEST_F(ManyLaunchers, FiftyAtOnceAreAllAnsweredAndLeaveNothingBehind)
{
    start_service();

    run_at_once(50);

    EXPECT_EQ(scratch.user_listing(), files_of_service());
}

/** What a service takes of the system. */
struct Size {
    long resident_kib;
    std::ptrdiff_t descriptors;
};

class Soak : public ServiceProcess
{
  protected:
    Size size_of_service() const
    {
        const std::string process = "/proc/" + std::to_string(running_service.pid());
        const std::string status = file_contents(process + "/status");
        const std::string label = "VmRSS:";
        return {std::stol(status.substr(status.find(label) + label.size())),
                static_cast<std::ptrdiff_t>(folder_contents(process + "/fd").size())};
    }

    /** Keeps `at_once` launchers running until `count` have run, each of which must end as its own
        viewer says. */
    void run_launchers(int count, std::size_t at_once) const
    {
        std::list<Program> running;
        for (int started = 0; started < count || !running.empty();) {
            while (started < count && running.size() < at_once) {
                running.emplace_back(launcher({"a", started % 5 == 0 ? "bad" : "b"}, ":random"))
                    .start();
                ++started;
            }
            expect_own_end(running.front());
            running.pop_front();
        }
    }

    void expect_own_end(Program& program) const
    {
        const std::string id = std::to_string(program.pid());
        const Outcome outcome = program.wait();
        const std::string expected = file_contents(scratch / ("expected." + id));
        EXPECT_EQ(std::to_string(outcome.exit_status), expected) << "launcher " << id;
        EXPECT_EQ(outcome.out + outcome.err, "");
    }

    /** Waits until only the service and the spare are left. */
    bool is_quiet() const
    {
        return until([this] {
            return scratch.user_listing() == files_of_service() && viewers().size() == 1 &&
                   status().find("a viewer waits") != std::string::npos;
        });
    }
};

TEST_F(Soak, AThousandLaunchersOfWhichViewersDieLeaveNothingBehind)
{
    start_service();
    run_launchers(100, 64);
    ASSERT_TRUE(is_quiet());
    const Size before = size_of_service();

    run_launchers(1000, 64);

    EXPECT_TRUE(is_quiet());
    // A viewer may have ended a moment before the service sees its end.
    EXPECT_TRUE(until([&] { return size_of_service().descriptors == before.descriptors; }));
    const Size after = size_of_service();
    std::cout << "service before: " << before.resident_kib << " KiB, " << before.descriptors
              << " descriptors; after: " << after.resident_kib << " KiB, " << after.descriptors
              << " descriptors\n";
#ifndef __SANITIZE_ADDRESS__ // which keeps what is freed for a while
    EXPECT_LT(after.resident_kib, before.resident_kib + 256);
    EXPECT_LT(after.resident_kib, 4096);
#endif
}

} // namespace
