// Launchers that find no service and start the real one.
#include "tests/harness/scripted_service.h"
#include "tests/service/service_process.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;

/** The rendezvous FIFO is on disk, as an earlier service leaves it. */
class ColdStart : public ServiceProcess
{
  protected:
    ColdStart() { make_rendezvous(scratch); }
};

TEST_F(ColdStart, TheLauncherIsAnsweredByTheServiceThatItStarted)
{
    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_TRUE(until([this] { return lock_holder().has_value(); }));
}

TEST_F(ColdStart, TheServiceServesTheNextLauncherToo)
{
    launch({"a", "b"});
    const auto first = lock_holder();

    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_EQ(lock_holder(), first);
}

TEST_F(ColdStart, OfTwoLaunchersAtTheSameMomentBothAreAnsweredAndOneServiceSurvives)
{
    Program one(launcher({"a", "b"}));
    Program two(launcher({"a", "bad"}));

    one.start();
    two.start();

    EXPECT_EQ(one.wait(), success);
    EXPECT_EQ(two.wait(), silent_failure);
    EXPECT_TRUE(until([this] { return services().size() == 1; }));
    EXPECT_EQ(services().front(), lock_holder());
}

TEST_F(ColdStart, ACommandSubstitutionSeesTheEndOfTheLaunchersOutput)
{
    Invocation shell = launcher(
        {"-c", R"(x=$("$0" a b 2>&1); echo "ended $?, said '$x'")", programs + "uquarndiffmrg"});
    shell.path = "/bin/sh";

    EXPECT_EQ(Program(shell).run(), (Outcome{.exit_status = 0, .out = "ended 0, said ''\n"}));

    EXPECT_TRUE(lock_holder().has_value());
}

TEST_F(ColdStart, ALockHeldAroundTheLauncherIsFreedWithIt)
{
    Invocation shell = launcher({"-c", "( flock 9; \"$0\" a b ) 9>held; flock -n held echo free",
                                 programs + "uquarndiffmrg"});
    shell.path = "/bin/sh";

    EXPECT_EQ(Program(shell).run(), (Outcome{.exit_status = 0, .out = "free\n"}));
}

TEST_F(ColdStart, AServiceThatWasKilledIsReplaced)
{
    launch({"a", "b"});
    const auto first = lock_holder();
    ASSERT_TRUE(first.has_value());
    ::kill(*first, SIGKILL);
    ASSERT_TRUE(until([&] { return lock_holder() != first; }));

    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_NE(lock_holder(), first);
}

} // namespace
