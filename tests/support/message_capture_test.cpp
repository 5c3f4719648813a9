#include "support/message_capture.h"

#include "platform/imsg.h"
#include "support/message_table.h"

#include <gtest/gtest.h>

namespace
{

class MessageCapture : public testing::Test
{
  protected:
    void SetUp() override { MsgFlush(); }
    void TearDown() override
    {
        imsg_redirect_output(nullptr, nullptr, nullptr, nullptr);
        MsgFlush();
    }

    static void append(void (*channel)(void*, char*), const char* text)
    {
        std::string copy = text;
        channel(nullptr, copy.data());
    }
};

TEST_F(MessageCapture, HandsOnTheMessageLibrarysResult)
{
    EXPECT_EQ(MsgHookIMsg(), 0);
}

TEST_F(MessageCapture, LeavesTheConsoleUntouched)
{
    MsgHookIMsg();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    print_message(MSG_USAGE);
    imsg_print(IMSG_LITERAL, "%d\n", IMSG_LITERAL_POSITION, 7);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(MessageCapture, KeepsTheChannelsApart)
{
    MsgHookIMsg();

    print_message(MSG_UNRECOGNIZED_OPTION);
    imsg_print(IMSG_LITERAL, "%d\n", IMSG_LITERAL_POSITION, 7);

    EXPECT_EQ(uquarndiffmrg_err_msg, "Unrecognized option\n");
    EXPECT_EQ(uquarndiffmrg_out_msg, "7\n");
}

TEST_F(MessageCapture, OnlyGrowsUntilItIsFlushed)
{
    MsgHookIMsg();

    print_message(MSG_UNRECOGNIZED_OPTION);
    print_message(MSG_INCORRECT_ENCODING);

    EXPECT_EQ(uquarndiffmrg_err_msg,
              "Unrecognized option\nIncorrect Encoding Option was Specified\n");
}

TEST_F(MessageCapture, FlushDiscardsBothTextsAndShowsNothing)
{
    uquarndiffmrg_out_msg = "out";
    uquarndiffmrg_err_msg = "err";
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    MsgFlush();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(uquarndiffmrg_out_msg, "");
    EXPECT_EQ(uquarndiffmrg_err_msg, "");
}

TEST_F(MessageCapture, StaysOnAfterAFlush)
{
    MsgHookIMsg();
    MsgFlush();

    print_message(MSG_UNRECOGNIZED_OPTION);

    EXPECT_EQ(uquarndiffmrg_err_msg, "Unrecognized option\n");
}

TEST_F(MessageCapture, StdoutProcAppendsToTheOutputTextOnly)
{
    append(stdout_proc, "one ");
    append(stdout_proc, "two");

    EXPECT_EQ(uquarndiffmrg_out_msg, "one two");
    EXPECT_EQ(uquarndiffmrg_err_msg, "");
}

TEST_F(MessageCapture, StderrProcAppendsToTheErrorTextOnly)
{
    append(stderr_proc, "one ");
    append(stderr_proc, "two");

    EXPECT_EQ(uquarndiffmrg_err_msg, "one two");
    EXPECT_EQ(uquarndiffmrg_out_msg, "");
}

TEST_F(MessageCapture, AnEmptyTextChangesNothing)
{
    append(stdout_proc, "before");

    append(stdout_proc, "");

    EXPECT_EQ(uquarndiffmrg_out_msg, "before");
}

} // namespace
