// A merge of three contributors must be what git makes of them: the same text, with the same
// conflicts in the same places.
#include "tests/harness/program.h"
#include "tests/viewer/core/texts.h"
#include "viewer/core/merge.h"
#include "viewer/core/merge_result.h"

#include <gtest/gtest.h>

namespace
{

constexpr unsigned triples_in_a_part = 500;

Outcome run_git(const Scratch& scratch, std::vector<std::string> arguments)
{
    Invocation git = invocation(scratch, GIT, std::move(arguments));
    git.directory = scratch.path();
    git.environment["GIT_CONFIG_NOSYSTEM"] = "1";
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

/** A repository with the branches "first" and "second", which are merged again and again. */
class Repository
{
  public:
    Repository()
    {
        git({"init", "-q", "-b", "first"});
        commit("first", "");
        git({"branch", "second"});
    }

    Outcome git(std::vector<std::string> arguments) const
    {
        const std::vector<std::string> identity = {"-c", "user.name=a", "-c", "user.email=a@b"};
        arguments.insert(arguments.begin(), identity.begin(), identity.end());
        return run_git(scratch, std::move(arguments));
    }

    void commit(const std::string& branch, const std::string& content) const
    {
        git({"checkout", "-q", branch});
        scratch.write_file("file", content);
        git({"add", "file"});
        git({"commit", "-q", "--allow-empty", "-m", "step"});
    }

    std::string content(const std::string& revision) const
    {
        return git({"show", revision + ":file"}).out;
    }

    Triple to_merge() const
    {
        const std::string base = git({"merge-base", "first", "second"}).out;
        return {content(base.substr(0, base.find('\n'))), content("first"), content("second")};
    }

    /** Merges into the first branch; whether that went without conflicts. */
    bool merge() const
    {
        git({"checkout", "-q", "first"});
        return git({"merge", "-q", "-m", "merge", "second"}).exit_status == 0;
    }

    /** Ends the merge, and lets the second branch go on from there. */
    void end_merge(const std::string& content) const
    {
        commit("first", content);
        git({"branch", "-q", "-f", "second", "first"});
    }

    const Scratch scratch;
};

/** Of conflicts the lines of the first side. */
std::string resolved(const Triple& triple)
{
    MergeResult result(triple.texts(), *plan_merge(triple.texts(), true));
    result.choose_for_unresolved(1);
    return result.bytes();
}

TEST(MergesOfAHistory, AreThoseOfGit)
{
    const Repository repository;
    TripleMaker maker(1);
    for (int step = 0; step < 40; ++step) {
        repository.commit("second", maker.next_version(repository.content("second")));
        repository.commit("first", maker.next_version(repository.content("first")));
        const Triple triple = repository.to_merge();
        const Outcome here = merged_here(triple);

        ASSERT_EQ(here, merged_by_git(repository.scratch, triple));
        ASSERT_EQ(repository.merge(), here.exit_status == 0);
        ASSERT_TRUE(here.exit_status != 0 || repository.content("first") == here.out);
        repository.end_merge(resolved(triple));
    }
    EXPECT_GT(repository.content("first").size(), 100U);
}

} // namespace
