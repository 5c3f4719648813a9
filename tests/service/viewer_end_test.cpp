// A viewer that ends where it should not: its launcher is told, the next one is served.
#include "tests/service/fake_launcher.h"
#include "tests/service/service_process.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;

class ViewerEnd : public ServiceProcess
{
  protected:
    ViewerEnd() { start_service(); }

    std::ptrdiff_t viewers_started() const
    {
        return static_cast<std::ptrdiff_t>(file_contents(scratch / "starts").size());
    }
};

class ViewerEndAt : public ViewerEnd, public testing::WithParamInterface<const char*>
{};

INSTANTIATE_TEST_SUITE_P(Points, ViewerEndAt,
                         testing::Values("given-paths", "half-open", "open", "read", "answering"),
                         [](const auto& point) {
                             std::string name = point.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_P(ViewerEndAt, IsFailureForItsLauncherAndForNobodyElse)
{
    EXPECT_EQ(launch({"a", "b"}, std::string(":dies-") + GetParam()), silent_failure);

    pass_through_service();
    EXPECT_TRUE(until([this] { return scratch.user_listing() == files_of_service(); }));
}

TEST_F(ViewerEnd, IsToldInOneLogLine)
{
    launch({"a", "b"}, ":dies-read");

    EXPECT_TRUE(until([this] { return !service_log().empty(); }));
    EXPECT_THAT(service_log(),
                MatchesRegex("[0-9-]+T[0-9:]+Z launcher [0-9]+: its viewer was ended by signal 9 "
                             "before it answered\n"));
}

TEST_F(ViewerEnd, AfterItsAnswerChangesNothing)
{
    EXPECT_EQ(launch({"a", "b"}, ":dies-answered"), success);
    pass_through_service();

    EXPECT_EQ(service_log(), "");
}

TEST_F(ViewerEnd, BeforeItHasStartedIsTriedAgain)
{
    EXPECT_EQ(launch({"a", "b"}, ":starts-at-third"), success);

    EXPECT_GE(viewers_started(), 3);
}

TEST_F(ViewerEnd, ThreeTimesBeforeItHasStartedIsAnsweredWithFailureByTheService)
{
    EXPECT_EQ(launch({"a", "b"}, ":cannot-start"), silent_failure);
    EXPECT_EQ(viewers_started(), 3);

    pass_through_service();
    EXPECT_THAT(service_log(),
                HasSubstr(" :cannot-start: viewers do not start; left alone for a minute\n"));
    EXPECT_THAT(service_log(), HasSubstr(": no viewer can be had on :cannot-start\n"));
}

TEST_F(ViewerEnd, ADisplayLeftAloneIsNotTriedAgainButOthersAre)
{
    launch({"a", "b"}, ":cannot-start");

    EXPECT_EQ(launch({"a", "b"}, ":cannot-start"), silent_failure);
    EXPECT_EQ(viewers_started(), 3);
    EXPECT_EQ(launch({"a", "b"}, ":0"), success);
}

TEST_F(ViewerEnd, ARequestLargerThanAPipeHoldsIsRefusedWithoutAWait)
{
    const std::vector<std::string> words(1000, "./././././././././././././././././././././././a");

    EXPECT_EQ(launch(words, ":cannot-start"), silent_failure);
}

/** Without the program of the viewer, and with a clock that the test sets. */
class NoViewer : public ServiceProcess
{
  protected:
    void start_shimmed(const Environment& settings)
    {
        Invocation run = service();
        shim(run, settings);
        scratch.make_user_directory();
        program.emplace(run).start();
        ASSERT_TRUE(until([this] { return lock_holder() == program->pid(); }));
    }

    std::optional<Program> program;
};

TEST_F(NoViewer, ForWantOfProcessesIsAnsweredWithFailure)
{
    start_shimmed({{"SHIM_FAIL", "posix_spawn:*:11"}});

    EXPECT_EQ(launch({"a", "b"}), silent_failure);

    EXPECT_TRUE(until([this] { return scratch.user_listing() == files_of_service(); }));
    EXPECT_THAT(service_log(), HasSubstr("/bin/quarnview: Resource temporarily unavailable\n"));
}

TEST_F(NoViewer, ForALauncherThatEndsWhileItIsRefusedLeavesNothingBehind)
{
    start_shimmed({{"SHIM_FAIL", "posix_spawn:*:11"}});
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    fake.announce();
    fake.open_request();

    fake.kill();

    EXPECT_TRUE(until([this] { return scratch.user_listing() == files_of_service(); }));
}

TEST_F(NoViewer, IsTriedAgainAfterAMinute)
{
    start_shimmed({{"SHIM_FAIL", "posix_spawn:1:11,posix_spawn:2:11,posix_spawn:3:11"},
                   {"SHIM_CLOCK", scratch / "seconds"}});
    EXPECT_EQ(launch({"a", "b"}), silent_failure);
    scratch.write_file("seconds", std::string(59, '.'));
    EXPECT_EQ(launch({"a", "b"}), silent_failure);

    scratch.write_file("seconds", std::string(61, '.'));

    EXPECT_EQ(launch({"a", "b"}), success);
}

} // namespace
