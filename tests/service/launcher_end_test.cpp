// A launcher that ends before it was answered: its viewer is told, its FIFOs go.
#include "tests/service/fake_launcher.h"
#include "tests/service/service_process.h"

#include <csignal>

namespace
{

class LauncherEnd : public ServiceProcess
{
  protected:
    LauncherEnd() { start_service(); }

    bool is_logged(const std::string& text) const
    {
        return until([&] { return service_log().find(text) != std::string::npos; });
    }

    bool nothing_is_left() const
    {
        return until([this] { return scratch.user_listing() == files_of_service(); });
    }
};

/** A launcher that goes as far as the test wants. */
class FakeLauncherEnd : public LauncherEnd
{
  protected:
    FakeLauncherEnd() : fake(scratch.user_directory()) { fake.make_fifos(); }

    FakeLauncher fake;
};

TEST_F(FakeLauncherEnd, BeforeItOpenedAnything)
{
    fake.announce();
    pass_through_service();

    fake.kill();

    EXPECT_TRUE(nothing_is_left());
    EXPECT_TRUE(is_logged(": the launcher ended before it was answered\n"));
}

TEST_F(FakeLauncherEnd, BeforeItsAnnouncementWasRead)
{
    const FakeLauncher& announcer = fake;
    fake.kill();

    announcer.announce();

    EXPECT_TRUE(nothing_is_left());
    EXPECT_TRUE(is_logged(": No such process\n"));
}

TEST_F(FakeLauncherEnd, BetweenItsOpens)
{
    fake.announce();
    fake.open_request();

    fake.kill();

    EXPECT_TRUE(nothing_is_left());
}

TEST_F(FakeLauncherEnd, AfterItsOpens)
{
    fake.announce();
    fake.open_request();
    fake.open_response();

    fake.kill();

    EXPECT_TRUE(nothing_is_left());
}

TEST_F(FakeLauncherEnd, InTheMiddleOfItsRequest)
{
    fake.announce();
    fake.open_request();
    fake.open_response();
    fake.write_request("<methodCall><methodName>");

    fake.kill();

    EXPECT_TRUE(nothing_is_left());
}

TEST_F(LauncherEnd, ClosesItsWindow)
{
    Program open(launcher({"a", "b"}, ":window"));
    open.start();
    ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 2; }));

    open.send_signal(SIGKILL);
    open.wait();

    EXPECT_TRUE(until([this] { return viewers_on(":window").size() == 1; })); // the spare
    EXPECT_TRUE(nothing_is_left());
    EXPECT_TRUE(is_logged(": the launcher ended before it was answered\n"));
}

TEST_F(LauncherEnd, LeavesTheWindowsOfOthersAlone)
{
    Program first(launcher({"a", "b"}, ":window"));
    Program second(launcher({"a", "b"}, ":window"));
    first.start();
    ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 2; }));
    second.start();
    ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 3; }));

    first.send_signal(SIGKILL);
    first.wait();
    ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 2; }));

    for (const pid_t viewer : viewers_on(":window"))
        ::kill(viewer, SIGUSR1); // the spare ends by it
    EXPECT_EQ(second.wait(), success);
}

} // namespace
