// Viewers and displays: one spare for each, with what its requesters' environment says.
#include "tests/service/service_process.h"

#include <csignal>
#include <gmock/gmock.h>

namespace
{

using testing::Contains;
using testing::Not;
using testing::SizeIs;

class Display : public ServiceProcess
{
  protected:
    Display() { start_service(); }

    /** Waits until the display's only viewer is the spare, and returns it; 0 when it never is. */
    pid_t spare_of(const std::string& display) const
    {
        const std::string line = "display " + display + ": windows open: 0, a viewer waits";
        const bool waits = until([&] {
            return status().find(line) != std::string::npos && viewers_on(display).size() == 1;
        });
        return waits ? viewers_on(display).front() : 0;
    }

    /** Waits until the display has as many viewers, and no more. */
    bool has_viewers(const std::string& display, std::size_t count) const
    {
        return until([&] { return viewers_on(display).size() == count; });
    }
};

TEST_F(Display, ASpareViewerWaitsAfterTheFirstRequest)
{
    EXPECT_THAT(viewers(), SizeIs(0));

    pass_through_service();

    EXPECT_TRUE(has_viewers(":0", 1));
}

TEST_F(Display, TheSpareServesTheNextRequest)
{
    launch({"a", "b"}, ":window-less");
    const pid_t spare = spare_of(":window-less");
    ASSERT_NE(spare, 0);

    launch({"a", "b"}, ":window-less");

    EXPECT_TRUE(until([spare] { return ::kill(spare, 0) != 0; }));
    // The first of all, and two spares.
    EXPECT_TRUE(until([this] { return file_contents(scratch / "starts").size() == 3; }));
}

TEST_F(Display, EachHasASpareOfItsOwn)
{
    launch({"a", "b"}, ":1");
    launch({"a", "b"}, ":2");

    EXPECT_TRUE(has_viewers(":1", 1));
    EXPECT_TRUE(has_viewers(":2", 1));
}

TEST_F(Display, ASpareIsStartedOnceTheWindowIsUp)
{
    Program open(launcher({"a", "b"}, ":window"));
    open.start();

    EXPECT_TRUE(has_viewers(":window", 2));
}

TEST_F(Display, TheRequestersVariablesAreTheViewers)
{
    Invocation run = launcher({"a", "b"}, ":window");
    run.environment["XAUTHORITY"] = "/of/requester";
    run.environment["LANG"] = "de_DE.UTF-8";
    run.environment["QT_SCALE_FACTOR"] = "2";
    run.environment["OF_NO_INTEREST"] = "x";
    Program open(run);
    open.start();
    ASSERT_TRUE(has_viewers(":window", 2));

    const pid_t viewer = viewers().front();
    EXPECT_EQ(variable_of(viewer, "XAUTHORITY"), "/of/requester");
    EXPECT_EQ(variable_of(viewer, "LANG"), "de_DE.UTF-8");
    EXPECT_EQ(variable_of(viewer, "QT_SCALE_FACTOR"), "2");
    EXPECT_EQ(variable_of(viewer, "OF_NO_INTEREST"), "");
}

TEST_F(Display, ASpareInAnotherLanguageIsReplaced)
{
    launch({"a", "b"}, ":1");
    ASSERT_NE(spare_of(":1"), 0);
    Invocation german = launcher({"a", "b"}, ":1");
    german.environment["LANG"] = "de_DE.UTF-8";

    EXPECT_EQ(Program(german).run(), success);

    EXPECT_TRUE(until([this] {
        const std::vector<pid_t> living = viewers();
        return living.size() == 1 && variable_of(living.front(), "LANG") == "de_DE.UTF-8";
    }));
}

TEST_F(Display, AViewerThatIsReachedThroughANetworkIsNotKept)
{
    EXPECT_EQ(launch({"a", "b"}, "localhost:10.0"), success);

    pass_through_service(); // its spare would have been started before
    EXPECT_TRUE(has_viewers("localhost:10.0", 0));
}

TEST_F(Display, ASpareThatEndsIsNotMissed)
{
    launch({"a", "b"}, ":1");
    const pid_t spare = spare_of(":1");
    ASSERT_NE(spare, 0);

    ::kill(spare, SIGKILL);
    ASSERT_TRUE(has_viewers(":1", 0));

    EXPECT_EQ(launch({"a", "b"}, ":1"), success);
}

TEST_F(Display, OfTheServiceItselfGetsItsSpareAtTheStart)
{
    running_service.send_signal(SIGTERM);
    running_service.wait();
    Invocation run = service();
    run.environment["DISPLAY"] = ":7";
    Program at_login(run);

    at_login.start();

    EXPECT_TRUE(has_viewers(":7", 1));
}

TEST_F(Display, NoneAtAllIsServedByAViewerToo)
{
    Invocation run = launcher({"a", "b"});
    run.environment.erase("DISPLAY");

    EXPECT_EQ(Program(run).run(), success);
}

} // namespace
