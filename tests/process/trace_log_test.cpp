// When the trace file is made, emptied and written.
#include "tests/process/launcher_process.h"

#include <filesystem>

namespace
{

class TraceLog : public LauncherProcess
{
  protected:
    void SetUp() override { service.start(); }

    std::string leave_old_trace() const
    {
        return scratch.write_file(
            std::filesystem::relative(scratch.user_directory(), scratch.path()).string() +
                "/uquarndiffmrg.log",
            "of an earlier run\n");
    }

    ScriptedService service{scratch, "no-fifo wait"};
};

TEST_F(TraceLog, WithoutTheVariableNoFileIsMade)
{
    EXPECT_EQ(run(launcher()), too_few_contributors);

    EXPECT_EQ(scratch.user_listing(), (Names{"tolm_service.pid"}));
}

TEST_F(TraceLog, WithoutTheVariableAnOldFileIsKept)
{
    leave_old_trace();

    EXPECT_EQ(run(launcher()), too_few_contributors);

    EXPECT_EQ(trace_text(), "of an earlier run\n");
}

TEST_F(TraceLog, AnEmptyVariableSwitchesItOn)
{
    Invocation traced = launcher();
    traced.environment["TOLM_SERVICE_LOG"] = "";

    EXPECT_EQ(run(traced), too_few_contributors);

    EXPECT_EQ(scratch.user_listing(), (Names{"tolm_service.pid", "uquarndiffmrg.log"}));
    EXPECT_EQ(trace_text(), "");
}

TEST_F(TraceLog, ATracedRunEmptiesTheFileOfTheRunBefore)
{
    leave_old_trace();
    Invocation traced = launcher();
    trace(traced);

    EXPECT_EQ(run(traced), too_few_contributors);

    EXPECT_EQ(trace_text(), "");
}

TEST_F(TraceLog, AFileThatCannotBeMadeDoesNotStopTheRun)
{
    std::filesystem::create_directory(scratch.user_directory() + "/uquarndiffmrg.log");
    Invocation traced = launcher();
    trace(traced);

    EXPECT_EQ(run(traced), too_few_contributors);

    EXPECT_EQ(scratch.user_listing(), (Names{"tolm_service.pid", "uquarndiffmrg.log"}));
}

class UntracedStart : public LauncherProcess, public testing::WithParamInterface<std::string>
{};

TEST_P(UntracedStart, IsNeverRecordedOnceTheFileCouldNotBeMade)
{
    const ScriptedService service(scratch, "no-pid no-fifo wait");
    Invocation traced = launcher();
    service.add_to(traced.environment);
    trace(traced);
    shim(traced, {{"SHIM_FAIL", "open@uquarndiffmrg.log:1:13," + GetParam() + ":1:11"}});

    const Outcome outcome = run(traced);

    if (GetParam() == "execv")
        orphan_exit_status();
    if (GetParam() == "setsid")
        service.await("ready");
    EXPECT_EQ(outcome, GetParam() == "fork" ? silent_failure : too_few_contributors);
    EXPECT_EQ(scratch.user_listing(), Names{});
}

INSTANTIATE_TEST_SUITE_P(Calls, UntracedStart, testing::Values("fork", "setsid", "execv"),
                         [](const auto& tested) { return tested.param; });

TEST_F(LauncherProcess, ATimeOutIsTheLastRecordAndEndsTheTraceWithoutALineEnd)
{
    make_rendezvous(scratch);
    const Fifo gate(scratch / "gate");
    const ScriptedService service(scratch, "wait");
    Invocation traced = compare();
    service.add_to(traced.environment);
    trace(traced);
    shim(traced, {{"SHIM_FAIL", "setsid:1:1"},
                  {"SHIM_GATE", "alarm@90:1:" + gate.path()},
                  {"SHIM_TIME_DIVISOR", "alarm@90:1:1000"}});

    start(traced);
    service.await("ready"); // the child has written its record
    gate.put("\n");

    EXPECT_EQ(finish(), silent_failure);
    EXPECT_EQ(trace_text(), "SetSid() Failed\nTimeout communicating with tolm_service");
    EXPECT_EQ(scratch.user_listing(),
              (Names{"launcher_wrapper_pipe", "tolm_service.pid", "uquarndiffmrg.log"}));
}

} // namespace
