// git's mergetool with the product's settings: real git, launcher, service and viewer, without a
// display. git merges what does not collide itself, unless a file is binary to it, as one in UTF-16
// is, or has the attribute "-merge".
#include "tests/service/shell_process.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::Not;

const std::string merged = "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n";

/** Shell functions to begin with. */
const std::string functions = R"(
wide() { printf '\377\376'; iconv -f utf-8 -t utf-16le; }
collide() { # FILE: a real conflict in it
    seq 9 > "$1"; git add -A; git commit -qm base
    git checkout -qb other; seq 9 | sed 's/2/two/' > "$1"; git commit -qam other
    git checkout -q -; seq 9 | sed 's/2/zwei/' > "$1"; git commit -qam ours
    ! git merge -q other
}
separate() { # FILE FILTER: changes that do not collide, through FILTER, and no merge by git
    seq 9 | $2 > "$1"; git add -A; git commit -qm base
    git checkout -qb other; seq 9 | sed 's/8/eight/' | $2 > "$1"; git commit -qam other
    git checkout -q -; seq 9 | sed 's/2/two/' | $2 > "$1"; git commit -qam ours
    ! git merge -q other
}
)";

class GitMergetool : public ShellProcess
{
  protected:
    explicit GitMergetool(const std::string& tree = PRODUCT_TREE, const std::string& display = "")
        : ShellProcess(tree, display)
    {
        prepare("git config --global include.path " + programs +
                "../share/quarnfold/git/config\n"
                "git config --global mergetool.keepBackup false\n"
                "git config --global user.name Nobody\n"
                "git config --global user.email nobody@example.org\n"
                "git init -q\n");
    }

    void make(const std::string& commands) const { prepare(functions + commands); }

    std::string output_of(const std::string& commands) const { return shell(commands).out; }
};

TEST_F(GitMergetool, AMergeThatIsWrittenIsStagedWithItsBytes)
{
    make("echo '* -merge' > .gitattributes; separate f cat");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_EQ(output_of("git status --porcelain"), "M  f\n");
    EXPECT_EQ(output_of("git show :f"), merged);
    EXPECT_EQ(file("f"), merged);
}

TEST_F(GitMergetool, AFileInUtf16ThatIsBinaryToGitIsMerged)
{
    make("separate f wide");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_EQ(output_of("git status --porcelain"), "M  f\n");
    EXPECT_EQ(output_of("iconv -f utf-16 f"), merged);
    EXPECT_EQ(output_of("git show :f"), file("f"));
}

TEST_F(GitMergetool, AWorkingTreeEncodingIsThatOfTheFileAndNotOfWhatIsStaged)
{
    make("echo '* working-tree-encoding=UTF-16LE-BOM -merge' > .git/info/attributes\n"
         "separate f wide");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_EQ(output_of("git show :f"), merged);
    EXPECT_EQ(output_of("iconv -f utf-16 f"), merged);
}

TEST_F(GitMergetool, ANameMayHaveBlanks)
{
    make(
        "echo '* -merge' > .git/info/attributes; mkdir 'a folder'; separate 'a folder/a file' cat");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_EQ(output_of("git status --porcelain"), "M  \"a folder/a file\"\n");
    EXPECT_EQ(file("a folder/a file"), merged);
}

// git takes the name for an option of its own, and gives empty files.
TEST_F(GitMergetool, AFileThatGitCannotTakeOutOfItsIndexIsNotMerged)
{
    make("echo '* -merge' > .git/info/attributes; separate ./-out cat");
    const std::string before = file("-out");

    const Outcome outcome = shell("git mergetool");

    EXPECT_THAT(outcome.err, HasSubstr("uquarndiffmrg: -out: git gave nothing to merge\n"));
    EXPECT_EQ(output_of("git status --porcelain"), "UU -out\n");
    EXPECT_EQ(file("-out"), before);
}

TEST_F(GitMergetool, AnAbandonedMergeIsStillAConflictAndLosesNothing)
{
    make("collide f");
    const std::string with_marks = file("f");
    const std::string stages = output_of("git ls-files -u");

    const Outcome outcome = shell("git mergetool");

    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("merge of f failed\n"));
    EXPECT_EQ(file("f"), with_marks);
    EXPECT_EQ(count(stages, "\n"), 3U);
    EXPECT_EQ(output_of("git ls-files -u"), stages);
    EXPECT_EQ(output_of("git status --porcelain"), "UU f\n");
}

TEST_F(GitMergetool, AnAbandonedMergeLeavesTheNextOneInItsTurn)
{
    make("echo 'b -merge' > .git/info/attributes; seq 9 > b; collide a; git merge --abort\n"
         "seq 9 | sed 's/8/eight/' > b; git commit -qam b; git checkout -q other\n"
         "seq 9 | sed 's/2/two/' > b; git commit -qam b; ! git merge -q -");

    set("LC_ALL", "C");
    const Outcome outcome = shell("yes | git mergetool");

    EXPECT_THAT(outcome.err, HasSubstr("merge of a failed\n"));
    EXPECT_EQ(output_of("git status --porcelain"), "UU a\nM  b\n");
    EXPECT_EQ(file("b"), merged);
}

TEST_F(GitMergetool, AFileThatOneSideDeletedIsGitsOwnQuestion)
{
    make("echo 1 > f; git add -A; git commit -qm base\n"
         "git checkout -qb other; git rm -q f; git commit -qm other\n"
         "git checkout -q -; echo 2 > f; git commit -qam ours; ! git merge -q other");

    EXPECT_EQ(shell("echo m | git mergetool").exit_status, 0);

    EXPECT_EQ(file("f"), "2\n");
}

/** With windows that are saved at once, the file as it is. */
class GitMergetoolRequest : public GitMergetool
{
  protected:
    GitMergetoolRequest() : GitMergetool(SCRIPTED_VIEWER_TREE, ":0") {}
};

TEST_F(GitMergetoolRequest, NamesEachContributorForWhatItIs)
{
    make("collide f");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_THAT(requests(), HasSubstr("RequestHandler.CompareMerge<"));
    EXPECT_THAT(requests(), HasSubstr("<string>" + scratch.path() + "/checkout/f<"));
    EXPECT_THAT(requests(), HasSubstr(array_of({"base: f", "local: f", "remote: f"})));
}

TEST_F(GitMergetoolRequest, HasNoBaseWhereBothSidesAddedTheFile)
{
    make("echo 1 > g; git add -A; git commit -qm base\n"
         "git checkout -qb other; echo theirs > f; git add f; git commit -qm other\n"
         "git checkout -q -; echo ours > f; git add f; git commit -qm ours; ! git merge -q other");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_THAT(requests(), HasSubstr(array_of({"local: f", "remote: f"})));
    EXPECT_THAT(requests(), Not(HasSubstr("_BASE_")));
}

TEST_F(GitMergetoolRequest, IsReadUnderNoRoot)
{
    set("QUARNFOLD_ROOT", "/elsewhere");
    make("collide f");

    EXPECT_EQ(shell("git mergetool").exit_status, 0);

    EXPECT_THAT(requests(), Not(HasSubstr("/elsewhere")));
}

} // namespace
