#include "tests/support/tools/child_process.h"

#include <gtest/gtest.h>

namespace
{

class Failing : public testing::TestWithParam<const char*>
{};

TEST_P(Failing, EndsTheProcessWith255AndSaysNothing)
{
    const ScratchDirectory scratch;

    const Outcome outcome = run_program(scratch, {.words = {PROBE, GetParam()}});

    EXPECT_EQ(outcome.status, 255);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, "");
}

INSTANTIATE_TEST_SUITE_P(ForWant, Failing,
                         testing::Values("memory", "length", "elements", "range"));

} // namespace
