#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <gtest/gtest.h>

namespace
{

class Failing : public testing::TestWithParam<const char*>
{};

TEST_P(Failing, EndsTheProcessWith255AndSaysNothing)
{
    const Scratch scratch;

    EXPECT_EQ(Program(invocation(scratch, PROBE, {GetParam()})).run(), Outcome{.exit_status = 255});
}

INSTANTIATE_TEST_SUITE_P(ForWant, Failing,
                         testing::Values("memory", "length", "elements", "range", "nothing"));

} // namespace
