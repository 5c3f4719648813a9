// Displays that come and go, and several at once: real windows on X servers of the test's own.
#include "tests/service/service_process.h"
#include "tests/service/x_server.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;

class Displays : public ServiceProcess
{
  protected:
    Displays() : ServiceProcess(PRODUCT_TREE) {}

    /** The service at the start of a session on the display, with its spare viewer and a clock that
        the file "seconds" puts forward. */
    void start_session(const std::string& display)
    {
        Invocation run = service();
        shim(run, {{"SHIM_CLOCK", scratch / "seconds"}});
        run.environment["DISPLAY"] = display;
        run.environment["HOME"] = scratch.path();
        scratch.make_user_directory();
        session.emplace(run).start();
        ASSERT_TRUE(tells(display, "windows open: 0, a viewer waits"));
    }

    bool tells(const std::string& display, const std::string& what) const
    {
        const std::string line = "display " + display + ": " + what;
        return until([&] { return status().find(line) != std::string::npos; });
    }

    Invocation compare_on(const std::string& display, Names words = {"a", "b"}) const
    {
        Invocation run = launcher(std::move(words), display);
        run.environment["XDG_CONFIG_HOME"] = scratch.path(); // nobody's settings
        return run;
    }

    /** Waits for the display's window, and closes it by a key. */
    Outcome close_window(Program& compare, const XServer& server) const
    {
        EXPECT_TRUE(tells(server.display(), "windows open: 1"));
        server.press_until_end(compare, {"ctrl+w"});
        return compare.wait();
    }

    std::optional<Program> session;
};

TEST_F(Displays, TwoAtOnceHaveAWindowEach)
{
    const XServer one(scratch, "one");
    const XServer two(scratch, "two");
    start_session(one.display());
    Program on_one(compare_on(one.display()));
    Program on_two(compare_on(two.display()));

    on_one.start();
    on_two.start();

    EXPECT_TRUE(tells(one.display(), "windows open: 1"));
    EXPECT_TRUE(tells(two.display(), "windows open: 1"));
    EXPECT_EQ(close_window(on_two, two), success);
    EXPECT_TRUE(on_one.is_running());
    EXPECT_EQ(close_window(on_one, one), success);
}

TEST_F(Displays, OneThatDiesLeavesTheWindowsOfOthersOpen)
{
    XServer dying(scratch, "dying");
    const XServer other(scratch, "other");
    start_session(dying.display());
    Program on_dying(compare_on(dying.display()));
    Program on_other(compare_on(other.display()));
    on_dying.start();
    on_other.start();
    ASSERT_TRUE(tells(dying.display(), "windows open: 1"));
    ASSERT_TRUE(tells(other.display(), "windows open: 1"));

    dying.end();

    EXPECT_EQ(on_dying.wait(), silent_failure);
    EXPECT_TRUE(on_other.is_running());
    EXPECT_EQ(close_window(on_other, other), success);
}

TEST_F(Displays, OneThatDiedSinceTheServiceStartedIsFailureAndTheOthersAreServed)
{
    XServer dying(scratch, "dying");
    const XServer other(scratch, "other");
    start_session(dying.display());

    dying.end();

    EXPECT_EQ(Program(compare_on(dying.display())).run(), silent_failure);
    EXPECT_THAT(service_log(), HasSubstr(" " + dying.display() + ": viewers do not start; "));
    Program elsewhere(compare_on(other.display()));
    elsewhere.start();
    EXPECT_EQ(close_window(elsewhere, other), success);
}

TEST_F(Displays, OneThatIsBackIsServedAfterAMinute)
{
    XServer display(scratch, "display");
    const std::string number = display.display();
    start_session(number);
    display.end();
    EXPECT_EQ(Program(compare_on(number)).run(), silent_failure);
    const XServer again(scratch, "again", number);

    scratch.write_file("seconds", std::string(61, '.'));

    Program compare(compare_on(number));
    compare.start();
    EXPECT_EQ(close_window(compare, again), success);
}

TEST_F(Displays, ShowNamesThatAreNotValidInTheLocale)
{
    const XServer server(scratch, "display");
    start_session(server.display());
    const Names words{"-fname", "l\xe4ngs", scratch.write_file("\xff", "1\n"),
                      scratch.write_file("\xfe", "2\n")};
    Program compare(compare_on(server.display(), words));

    compare.start();

    EXPECT_EQ(close_window(compare, server), success);
}

TEST_F(Displays, ShowAThousandContributors)
{
    const XServer server(scratch, "display");
    start_session(server.display());
    Names words;
    for (int number = 0; number < 1000; ++number)
        words.push_back(scratch.write_file("contributor " + std::to_string(number),
                                           "same\n" + std::to_string(number) + "\n"));
    Program compare(compare_on(server.display(), words));

    compare.start();

    EXPECT_EQ(close_window(compare, server), success);
}

} // namespace
