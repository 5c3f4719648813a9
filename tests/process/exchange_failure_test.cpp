// Every way in which an exchange ends without an answer, time-outs apart.
#include "tests/process/launcher_process.h"

#include <csignal>
#include <sys/stat.h>

namespace
{

const Outcome wrapper_dead{.exit_status = 255, .out = "Launcher Wrapper dead"};

class ExchangeFailure : public LauncherProcess
{
  protected:
    /** Runs a compare, with the shim, against a service of this script. */
    Outcome run_faulty(const std::string& script, const Environment& settings)
    {
        return run_against(script, shimmed_compare(settings));
    }

    /** Runs a compare that the shim holds at `call` until the service has died by its script. */
    Outcome run_past_death(const std::string& script, const std::string& call)
    {
        const Fifo gate(scratch / "gate");
        ScriptedService service(scratch, script);
        service.start();
        start(shimmed_compare({{"SHIM_GATE", call + ":" + gate.path()}}));
        EXPECT_EQ(service.wait().signal, SIGKILL);
        gate.put("\n");
        return finish();
    }

    /** As if an earlier process of the same id had left it. */
    void leave_stale(const std::string& fifo) const
    {
        ASSERT_EQ(::mkfifo((scratch.user_directory() + "/" + fifo).c_str(), 0600), 0);
    }
};

TEST_F(ExchangeFailure, AMissingRendezvousIsTriedThirteenTimesWithASleepAfterEach)
{
    // A sleep that fails ends at once, as after a signal: no alarm is shortened that way.
    const Outcome outcome = run_faulty("no-fifo wait", {{"SHIM_FAIL", "sleep:*:4"}});

    EXPECT_EQ(outcome, wrapper_dead);
    EXPECT_EQ(scratch.user_listing(), with_fifos({"tolm_service.pid"}));
    Names expected;
    for (int attempt = 0; attempt < 13; ++attempt)
        for (const char* call :
             {"alarm(90)", "open(launcher_wrapper_pipe, w)", "alarm(0)", "sleep(10)"})
            expected.emplace_back(call);
    EXPECT_EQ(exchange_calls({"alarm", "open", "sleep"}), expected);
}

TEST_F(ExchangeFailure, ARendezvousThatComesLateIsUsedAfterOneSleep)
{
    EXPECT_EQ(
        run_faulty(script::answer_yes, {{"SHIM_FAIL", "open@launcher_wrapper_pipe:1:2,sleep:*:4"}}),
        success);

    EXPECT_EQ(exchange_calls({"sleep"}), (Names{"sleep(10)"}));
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, AStaleRequestFifoEndsTheRunBeforeAnythingIsAnnounced)
{
    // The launcher cannot pass its open of the rendezvous before the gate is opened.
    ScriptedService service(scratch, "gate listen");
    service.start();
    start(compare());
    leave_stale(request_fifo());
    service.open_gate();

    EXPECT_EQ(finish(), silent_failure);

    EXPECT_EQ(service.wait().exit_status, 1); // it met the end of the rendezvous
    EXPECT_EQ(service.record("announcement"), "");
    EXPECT_EQ(scratch.user_listing(),
              (Names{"launcher_wrapper_pipe", "tolm_service.pid", request_fifo()}));
}

TEST_F(ExchangeFailure, AStaleResponseFifoLeavesTheRequestFifoToo)
{
    ScriptedService service(scratch, "gate listen");
    service.start();
    start(compare());
    leave_stale(response_fifo());
    service.open_gate();

    EXPECT_EQ(finish(), silent_failure);

    EXPECT_EQ(service.wait().exit_status, 1);
    EXPECT_EQ(service.record("announcement"), "");
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, ARequestFifoThatCannotBeMadeEndsTheRunSilently)
{
    EXPECT_EQ(run_faulty("open-rendezvous wait", {{"SHIM_FAIL", "mkfifo:1:28"}}), silent_failure);

    EXPECT_EQ(exchange_calls({"mkfifo"}), (Names{"mkfifo(request, 0666)"}));
    EXPECT_EQ(exchange_calls({"write"}), Names{});
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, AResponseFifoThatCannotBeMadeLeavesTheRequestFifo)
{
    EXPECT_EQ(run_faulty("open-rendezvous wait", {{"SHIM_FAIL", "mkfifo:2:28"}}), silent_failure);

    EXPECT_EQ(exchange_calls({"write"}), Names{});
    EXPECT_EQ(scratch.user_listing(),
              (Names{"launcher_wrapper_pipe", "tolm_service.pid", request_fifo()}));
}

TEST_F(ExchangeFailure, AnAnnouncementThatCannotBeWrittenClosesTheRendezvousAndLeavesTheFifos)
{
    EXPECT_EQ(
        run_faulty("open-rendezvous wait", {{"SHIM_FAIL", "write@launcher_wrapper_pipe:1:5"}}),
        wrapper_dead);

    EXPECT_EQ(exchange_calls({"close"}), (Names{"close(3 launcher_wrapper_pipe)"}));
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, AServiceThatDiesBeforeTheAnnouncementIsAWriteFailureNotASignal)
{
    EXPECT_EQ(run_past_death("open-rendezvous die", "write@launcher_wrapper_pipe:1"), wrapper_dead);

    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, ARequestOpenThatFailsStillTriesTheResponseOpenAndLeavesTheFifos)
{
    EXPECT_EQ(
        run_faulty("listen open-response wait", {{"SHIM_FAIL", "open@lsp_request_pipe:1:24"}}),
        silent_failure);

    EXPECT_EQ(exchange_calls({"alarm", "open", "close", "write", "read", "unlink"}),
              (Names{"alarm(90)", "open(launcher_wrapper_pipe, w)", "alarm(0)",
                     exchange_calls({"write"}).front(), "alarm(90)", "open(request, w)",
                     "open(response, r)", "alarm(0)", "close(3 launcher_wrapper_pipe)"}));
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, AResponseOpenThatFailsClosesOnlyTheRendezvousAndLeavesTheFifos)
{
    EXPECT_EQ(
        run_faulty("listen open-request wait", {{"SHIM_FAIL", "open@lsp_response_pipe:1:24"}}),
        silent_failure);

    EXPECT_EQ(exchange_calls({"close", "unlink"}), (Names{"close(3 launcher_wrapper_pipe)"}));
    EXPECT_EQ(exchange_calls({"write"}).size(), 1U);
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, ARequestThatCannotBeWrittenIsNotFollowedByARead)
{
    EXPECT_EQ(run_faulty("listen open-request open-response wait",
                         {{"SHIM_FAIL", "write@lsp_request_pipe:1:5"}}),
              silent_failure);

    EXPECT_EQ(exchange_calls({"read"}), Names{});
    EXPECT_EQ(exchange_calls({"unlink"}), (Names{"unlink(request)", "unlink(response)"}));
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, AServiceThatDiesBeforeItReadsIsAWriteFailureNotASignal)
{
    EXPECT_EQ(run_past_death("listen open-request open-response die", "write@lsp_request_pipe:1"),
              silent_failure);

    EXPECT_EQ(exchange_calls({"read"}), Names{});
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, AServiceThatDiesBeforeItAnswersMeansFailure)
{
    ScriptedService service(scratch, script::take_request + "die");
    service.start();

    EXPECT_EQ(run(compare()), silent_failure);

    EXPECT_EQ(service.wait().signal, SIGKILL);
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, AReplyThatCannotBeReadMeansFailureAndTheFifosGo)
{
    EXPECT_EQ(run_faulty(script::take_request + "answer=<boolean>1</boolean> wait",
                         {{"SHIM_FAIL", "read@lsp_response_pipe:1:5"}}),
              silent_failure);

    EXPECT_EQ(exchange_calls({"read", "unlink"}),
              (Names{"read(response, 1023)", "unlink(request)", "unlink(response)"}));
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(ExchangeFailure, FifosThatCannotBeRemovedDoNotChangeTheResult)
{
    EXPECT_EQ(run_faulty(script::answer_yes, {{"SHIM_FAIL", "unlink:*:1"}}), success);

    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(ExchangeFailure, WithClosedStandardDescriptorsADeadWrapperIsReportedNowhere)
{
    ScriptedService service(scratch, "no-fifo wait");
    service.start();
    Invocation bare = compare();
    bare.closed_descriptors = {0, 1, 2};
    shim(bare, {{"SHIM_FAIL", "sleep:*:4"}});

    EXPECT_EQ(run(bare), silent_failure);

    EXPECT_EQ(scratch.user_listing(), with_fifos({"tolm_service.pid"}));
}

} // namespace
