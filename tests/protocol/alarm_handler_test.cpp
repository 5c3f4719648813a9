#include "protocol/pipe_exchange.h"

#include "support/trace_log.h"
#include "tests/harness/child_process.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

constexpr int returned = 3;

class AlarmHandler : public testing::Test
{
  protected:
    Scratch scratch;

    void SetUp() override
    {
        log_file_name = scratch / "uquarndiffmrg.log";
        logging_enabled = false;
    }

    static int status_after(int signal_number)
    {
        return run_in_child([signal_number] {
            pipe_alarm_signal_handler(signal_number);
            return returned;
        });
    }
};

TEST_F(AlarmHandler, ReturnsOnAnotherSignalAndRecordsNothing)
{
    const EnvironmentVariable trace("TOLM_SERVICE_LOG", "1");
    EXPECT_EQ(status_after(SIGPIPE), returned);
    EXPECT_EQ(status_after(0), returned);
    EXPECT_FALSE(std::filesystem::exists(log_file_name));
}

TEST_F(AlarmHandler, EndsTheProcessOnTheAlarm)
{
    const EnvironmentVariable no_trace("TOLM_SERVICE_LOG", std::nullopt);
    EXPECT_EQ(status_after(SIGALRM), 255);
    EXPECT_FALSE(std::filesystem::exists(log_file_name));
}

TEST_F(AlarmHandler, RecordsTheTimeOutWhereTheEnvironmentAsksEvenWithLoggingOff)
{
    const EnvironmentVariable trace("TOLM_SERVICE_LOG", "");
    EXPECT_EQ(status_after(SIGALRM), 255);
    EXPECT_EQ(file_contents(log_file_name), "Timeout communicating with tolm_service");
}

TEST_F(AlarmHandler, RecordsNothingWithLoggingOnWhereTheEnvironmentDoesNotAsk)
{
    const EnvironmentVariable no_trace("TOLM_SERVICE_LOG", std::nullopt);
    logging_enabled = true;
    EXPECT_EQ(status_after(SIGALRM), 255);
    EXPECT_FALSE(std::filesystem::exists(log_file_name));
    logging_enabled = false;
}

} // namespace
