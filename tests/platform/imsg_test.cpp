#include "platform/imsg.h"

#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>
#include <vector>

namespace
{

constexpr const char* texts[] = {"first", "100% %s %n", ""};
constexpr std::uint16_t numbers[] = {1, 2, 7};
constexpr imsg_table table = {"no_such_catalogue", "tst", 9, 3, texts, numbers};

/** What one channel was handed, piece by piece. */
using Pieces = std::vector<std::string>;

void keep(void* pieces, char* text)
{
    static_cast<Pieces*>(pieces)->emplace_back(text);
}

class Redirected : public testing::Test
{
  protected:
    Pieces out;
    Pieces err;

    void SetUp() override { imsg_redirect_output(keep, &out, keep, &err); }
    void TearDown() override { imsg_redirect_output(nullptr, nullptr, nullptr, nullptr); }
};

TEST_F(Redirected, AnErrorIsItsTextAndALineEndInOnePiece)
{
    EXPECT_EQ(imsg_print(IMSG_ERROR, &table, 0), 6);
    EXPECT_EQ(err, Pieces{"first\n"});
    EXPECT_EQ(out, Pieces{});
}

TEST_F(Redirected, AnErrorsTextIsNoFormat)
{
    EXPECT_EQ(imsg_print(IMSG_ERROR, &table, 1), 11);
    EXPECT_EQ(err, Pieces{"100% %s %n\n"});
}

TEST_F(Redirected, AnErrorWithAnEmptyTextIsALineEnd)
{
    EXPECT_EQ(imsg_print(IMSG_ERROR, &table, 2), 1);
    EXPECT_EQ(err, Pieces{"\n"});
}

TEST_F(Redirected, ALiteralIsFormattedAndGetsNoLineEnd)
{
    EXPECT_EQ(imsg_print(IMSG_LITERAL, "%-*s|%d", IMSG_LITERAL_POSITION, 4, "ab", 7), 6);
    EXPECT_EQ(out, Pieces{"ab  |7"});
    EXPECT_EQ(err, Pieces{});
}

TEST_F(Redirected, ALiteralMayBeLong)
{
    const std::string text(100000, 'x');
    EXPECT_EQ(imsg_print(IMSG_LITERAL, "%s", IMSG_LITERAL_POSITION, text.c_str()), 100000);
    EXPECT_EQ(out, Pieces{text});
}

TEST_F(Redirected, ALiteralThatCannotBeFormattedIsRefused)
{
    const wchar_t beyond_ascii[] = {0x4e00, 0};
    EXPECT_EQ(imsg_print(IMSG_LITERAL, "%ls", IMSG_LITERAL_POSITION, beyond_ascii), -1);
    EXPECT_EQ(out, Pieces{});
}

TEST_F(Redirected, AnUnknownPositionIsRefused)
{
    for (const int position : {-1, 3, 1000})
        EXPECT_EQ(imsg_print(IMSG_ERROR, &table, position), -1) << position;
    EXPECT_EQ(out, Pieces{});
}

TEST_F(Redirected, AnUnknownKindIsRefused)
{
    for (const int kind : {-1, 1, 5, 7})
        EXPECT_EQ(imsg_print(kind, &table, 0), -1) << kind;
    EXPECT_EQ(out, Pieces{});
    EXPECT_EQ(err, Pieces{});
}

TEST(Redirection, AnswersZero)
{
    Pieces pieces;
    EXPECT_EQ(imsg_redirect_output(keep, &pieces, keep, &pieces), 0);
    EXPECT_EQ(imsg_redirect_output(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST(Redirection, OfOneChannelLeavesTheOtherToTheConsole)
{
    Pieces out;
    imsg_redirect_output(keep, &out, nullptr, nullptr);
    testing::internal::CaptureStderr();

    imsg_print(IMSG_LITERAL, "text", IMSG_LITERAL_POSITION);
    imsg_print(IMSG_ERROR, &table, 0);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "first\n");
    EXPECT_EQ(out, Pieces{"text"});
    imsg_redirect_output(nullptr, nullptr, nullptr, nullptr);
}

TEST(Formatting, WritesIntoTheBufferAndCounts)
{
    std::array<char, 20> buffer{};
    EXPECT_EQ(imsg_sprintf(buffer.data(), "%s=%d", IMSG_LITERAL_POSITION, "n", 12), 4);
    EXPECT_STREQ(buffer.data(), "n=12");
}

TEST_F(Redirected, AComplaintCarriesTheRegisteredName)
{
    static char name[] = "uquarndiffmrg";
    imsg_set_app_name(name);

    imsg_print(IMSG_ERROR, &table, 3);

    EXPECT_EQ(err, Pieces{"uquarndiffmrg: no message at position 3\n"});
}

class Console : public testing::Test
{
  protected:
    Scratch scratch;
};

TEST_F(Console, ShowsAnErrorOnStandardError)
{
    EXPECT_EQ(Program(invocation(scratch, PROBE, {"message", "7"})).run(),
              (Outcome{.exit_status = 0, .err = "Incorrect Encoding Option was Specified\n"}));
}

TEST_F(Console, ShowsALiteralOnStandardOutput)
{
    EXPECT_EQ(Program(invocation(scratch, PROBE, {"literal"})).run(),
              (Outcome{.exit_status = 0, .out = "text-7\n"}));
}

TEST_F(Console, ThatTakesNothingIsReported)
{
    const std::string redirected = R"(exec "$0" message 7 2> /dev/full)";
    EXPECT_EQ(Program(invocation(scratch, "/bin/sh", {"-c", redirected, PROBE})).run(),
              Outcome{.exit_status = 1});
}

} // namespace
