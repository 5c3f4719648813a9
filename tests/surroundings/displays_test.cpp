// Displays that come and go, and several at once: real windows on X servers of the test's own.
#include "tests/service/service_process.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

/** An X server on a free display. */
class XServer
{
  public:
    XServer(const Scratch& scratch, const std::string& name)
        : server(invocation(scratch, "/bin/sh",
                            {"-c",
                             "exec Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp "
                             "3>\"$0\" 2>/dev/null",
                             scratch / name}))
    {
        server.start();
        const std::string number = scratch / name;
        until([&] { return fs::exists(number) && file_contents(number).ends_with('\n'); });
        display_ = ":" + file_contents(number);
        display_.pop_back();
    }

    const std::string& display() const { return display_; }

    void end()
    {
        server.send_signal(SIGTERM);
        server.wait();
    }

  private:
    Program server;
    std::string display_;
};

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

    Invocation compare_on(const std::string& display) const
    {
        Invocation run = launcher({"a", "b"}, display);
        run.environment["XDG_CONFIG_HOME"] = scratch.path(); // nobody's settings
        return run;
    }

    /** Presses a key until the launcher ends. */
    Outcome close_window(Program& compare, const std::string& display) const
    {
        Invocation key = invocation(scratch, "/usr/bin/xdotool",
                                    {"search", "--onlyvisible", "--class", "quarnview",
                                     "windowfocus", "--sync", "key", "ctrl+w"});
        key.environment["DISPLAY"] = display;
        until([&] {
            if (compare.is_running())
                Program(key).run();
            return !compare.is_running();
        });
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
    EXPECT_EQ(close_window(on_two, two.display()), success);
    EXPECT_TRUE(on_one.is_running());
    EXPECT_EQ(close_window(on_one, one.display()), success);
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
    EXPECT_EQ(close_window(elsewhere, other.display()), success);
}

TEST_F(Displays, OneThatIsBackIsServedAfterAMinute)
{
    XServer display(scratch, "display");
    const std::string number = display.display();
    start_session(number);
    display.end();
    EXPECT_EQ(Program(compare_on(number)).run(), silent_failure);
    Program again(invocation(scratch, "/usr/bin/Xvfb",
                             {number, "-screen", "0", "1280x900x24", "-nolisten", "tcp"}));
    again.start();
    Invocation probe = invocation(scratch, "/usr/bin/xdotool", {"getdisplaygeometry"});
    probe.environment["DISPLAY"] = number;
    ASSERT_TRUE(until([&] { return Program(probe).run().exit_status == 0; }));

    scratch.write_file("seconds", std::string(61, '.'));

    Program compare(compare_on(number));
    compare.start();
    EXPECT_EQ(close_window(compare, number), success);
}

} // namespace
