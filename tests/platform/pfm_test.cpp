#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <gtest/gtest.h>

namespace
{

Outcome exit_with(const std::string& status)
{
    const Scratch scratch;
    return Program(invocation(scratch, PROBE, {"exit", status})).run();
}

TEST(PfmExit, EndsWithTheStatus)
{
    EXPECT_EQ(exit_with("0").exit_status, 0);
    EXPECT_EQ(exit_with("7").exit_status, 7);
}

TEST(PfmExit, OfMinusOneIsSeenAs255)
{
    EXPECT_EQ(exit_with("-1").exit_status, 255);
}

TEST(PfmExit, FlushesNothingAndRunsNoDestructorAndNoExitHandler)
{
    EXPECT_EQ(exit_with("0").out, "");
}

} // namespace
