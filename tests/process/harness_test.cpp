// What the other tests of processes rely on.
#include "tests/process/launcher_process.h"

#include <csignal>
#include <filesystem>

namespace
{

class Harness : public LauncherProcess
{
  protected:
    Invocation shell(const std::string& text) const
    {
        return invocation(scratch, "/bin/sh", {"-c", text});
    }
};

TEST_F(Harness, TellsStatusOutputAndErrorApart)
{
    EXPECT_EQ(Program(shell("echo out; echo err >&2; exit 3")).run(),
              (Outcome{.exit_status = 3, .out = "out\n", .err = "err\n"}));
}

TEST_F(Harness, TellsDeathBySignal)
{
    EXPECT_EQ(Program(shell("kill -TERM $$")).run(),
              (Outcome{.exit_status = -1, .signal = SIGTERM}));
}

TEST_F(Harness, CollectsMoreThanAPipeHolds)
{
    const Outcome outcome = Program(shell("head -c 1000000 /dev/zero")).run();

    EXPECT_EQ(outcome.out.size(), 1000000U);
}

TEST_F(Harness, DoesNotWaitForWhatAProgramLeavesBehind)
{
    EXPECT_EQ(Program(shell("sleep 600 & exit 0")).run(), success);
}

TEST_F(Harness, FilePermissionsCountWhoeverRunsTheTests)
{
    const std::string file = scratch.write_file("closed", "text");
    std::filesystem::permissions(file, std::filesystem::perms::none);

    EXPECT_NE(Program(shell("read line < closed")).run().exit_status, 0);
}

TEST_F(Harness, AnEndingScratchDirectoryTakesProcessesAndLockedFoldersAlong)
{
    std::string path;
    {
        const Scratch other;
        path = other.path();
        const Fifo news(other / "news");
        Program(invocation(other, "/bin/sh",
                           {"-c", "mkdir -p d/e; chmod 0 d; setsid sleep 600 & echo $! > news"}))
            .run();
        path += "\n" + news.line();
    }

    const auto end = path.find('\n');
    EXPECT_FALSE(std::filesystem::exists(path.substr(0, end)));
    EXPECT_FALSE(std::filesystem::exists("/proc/" + path.substr(end + 1)));
}

TEST_F(Harness, TheShimDividesTime)
{
    const Invocation quick = shimmed_compare({{"SHIM_TIME_DIVISOR", "sleep:*:100000"}});

    EXPECT_EQ(run_against("no-fifo wait", quick).out, "Launcher Wrapper dead");

    EXPECT_EQ(calls({"sleep"}).size(), 13U);
}

TEST_F(Harness, TheShimLeavesOtherProgramsAlone)
{
    Invocation other = invocation(scratch, SCRIPTED_PROMPT);
    other.environment["PROMPT_RECORD"] = scratch / "prompts";
    shim(other, {{"SHIM_FAIL", "open:*:13,fopen:*:13,write:*:5"}});

    EXPECT_EQ(Program(other).run(), success);

    EXPECT_NE(file_contents(scratch / "prompts"), "");
    EXPECT_FALSE(std::filesystem::exists(scratch / "calls"));
}

} // namespace
