// Requests from where there is no display, through the real launcher, service and viewer.
#include "tests/service/service_process.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

class Unattended : public ServiceProcess
{
  protected:
    Unattended() : ServiceProcess(PRODUCT_TREE)
    {
        start_service();
        scratch.write_file("base", "1\n2\n3\n4\n5\n6\n7\n8\n9\n");
        scratch.write_file("left", "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n");
        scratch.write_file("right", "1\n2\n3\n4\n5\n6\n7\neight\n9\n");
        scratch.write_file("other", "1\n2 too\n3\n4\n5\n6\n7\n8\n9\n");
    }

    Invocation without_display(std::vector<std::string> words) const
    {
        Invocation run = launcher(std::move(words));
        run.environment.erase("DISPLAY");
        return run;
    }

    Outcome run(std::vector<std::string> words) const
    {
        return Program(without_display(std::move(words))).run();
    }

    /** The log, once a launcher that failed has its line in it. */
    std::string log_of_failure() const
    {
        until([this] { return !service_log().empty(); });
        return service_log();
    }
};

TEST_F(Unattended, AMergeWhoseChangesDoNotCollideIsWritten)
{
    EXPECT_EQ(run({"-out", "merged", "-base", "base", "left", "right"}), success);

    EXPECT_EQ(file_contents(scratch / "merged"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
    EXPECT_EQ(service_log(), "");
}

TEST_F(Unattended, AMergeMayWriteOverAContributor)
{
    EXPECT_EQ(run({"-out", "left", "-base", "base", "left", "right"}), success);

    EXPECT_EQ(file_contents(scratch / "left"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
}

TEST_F(Unattended, AMergeWithAConflictIsRefusedAndWritesNothing)
{
    EXPECT_EQ(run({"-out", "merged", "-base", "base", "left", "other"}), silent_failure);

    EXPECT_FALSE(fs::exists(scratch / "merged"));
    EXPECT_THAT(log_of_failure(), HasSubstr(": no display to resolve 1 conflict on\n"));
}

TEST_F(Unattended, AComparisonIsRefused)
{
    EXPECT_EQ(run({"a", "b"}), silent_failure);

    EXPECT_THAT(log_of_failure(), HasSubstr(": no display to show a comparison on\n"));
}

TEST_F(Unattended, AMergeIsDoneInTheEncodingOfTheCommandLine)
{
    scratch.write_file("wide", std::string("a\0\n\0", 4));
    scratch.write_file("wider", std::string("a\0\n\0b\0\n\0", 8));

    EXPECT_EQ(run({"-out", "m", "-encoding", "utf-16le", "-base", "wide", "wide", "wider"}),
              success);

    EXPECT_EQ(file_contents(scratch / "m"), std::string("a\0\n\0b\0\n\0", 8));
}

TEST_F(Unattended, AMalformedContributorIsToldByItsPlaceInOneLogLine)
{
    EXPECT_EQ(run({"-out", "m", "-base", "a", "b", "bad"}), silent_failure);

    EXPECT_THAT(log_of_failure(), MatchesRegex("[0-9-]+T[0-9:]+Z launcher [0-9]+: " +
                                               scratch.path() + "/bad: line 1, offset 1: .*\n"));
    EXPECT_FALSE(fs::exists(scratch / "m"));
}

TEST_F(Unattended, ANewOutputGetsTheModeThatTheLaunchersMaskLeaves)
{
    Invocation merge = without_display({"-out", "m", "-base", "base", "left", "right"});
    merge.file_mode_mask = 027;

    EXPECT_EQ(Program(merge).run(), success);

    EXPECT_EQ(fs::status(scratch / "m").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(Unattended, AnOutputThatCannotBeWrittenIsToldWithTheReason)
{
    EXPECT_EQ(run({"-out", "none/m", "-base", "base", "left", "right"}), silent_failure);

    EXPECT_THAT(log_of_failure(), HasSubstr("/none/m: "));
}

TEST_F(Unattended, ARequestLargerThanAPipeHoldsIsServed)
{
    std::vector<std::string> words = {"-out", "m"};
    words.resize(1000, "./././././././././././././././././././././././a");

    EXPECT_EQ(run(words), success);

    EXPECT_EQ(file_contents(scratch / "m"), "hello\n");
}

TEST_F(Unattended, ANameMayHoldTheDocumentsOwnFragments)
{
    ::mkdir((scratch / "x<").c_str(), 0700);
    ::mkdir((scratch / "x</string><").c_str(), 0700);
    ::mkdir((scratch / "x</string></value><").c_str(), 0700);
    const std::string name = "x</string></value></data><data><value><string>b";
    scratch.write_file(name, "hello\n");

    EXPECT_EQ(run({"-out", "m", "-base", "a", name, "b"}), success);

    EXPECT_EQ(file_contents(scratch / "m"), file_contents(scratch / "b"));
}

TEST_F(Unattended, ALineFeedInANameLeavesTheLogLineOne)
{
    scratch.write_file("two\nlines", "\xff");

    run({"-out", "m", "-base", "a", "b", "two\nlines"});

    EXPECT_THAT(log_of_failure(), MatchesRegex("[^\n]*/two.lines: line 1, offset 0: [^\n]*\n"));
}

TEST_F(Unattended, ARootRelativeToTheLaunchersDirectoryIsFollowedFromThere)
{
    Invocation merge = without_display({"-out", "/m", "-base", "/base", "/left", "/right"});
    merge.environment["QUARNFOLD_ROOT"] = ".";

    EXPECT_EQ(Program(merge).run(), success);

    EXPECT_EQ(file_contents(scratch / "m"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
}

TEST_F(Unattended, DirectoriesAreNoText)
{
    EXPECT_EQ(run({"-out", "m", "-base", ".", "a", "b"}), silent_failure);

    EXPECT_THAT(log_of_failure(), HasSubstr("/.: a directory, not a file\n"));
}

} // namespace
