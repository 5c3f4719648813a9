// A merge of three contributors must be what git makes of them: the same text, with the same
// conflicts in the same places.
#include "tests/harness/program.h"
#include "tests/viewer/core/texts.h"
#include "viewer/core/merge.h"

#include <gtest/gtest.h>

namespace
{

constexpr unsigned triples_in_a_part = 500;

Outcome run_git(const Scratch& scratch, std::vector<std::string> arguments)
{
    Invocation git = invocation(scratch, GIT, std::move(arguments));
    git.directory = scratch.path();
    return Program(git).run();
}

Outcome merged_by_git(const Scratch& scratch, const Triple& triple)
{
    scratch.write_file("ancestor", triple.ancestor);
    scratch.write_file("first", triple.first);
    scratch.write_file("second", triple.second);
    return run_git(scratch, {"merge-file", "-p", "-q", "-L", "first", "-L", "ancestor", "-L",
                             "second", "first", "ancestor", "second"});
}

Outcome merged_here(const Triple& triple)
{
    const auto plan = plan_merge(triple.texts(), true);
    return {.exit_status = static_cast<int>(plan->conflict_count()),
            .signal = 0,
            .out = with_markers(triple, *plan)};
}

class GeneratedMerges : public testing::TestWithParam<unsigned>
{};

TEST_P(GeneratedMerges, AreThoseOfGit)
{
    const Scratch scratch;
    TripleMaker maker(GetParam());
    for (unsigned count = 0; count < triples_in_a_part; ++count) {
        const Triple triple = maker.make();
        ASSERT_EQ(merged_here(triple), merged_by_git(scratch, triple))
            << "triple " << count << "\n-- ancestor\n"
            << triple.ancestor << "-- first\n"
            << triple.first << "-- second\n"
            << triple.second;
    }
}

INSTANTIATE_TEST_SUITE_P(Part, GeneratedMerges, testing::Range(0U, 6U));

} // namespace
