// Mercurial's merge tool and its extdiff with the product's settings.
#include "tests/service/shell_process.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;

class MercurialRequest : public ShellProcess
{
  protected:
    explicit MercurialRequest(const std::string& tree = SCRIPTED_VIEWER_TREE,
                              const std::string& display = ":0")
        : ShellProcess(tree, display)
    {
        set("HGUSER", "nobody");
        prepare("echo '%include " + programs +
                "../share/quarnfold/mercurial/uquarndiffmrg.rc' > \"$HOME/.hgrc\"; hg init");
    }

    /** Two heads that changed "the file", one of them line 2, the other `line` of its nine. */
    void diverge(const std::string& line) const
    {
        prepare("seq 9 > 'the file'; hg add -q; hg commit -m base\n"
                "seq 9 | sed 's/2/two/' > 'the file'; hg commit -m other; hg update -q 0\n"
                "seq 9 | sed 's/" +
                line + "/eight/' > 'the file'; hg commit -qm ours");
    }
};

class Mercurial : public MercurialRequest
{
  protected:
    Mercurial() : MercurialRequest(PRODUCT_TREE, "") {}
};

TEST_F(Mercurial, AMergeThatIsWrittenIsResolved)
{
    diverge("8");

    // Its own merge would leave nothing to do.
    EXPECT_EQ(shell("hg merge -q --config merge-tools.uquarndiffmrg.premerge=false").exit_status,
              0);

    EXPECT_EQ(shell("hg resolve --list").out, "R the file\n");
    EXPECT_EQ(file("the file"), "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n");
}

// With the settings that docs/version_control.md shows.
TEST_F(Mercurial, FilesInUtf16AreMergedWhereTheRepositorySaysSo)
{
    prepare("printf '[merge-tools]\\nuquarndiffmrg.args = -encoding utf-16le -out $output "
            "-base $base $local $other\\nuquarndiffmrg.binary = True\\n"
            "uquarndiffmrg.premerge = False\\n' > .hg/hgrc\n"
            "printf 'a\\0\\n\\0b\\0\\n\\0c\\0\\n\\0' > f; hg add -q; hg commit -m base\n"
            "printf 'A\\0\\n\\0b\\0\\n\\0c\\0\\n\\0' > f; hg commit -m other; hg update -q 0\n"
            "printf 'a\\0\\n\\0b\\0\\n\\0C\\0\\n\\0' > f; hg commit -qm ours");

    EXPECT_EQ(shell("hg merge").exit_status, 0);

    EXPECT_EQ(file("f"), std::string("A\0\n\0b\0\n\0C\0\n\0", 12));
}

TEST_F(Mercurial, AnAbandonedMergeIsStillAConflictAndLosesNothing)
{
    diverge("2");

    EXPECT_EQ(shell("hg merge").exit_status, 1);

    EXPECT_EQ(shell("hg resolve --list").out, "U the file\n");
    EXPECT_THAT(file("the file"), HasSubstr("=======\ntwo\n>>>>>>>"));
    EXPECT_EQ(file("the file.orig"), "1\neight\n3\n4\n5\n6\n7\n8\n9\n");
}

TEST_F(MercurialRequest, NamesBaseLocalAndOther)
{
    diverge("2");

    EXPECT_EQ(shell("hg merge").exit_status, 0);

    EXPECT_THAT(requests(), HasSubstr("<string>" + scratch.path() + "/checkout/the file<"));
    EXPECT_THAT(requests(), HasSubstr("<string>base: "));
    EXPECT_THAT(requests(), HasSubstr("<string>local: "));
    EXPECT_THAT(requests(), HasSubstr("<string>other: "));
}

TEST_F(MercurialRequest, ShowsWhatChanged)
{
    prepare("echo 1 > 'the file'; hg add -q; hg commit -m base; echo 2 > 'the file'");

    EXPECT_EQ(shell("hg qdiff"), (Outcome{.exit_status = 1})); // there are differences

    EXPECT_THAT(requests(), HasSubstr("RequestHandler.Compare<"));
    EXPECT_THAT(requests(), HasSubstr("/the file<"));
}

} // namespace
