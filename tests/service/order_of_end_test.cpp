// The service's end in order.
#include "protocol/wire_names.h"
#include "tests/service/service_process.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <sys/stat.h>

namespace
{

class OrderOfEnd : public ServiceProcess, public testing::WithParamInterface<int>
{
  protected:
    OrderOfEnd() { start_service(); }

    /** Starts a launcher whose window is open when this returns. */
    void open_window()
    {
        window.emplace(launcher({"a", "b"}, ":window")).start();
        ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 2; }));
    }

    void close_windows() const
    {
        for (const pid_t viewer : viewers())
            ::kill(viewer, SIGUSR1);
    }

    /** Whether the service holds the rendezvous FIFO open still. */
    bool takes_announcements() const
    {
        const std::string fifo =
            std::filesystem::canonical(scratch.user_directory() + "/" + rendezvous_pipe);
        const auto descriptors = std::filesystem::directory_iterator(
            "/proc/" + std::to_string(running_service.pid()) + "/fd");
        return std::any_of(begin(descriptors), end(descriptors), [&](const auto& descriptor) {
            std::error_code closed;
            return std::filesystem::read_symlink(descriptor, closed) == fifo;
        });
    }

    bool has_recorded(const std::string& text) const
    {
        return std::filesystem::exists(scratch / "shim.log") &&
               shim_record().find(text) != std::string::npos;
    }

    std::optional<Program> window;
};

INSTANTIATE_TEST_SUITE_P(Signals, OrderOfEnd, testing::Values(SIGTERM, SIGINT));

TEST_P(OrderOfEnd, WithoutWindowsIsZeroAndLeavesNoViewer)
{
    pass_through_service();

    running_service.send_signal(GetParam());

    EXPECT_EQ(running_service.wait(), success);
    EXPECT_TRUE(until([this] { return viewers().empty(); }));
    EXPECT_EQ(scratch.user_listing(),
              (Names{rendezvous_pipe, "tolm_service.log", service_pid_file}));
}

TEST_P(OrderOfEnd, FreesTheLockAtOnceAndWaitsForOpenWindows)
{
    open_window();

    running_service.send_signal(GetParam());

    EXPECT_TRUE(until([this] { return !lock_holder(); }));
    EXPECT_TRUE(until([this] { return viewers().size() == 1; })); // the spare has gone
    EXPECT_TRUE(running_service.is_running());
    close_windows();
    EXPECT_EQ(window->wait(), success);
    EXPECT_EQ(running_service.wait(), success);
}

TEST_P(OrderOfEnd, ALauncherRightBehindItIsServedAndStartsANewService)
{
    running_service.send_signal(GetParam());
    ASSERT_TRUE(until([this] { return !lock_holder(); }));

    EXPECT_EQ(launch({"a", "b"}), success); // by either of them

    EXPECT_TRUE(until([this] { return lock_holder().has_value(); }));
    EXPECT_NE(lock_holder(), running_service.pid());
}

TEST_P(OrderOfEnd, TheNextLauncherGetsANewServiceBesideTheOld)
{
    open_window();
    running_service.send_signal(GetParam());
    ASSERT_TRUE(until([this] { return !lock_holder() && !takes_announcements(); }));

    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_TRUE(until([this] { return lock_holder().has_value(); }));
    EXPECT_NE(lock_holder(), running_service.pid());
    EXPECT_TRUE(
        until([this] { return status().find("requests served: 1\n") != std::string::npos; }));
    close_windows();
    EXPECT_EQ(window->wait(), success);
}

TEST_P(OrderOfEnd, ALauncherThatSawTheLockBeforeIsStillServed)
{
    // It has looked at the lock when it opens the FIFO, and goes on only then.
    const std::string gate = scratch / "gate";
    ::mkfifo(gate.c_str(), 0600);
    Invocation late = launcher({"a", "b"});
    late.environment["LD_PRELOAD"] = SHIM_LIBRARY;
    late.environment["SHIM_PROGRAM"] = "uquarndiffmrg";
    late.environment["SHIM_LOG"] = scratch / "shim.log";
    late.environment["ASAN_OPTIONS"] += ":verify_asan_link_order=0";
    late.environment["SHIM_GATE"] = std::string("open@") + rendezvous_pipe + ":1:" + gate;
    Program program(late);
    program.start();
    ASSERT_TRUE(until([this] { return has_recorded(rendezvous_pipe); }));

    running_service.send_signal(GetParam());
    ASSERT_TRUE(until([this] { return !lock_holder(); }));
    write_file(gate, "x");

    EXPECT_EQ(program.wait(), success);
    EXPECT_EQ(running_service.wait(), success);
}

} // namespace
