// Subversion's diff and merge commands with the product's tools.
#include "tests/service/shell_process.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::Not;

class SubversionRequest : public ShellProcess
{
  protected:
    explicit SubversionRequest(const std::string& tree = SCRIPTED_VIEWER_TREE,
                               const std::string& display = ":0")
        : ShellProcess(tree, display), tools(programs + "../share/quarnfold/subversion/")
    {
        const std::string url = "file://" + scratch.path() + "/repository";
        std::filesystem::create_directory(scratch / "home/.subversion");
        scratch.write_file("home/.subversion/config", "[helpers]\ndiff-cmd = " + tools +
                                                          "diff\nmerge-tool-cmd = " + tools +
                                                          "merge\n");
        prepare("svnadmin create ../repository; svn checkout -q " + url + " .; svn checkout -q " +
                url + " ../other");
    }

    /** "the file" was changed here, and committed with other changes elsewhere. */
    void collide() const
    {
        prepare("seq 9 > 'the file'; svn add -q 'the file'; svn commit -qm base\n"
                "cd ../other; svn update -q; seq 9 | sed 's/2/two/' > 'the file'\n"
                "svn commit -qm other; cd ../checkout; seq 9 | sed 's/2/zwei/' > 'the file'");
    }

    const std::string tools;
};

class Subversion : public SubversionRequest
{
  protected:
    Subversion() : SubversionRequest(PRODUCT_TREE, "") {}
};

const std::string update = "svn update --force-interactive --accept launch";

TEST_F(Subversion, AnAbandonedMergeIsStillAConflictAndLosesNothing)
{
    collide();

    const Outcome outcome = shell(update);

    EXPECT_EQ(outcome.exit_status, 0); // which does not depend on conflicts
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(shell("svn status").out, HasSubstr("C       the file\n"));
    EXPECT_THAT(file("the file"), HasSubstr("=======\ntwo\n>>>>>>>"));
    EXPECT_EQ(file("the file.mine"), "1\nzwei\n3\n4\n5\n6\n7\n8\n9\n");
}

TEST_F(Subversion, AMergeIsWrittenToTheFileThatSubversionNames)
{
    prepare("seq 9 > base; sed 's/8/eight/' base > theirs; sed 's/2/two/' base > mine; : > merged");

    EXPECT_EQ(shell(tools + "merge base theirs mine merged 'the file'"), success);

    EXPECT_EQ(file("merged"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
}

TEST_F(SubversionRequest, AMergeThatIsWrittenIsResolved)
{
    collide();

    EXPECT_EQ(shell(update).exit_status, 0);

    EXPECT_THAT(shell("svn status").out, HasSubstr("M       the file\n"));
    EXPECT_THAT(shell("svn status").out, Not(HasSubstr("C ")));
    EXPECT_THAT(requests(), HasSubstr("RequestHandler.CompareMerge<"));
    EXPECT_THAT(requests(),
                HasSubstr(array_of({"base: the file", "mine: the file", "theirs: the file"})));
}

TEST_F(SubversionRequest, ShowsEachFileThatDiffersUnderSubversionsLabels)
{
    prepare(
        "echo 1 > 'the file'; echo 1 > -out; svn add -q 'the file' ./-out; svn commit -qm base\n"
        "echo 2 > 'the file'; echo 2 > -out");

    EXPECT_EQ(shell("svn diff").exit_status, 0);

    EXPECT_THAT(requests(),
                HasSubstr(array_of({"the file\t(revision 1)", "the file\t(working copy)"})));
    EXPECT_THAT(requests(),
                HasSubstr(array_of({"./-out\t(revision 1)", "./-out\t(working copy)"})));
}

TEST_F(SubversionRequest, GoesOnAfterAFileThatCouldNotBeShown)
{
    prepare("echo 1 > bad; echo 1 > good; svn add -q bad good; svn commit -qm base\n"
            "echo 2 > bad; echo 2 > good");

    const Outcome outcome = shell("svn diff");

    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 2U);
}

} // namespace
