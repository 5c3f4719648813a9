// How the launcher starts a service, and what the service finds when it starts.
#include "tests/process/launcher_process.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace
{

const Outcome usage_only{.exit_status = 255, .err = usage};

class ServiceStart : public LauncherProcess
{
  protected:
    /** Without words the launcher ends as soon as it has started the service. */
    Invocation starting(const ScriptedService& service, const Environment& settings) const
    {
        Invocation observed = launcher();
        service.add_to(observed.environment);
        shim(observed, settings);
        return observed;
    }
};

/** Has the launcher start a service that answers it, and looks at what the service found. */
class StartedService : public LauncherProcess
{
  protected:
    void run_from_cold(const Invocation& cold)
    {
        make_rendezvous(scratch);
        ASSERT_EQ(run(cold), success);
        service.await("close"); // the last verb: all is recorded
    }

    Invocation cold_compare() const
    {
        Invocation cold = compare();
        service.add_to(cold.environment);
        return cold;
    }

    ScriptedService service{scratch, script::answer_yes};
};

TEST_F(StartedService, AnswersTheLauncherThatStartedIt)
{
    run_from_cold(cold_compare());

    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(StartedService, GetsItsOwnPathAsNameAndItsInstallDirectoryAsTheOnlyArgument)
{
    run_from_cold(cold_compare());

    const std::string product = TEST_PRODUCT_DIR;
    EXPECT_EQ(service.record("arguments"),
              product + "/bin/tolm_service" + '\0' + product + "/Kelvanport" + '\0');
}

TEST_F(StartedService, HasOnlyTheNullDeviceAsStandardInputOutputAndError)
{
    run_from_cold(cold_compare());

    EXPECT_EQ(service.record("descriptors"), "0 /dev/null r\n1 /dev/null w\n2 /dev/null w\n");
}

TEST_F(StartedService, HasTheSameDescriptorsWhenTheLauncherHadNone)
{
    Invocation bare = cold_compare();
    bare.closed_descriptors = {0, 1, 2};

    run_from_cold(bare);

    EXPECT_EQ(service.record("descriptors"), "0 /dev/null r\n1 /dev/null w\n2 /dev/null w\n");
}

TEST_F(StartedService, HasNoDescriptorOfTheTraceFile)
{
    Invocation traced = cold_compare();
    trace(traced);

    run_from_cold(traced);

    EXPECT_EQ(service.record("descriptors"), "0 /dev/null r\n1 /dev/null w\n2 /dev/null w\n");
    EXPECT_EQ(trace_text(), "");
}

TEST_F(StartedService, LeadsASessionOfItsOwn)
{
    run_from_cold(cold_compare());

    EXPECT_EQ(service.record("session"), "own");
}

TEST_F(StartedService, KeepsTheWorkingDirectoryAndFileModeMaskOfItsStarter)
{
    Invocation cold = cold_compare();
    std::filesystem::create_directory(scratch / "here");
    cold.directory = scratch / "here";
    cold.arguments = {"../a", "../b"};
    cold.file_mode_mask = 0027;

    run_from_cold(cold);

    EXPECT_EQ(service.record("directory"), scratch / "here");
    EXPECT_EQ(service.record("umask"), "0027");
}

TEST_F(StartedService, KeepsTheEnvironmentOfItsStarter)
{
    Invocation cold = cold_compare();
    cold.environment["SOME_SETTING"] = "some value";

    run_from_cold(cold);

    std::string expected;
    for (const auto& [name, value] : cold.environment)
        expected.append(name).append("=").append(value).push_back('\0');
    EXPECT_EQ(service.record("environment"), expected);
}

TEST_F(StartedService, DoesNotInheritThatTheLauncherIgnoresSigpipe)
{
    run_from_cold(cold_compare());

    EXPECT_EQ(service.record("ignored"), "");
}

TEST_F(StartedService, KeepsTheSignalsThatItsStarterIgnores)
{
    Invocation cold = cold_compare();
    cold.ignored_signals = {SIGHUP, SIGPIPE};

    run_from_cold(cold);

    EXPECT_EQ(service.record("ignored"),
              std::to_string(SIGHUP) + "\n" + std::to_string(SIGPIPE) + "\n");
}

TEST_F(ServiceStart, ComesBeforeACommandLineWithoutWordsIsRejected)
{
    const ScriptedService service(scratch, "wait");
    Invocation rejected = launcher();
    service.add_to(rejected.environment);

    EXPECT_EQ(run(rejected), too_few_contributors);

    service.await("ready");
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ServiceStart, ComesBeforeAGrammarErrorIsRejected)
{
    const ScriptedService service(scratch, "wait");
    Invocation rejected = launcher({"-nonsense", "a", "b"});
    service.add_to(rejected.environment);

    EXPECT_EQ(run(rejected), usage_only);

    service.await("ready");
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ServiceStart, HappensOnceForTwoLaunchersInTurn)
{
    make_rendezvous(scratch);
    // Closed before the first launcher can end: what the second announces must not be closed upon.
    const ScriptedService service(scratch,
                                  "listen close-rendezvous open-request open-response read "
                                  "answer=<boolean>1</boolean> drain close again");
    Invocation cold = compare();
    service.add_to(cold.environment);

    EXPECT_EQ(run(cold), success);
    EXPECT_EQ(run(cold), success);

    const std::string starts = service.record("starts");
    EXPECT_EQ(std::count(starts.begin(), starts.end(), '\n'), 1);
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ServiceStart, LetsACommandSubstitutionSeeTheEndOfTheOutput)
{
    const ScriptedService service(scratch, "wait");
    Invocation shell = invocation(scratch, "/bin/sh",
                                  {"-c", R"(x=$("$0" 2>&1); printf '%s' "$x")", TEST_LAUNCHER});
    service.add_to(shell.environment);

    const Outcome outcome = run(shell);

    EXPECT_FALSE(outcome.timed_out);
    EXPECT_EQ(outcome.out + "\n", too_few_contributors.err);
    service.await("ready"); // it lives, and holds nothing of the shell's
}

TEST_F(ServiceStart, DetachesInTheChildInTheGivenOrder)
{
    const ScriptedService service(scratch, "wait");

    run(starting(service, {}));
    service.await("ready");

    Names steps = calls({"close", "open", "setsid", "execv"}, "child");
    ASSERT_EQ(steps.size(), 8U);
    for (std::string& step : steps) // what the three were before does not matter
        if (step.starts_with("close"))
            step.erase(step.find(' '));
    EXPECT_EQ(steps, (Names{"close(1", "close(0", "close(2", "open(/dev/null, r)",
                            "open(/dev/null, w)", "open(/dev/null, w)", "setsid()",
                            std::string("execv(") + TEST_PRODUCT_DIR + "/bin/tolm_service)"}));
}

TEST_F(ServiceStart, AFailedForkEndsTheRunBeforeTheCommandLineIsLookedAt)
{
    const ScriptedService service(scratch, "wait");

    EXPECT_EQ(run(starting(service, {{"SHIM_FAIL", "fork:1:11"}})), silent_failure);

    EXPECT_EQ(service.record("starts"), "");
    EXPECT_EQ(scratch.user_listing(), Names{});
}

TEST_F(ServiceStart, AFailedForkIsRecorded)
{
    const ScriptedService service(scratch, "wait");
    Invocation traced = starting(service, {{"SHIM_FAIL", "fork:1:11"}});
    trace(traced);

    EXPECT_EQ(run(traced), silent_failure);

    EXPECT_EQ(trace_text(), "Unable to start tolm_service\n");
    EXPECT_EQ(scratch.user_listing(), (Names{"uquarndiffmrg.log"}));
}

TEST_F(ServiceStart, AFailedSessionIsRecordedAndTheServiceStartsAllTheSame)
{
    const ScriptedService service(scratch, "wait");
    Invocation traced = starting(service, {{"SHIM_FAIL", "setsid:1:1"}});
    trace(traced);

    EXPECT_EQ(run(traced), too_few_contributors);

    service.await("ready");
    EXPECT_EQ(service.record("session"), "another's");
    EXPECT_EQ(trace_text(), "SetSid() Failed\n");
    EXPECT_EQ(scratch.user_listing(),
              (Names{"launcher_wrapper_pipe", "tolm_service.pid", "uquarndiffmrg.log"}));
}

TEST_F(ServiceStart, AServiceThatCannotBeExecutedIsRecordedAndTheLauncherGoesOn)
{
    const ScriptedService service(scratch, "wait");
    Invocation traced = starting(service, {{"SHIM_FAIL", "execv:1:2"}});
    traced.arguments = {"a", "missing"}; // looked at by the launcher, never by its child
    trace(traced);

    EXPECT_EQ(run(traced), usage_only);

    EXPECT_EQ(orphan_exit_status(), 255);
    EXPECT_EQ(trace_text(), "Execv Failed\n");
    EXPECT_EQ(calls({"getcwd"}).size(), 2U);
    EXPECT_EQ(calls({"getcwd"}, "child"), Names{});
    EXPECT_EQ(scratch.user_listing(), (Names{"uquarndiffmrg.log"}));
}

TEST_F(ServiceStart, AMissingServiceProgramIsSilentWithoutATrace)
{
    std::filesystem::create_directories(scratch / "product/bin");
    std::filesystem::copy_file(TEST_LAUNCHER, scratch / "product/bin/uquarndiffmrg");

    EXPECT_EQ(run(invocation(scratch, scratch / "product/bin/uquarndiffmrg")),
              too_few_contributors);

    EXPECT_EQ(orphan_exit_status(), 255);
    EXPECT_EQ(scratch.user_listing(), Names{});
}

TEST_F(ServiceStart, AFailedSessionAndAFailedExecutionAreTwoLines)
{
    const ScriptedService service(scratch, "wait");
    Invocation traced = starting(service, {{"SHIM_FAIL", "setsid:1:1,execv:1:2"}});
    trace(traced);

    EXPECT_EQ(run(traced), too_few_contributors);

    EXPECT_EQ(orphan_exit_status(), 255);
    EXPECT_EQ(trace_text(), "SetSid() Failed\nExecv Failed\n");
}

} // namespace
