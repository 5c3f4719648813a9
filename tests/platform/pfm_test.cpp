#include "tests/support/tools/child_process.h"
#include "tests/support/tools/scratch_directory.h"

#include <gtest/gtest.h>

namespace
{

Outcome exit_with(const std::string& status)
{
    const ScratchDirectory scratch;
    return run_program(scratch, {.words = {PROBE, "exit", status}});
}

TEST(PfmExit, EndsWithTheStatus)
{
    EXPECT_EQ(exit_with("0").status, 0);
    EXPECT_EQ(exit_with("7").status, 7);
}

TEST(PfmExit, OfMinusOneIsSeenAs255)
{
    EXPECT_EQ(exit_with("-1").status, 255);
}

TEST(PfmExit, FlushesNothingAndRunsNoDestructorAndNoExitHandler)
{
    EXPECT_EQ(exit_with("0").output, "");
}

} // namespace
