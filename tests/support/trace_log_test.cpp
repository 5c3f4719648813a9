#include "support/trace_log.h"

#include "support/temp_directory.h"
#include "tests/harness/child_process.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

class TraceLog : public testing::Test
{
  protected:
    Scratch scratch;
    std::string expected = scratch / "uquarndiffmrg.log";

    void SetUp() override
    {
        modified_temp_directory = scratch.path();
        log_file_name.clear();
    }
};

TEST_F(TraceLog, IsOffWithoutTheVariable)
{
    const EnvironmentVariable variable("TOLM_SERVICE_LOG", std::nullopt);
    EXPECT_FALSE(check_log_env());
}

TEST_F(TraceLog, IsOnWithAnyValue)
{
    const EnvironmentVariable variable("TOLM_SERVICE_LOG", "0");
    EXPECT_TRUE(check_log_env());
}

TEST_F(TraceLog, IsOnWithTheEmptyValue)
{
    const EnvironmentVariable variable("TOLM_SERVICE_LOG", "");
    EXPECT_TRUE(check_log_env());
}

TEST_F(TraceLog, AsksTheEnvironmentAfreshEachTime)
{
    const EnvironmentVariable off("TOLM_SERVICE_LOG", std::nullopt);
    const bool before = check_log_env();
    const EnvironmentVariable on("TOLM_SERVICE_LOG", "1");

    EXPECT_NE(check_log_env(), before);
}

TEST_F(TraceLog, IsCreatedEmptyInTheTemporaryDirectory)
{
    ASSERT_TRUE(init_logging());

    EXPECT_EQ(log_file_name, expected);
    EXPECT_EQ(file_contents(expected), "");
}

TEST_F(TraceLog, IsEmptiedOfWhatAnEarlierRunLeft)
{
    write_file(expected, "an earlier run");

    ASSERT_TRUE(init_logging());

    EXPECT_EQ(file_contents(expected), "");
}

TEST_F(TraceLog, IsCreatedForAllLessTheUmask)
{
    const Umask group(026);

    ASSERT_TRUE(init_logging());

    EXPECT_EQ(static_cast<unsigned>(fs::status(expected).permissions()), 0640U);
}

TEST_F(TraceLog, ThatCannotBeCreatedKeepsItsName)
{
    fs::create_directory(expected);

    EXPECT_FALSE(init_logging());

    EXPECT_EQ(log_file_name, expected);
}

TEST_F(TraceLog, DoesNotCreateAMissingDirectory)
{
    modified_temp_directory = scratch / "missing";

    EXPECT_FALSE(init_logging());

    EXPECT_FALSE(fs::exists(scratch / "missing"));
}

TEST_F(TraceLog, DecidesNothingAboutLoggingEnabled)
{
    logging_enabled = false;

    init_logging();

    EXPECT_FALSE(logging_enabled);
}

TEST_F(TraceLog, HoldsTheRecordsInTheOrderWrittenWithNothingAdded)
{
    init_logging();

    write_log("SetSid() Failed\n");
    write_log("Execv Failed\n");

    EXPECT_EQ(file_contents(expected), "SetSid() Failed\nExecv Failed\n");
}

TEST_F(TraceLog, EndsWithoutALineEndWhereTheRecordHasNone)
{
    init_logging();

    write_log("Execv Failed\n");
    write_log("Timeout communicating with tolm_service");

    EXPECT_EQ(file_contents(expected), "Execv Failed\nTimeout communicating with tolm_service");
}

TEST_F(TraceLog, AppendsToWhatTheFileHoldsAlready)
{
    log_file_name = expected;
    write_file(expected, "another process\n");

    write_log("record");

    EXPECT_EQ(file_contents(expected), "another process\nrecord");
}

TEST_F(TraceLog, IsOpenedAnewForEveryRecord)
{
    init_logging();
    write_log("first");
    fs::remove(expected);

    write_log("second");

    EXPECT_EQ(file_contents(expected), "second");
}

TEST_F(TraceLog, HoldsTheRecordsOfParentAndChildInTheOrderWritten)
{
    init_logging();

    write_log("parent\n");
    run_in_child([] { return write_log("child\n"), 0; });
    write_log("parent again\n");

    EXPECT_EQ(file_contents(expected), "parent\nchild\nparent again\n");
}

TEST_F(TraceLog, DropsARecordThatCannotBeWrittenWithoutAWord)
{
    fs::create_directory(expected);
    init_logging();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    write_log("lost");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(fs::is_empty(expected));
}

TEST_F(TraceLog, TakesRecordsAfterAFailedStartOnceTheFileCanBeWritten)
{
    fs::create_directory(expected);
    init_logging();
    fs::remove(expected);

    write_log("late");

    EXPECT_EQ(file_contents(expected), "late");
}

TEST_F(TraceLog, HoldsNoDescriptorBetweenRecords)
{
    const int before = open_descriptors();

    init_logging();
    write_log("record");

    EXPECT_EQ(open_descriptors(), before);
}

} // namespace
