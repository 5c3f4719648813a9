// Opens that nobody answers. Only the alarm in question is shortened.
#include "tests/process/launcher_process.h"

#include <csignal>

namespace
{

const std::string time_out_record = "Timeout communicating with tolm_service";
const Environment short_first_alarm{{"SHIM_TIME_DIVISOR", "alarm@90:1:1000"}};
const Environment short_second_alarm{{"SHIM_TIME_DIVISOR", "alarm@90:2:1000"}};

class TimeOut : public LauncherProcess
{
  protected:
    Outcome run_late(const std::string& script, const Environment& settings)
    {
        return run_against(script, shimmed_compare(settings));
    }

    Outcome run_traced(const Environment& settings)
    {
        Invocation traced = shimmed_compare(settings);
        trace(traced);
        return run_against("wait", traced);
    }
};

TEST_F(TimeOut, ARendezvousThatNobodyReadsEndsTheRunBeforeAnyFifoIsMade)
{
    EXPECT_EQ(run_late("wait", short_first_alarm), silent_failure);

    EXPECT_EQ(calls({"alarm"}), (Names{"alarm(90)"}));
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(TimeOut, AServiceThatNeverOpensTheRequestFifoLeavesBothFifos)
{
    EXPECT_EQ(run_late("listen wait", short_second_alarm), silent_failure);

    EXPECT_EQ(calls({"alarm"}), (Names{"alarm(90)", "alarm(0)", "alarm(90)"}));
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(TimeOut, AServiceThatDiesBeforeItOpensLeavesBothFifos)
{
    EXPECT_EQ(run_late("listen die", short_second_alarm), silent_failure);

    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(TimeOut, OneAlarmSpansBothOpensWhenOnlyTheFirstSucceeds)
{
    EXPECT_EQ(run_late("listen open-request wait", short_second_alarm), silent_failure);

    EXPECT_EQ(calls({"alarm"}), (Names{"alarm(90)", "alarm(0)", "alarm(90)"}));
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(TimeOut, AServiceThatDiesAfterOpeningOneFifoLeavesBoth)
{
    EXPECT_EQ(run_late("listen open-request die", short_second_alarm), silent_failure);

    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

TEST_F(TimeOut, IsRecordedWithoutALineEnd)
{
    EXPECT_EQ(run_traced(short_first_alarm), silent_failure);

    EXPECT_EQ(trace_text(), time_out_record);
    EXPECT_EQ(scratch.user_listing(),
              (Names{"launcher_wrapper_pipe", "tolm_service.pid", "uquarndiffmrg.log"}));
}

TEST_F(TimeOut, IsRecordedEvenWhereTheTraceFileCouldNotBeMadeAtTheStart)
{
    Environment settings = short_first_alarm;
    settings["SHIM_FAIL"] = "open@uquarndiffmrg.log:1:13";

    EXPECT_EQ(run_traced(settings), silent_failure);

    EXPECT_EQ(trace_text(), time_out_record);
}

TEST_F(TimeOut, IsSilentWhereTheTraceFileCannotBeMadeAtAll)
{
    Environment settings = short_first_alarm;
    settings["SHIM_FAIL"] = "open@uquarndiffmrg.log:*:13";

    EXPECT_EQ(run_traced(settings), silent_failure);

    EXPECT_EQ(calls({"open"}).back(), "open(uquarndiffmrg.log, w, 0666)");
    EXPECT_EQ(scratch.user_listing(), service_files);
}

TEST_F(TimeOut, ASignalThatComesFromOutsideEndsTheRunInTheSameWay)
{
    ScriptedService service(scratch, "listen wait");
    service.start();
    const Program& launched = start(compare());
    service.await("listen"); // the handler is there before the announcement

    launched.send_signal(SIGALRM);

    EXPECT_EQ(finish(), silent_failure);
    EXPECT_EQ(scratch.user_listing(), with_fifos(service_files));
}

} // namespace
