#include "service/request_check.h"
#include "tests/service/huge_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

TEST(PathFor, AnAbsolutePathIsTakenAsItIs)
{
    EXPECT_EQ(path_for(4711, "/d/a"), "/d/a");
}

TEST(PathFor, ARelativePathIsMeantFromTheLaunchersWorkingDirectory)
{
    EXPECT_EQ(path_for(4711, "view/a"), "/proc/4711/cwd/view/a");
}

std::string problem_with(const std::string& path)
{
    RequestCheck check({.contributors = {path}}, ::getpid());
    for (;;)
        if (const auto verdict = check.step())
            return *verdict ? "" : check.problem();
}

TEST(RequestCheck, TheNullDeviceIsAnEmptyFile)
{
    EXPECT_EQ(problem_with("/dev/null"), "");
}

TEST(RequestCheck, ADirectoryHasNoTextToCheck)
{
    EXPECT_EQ(problem_with("/"), "");
}

TEST(RequestCheck, AMissingContributorIsNamed)
{
    EXPECT_EQ(problem_with("/no/such/file"), "/no/such/file: No such file or directory");
}

TEST(RequestCheck, ADeviceThatHasSomethingToReadIsNoFile)
{
    EXPECT_EQ(problem_with("/dev/zero"), "/dev/zero: expected a file or a directory");
}

TEST(RequestCheck, AHugeFileIsReadASliceAtATime)
{
    const Scratch scratch;
    RequestCheck check({.contributors = {huge_file(scratch)}}, ::getpid());
    for (int slices = 0; slices < 100; ++slices)
        EXPECT_FALSE(check.step().has_value());
}

} // namespace
