// git's difftool with the product's settings: real git, launcher and service; the viewer only
// records what it is asked.
#include "tests/service/shell_process.h"

#include <gmock/gmock.h>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

class GitDifftool : public ShellProcess
{
  protected:
    GitDifftool()
    {
        prepare("git config --global include.path " + programs +
                "../share/quarnfold/git/config\n"
                "git config --global user.name Nobody\n"
                "git config --global user.email nobody@example.org\n"
                "git init -q\n");
    }

    /** Commits what `commands` make. */
    void commit(const std::string& commands) const
    {
        prepare(commands + "\ngit add -A\ngit commit -qm 'made'");
    }
};

TEST_F(GitDifftool, ShowsEveryFileThatDiffersUnderItsOwnName)
{
    commit("echo 1 > one; echo 1 > 'with blanks'; echo 1 > same");
    prepare("echo 2 > one; echo 2 > 'with blanks'");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 2U);
    EXPECT_THAT(requests(), HasSubstr(array_of({"a/one", "b/one"})));
    EXPECT_THAT(requests(), HasSubstr(array_of({"a/with blanks", "b/with blanks"})));
    EXPECT_THAT(requests(), HasSubstr("/with blanks</string>"));
}

TEST_F(GitDifftool, TakesNoNameForAnOption)
{
    commit("echo 1 > ./-out");
    prepare("echo 2 > ./-out");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_THAT(requests(), HasSubstr(array_of({"a/-out", "b/-out"})));
}

TEST_F(GitDifftool, ShowsAnAddedFileBesideTheNullDevice)
{
    commit("echo 1 > old");
    prepare("echo 1 > new; git add new");

    EXPECT_EQ(shell("git difftool --cached"), success);

    EXPECT_THAT(requests(), MatchesRegex(".*<string>/dev/null<.*<string>/.*new<.*\n"));
}

TEST_F(GitDifftool, ShowsADeletedFileBesideTheNullDevice)
{
    commit("echo 1 > old");
    prepare("rm old");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_THAT(requests(), MatchesRegex(".*<string>/.*old<.*<string>/dev/null<.*\n"));
}

TEST_F(GitDifftool, ShowsAFileThatBecameEmpty)
{
    commit("echo 1 > full");
    prepare(": > full");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 1U);
}

TEST_F(GitDifftool, WorksInASubfolder)
{
    commit("mkdir sub; echo 'one working-tree-encoding=UTF-16LE' > sub/.gitattributes; "
           "printf 'a\\0' > sub/one");
    prepare("printf 'b\\0' > sub/one");

    EXPECT_EQ(shell("cd sub; git difftool one"), success);

    EXPECT_THAT(requests(), HasSubstr(array_of({"a/sub/one", "b/sub/one"})));
    EXPECT_THAT(requests(), HasSubstr("utf16le_file_delta"));
}

TEST_F(GitDifftool, ReadsItsPathsUnderNoRoot)
{
    set("QUARNFOLD_ROOT", "/elsewhere");
    commit("echo 1 > one");
    prepare("echo 2 > one");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_THAT(requests(), Not(HasSubstr("/elsewhere")));
}

TEST_F(GitDifftool, ShowsTheFoldersOfADirectoryDiff)
{
    commit("mkdir sub; echo 1 > one; echo 1 > sub/two");
    prepare("echo 2 > one; echo 2 > sub/two");

    EXPECT_EQ(shell("git difftool --dir-diff"), success);

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 1U);
    EXPECT_THAT(requests(), HasSubstr(array_of({"a/", "b/"})));
    EXPECT_THAT(requests(), MatchesRegex(".*<string>/[^<]*/left/?<.*<string>/[^<]*/right/?<.*\n"));
}

// A file named "bad" is one that the viewer cannot show.
TEST_F(GitDifftool, GoesOnAfterAFileThatCouldNotBeShown)
{
    commit("echo 1 > bad; echo 1 > good");
    prepare("echo 2 > bad; echo 2 > good");

    const Outcome outcome = shell("git difftool");

    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_EQ(outcome.err, "uquarndiffmrg: bad: not shown; see tolm_service.log\n");
    EXPECT_THAT(requests(), HasSubstr(array_of({"a/good", "b/good"})));
}

TEST_F(GitDifftool, EndsAtTheFirstFileThatCouldNotBeShownOnDemand)
{
    commit("echo 1 > bad; echo 1 > good");
    prepare("echo 2 > bad; echo 2 > good");

    EXPECT_THAT(shell("git difftool --trust-exit-code").err,
                HasSubstr("fatal: external diff died, stopping at bad\n"));

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 1U);
}

TEST_F(GitDifftool, WouldEndAtTheLaunchersOwnStatus)
{
    commit("echo 1 > bad; echo 1 > good");
    prepare("echo 2 > bad; echo 2 > good");

    // As docs/version_control.md tells: git takes 255 for a tool that cannot be run.
    EXPECT_EQ(shell("git difftool --extcmd=uquarndiffmrg").err,
              "fatal: external diff died, stopping at bad\n");

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 1U);
}

struct Encoded {
    const char* name;
    const char* attribute; // of the file, or "" for none
    const char* before;    // as printf takes it
    const char* after;
    const char* type_manager;
};

void PrintTo(const Encoded& encoded, std::ostream* stream)
{
    *stream << encoded.name;
}

class GitEncoding : public GitDifftool, public testing::WithParamInterface<Encoded>
{};

TEST_P(GitEncoding, IsTheFilesOwn)
{
    const Encoded& encoded = GetParam();
    if (*encoded.attribute != '\0')
        prepare("echo 'f working-tree-encoding=" + std::string(encoded.attribute) +
                "' > .gitattributes");
    commit("printf '" + std::string(encoded.before) + "' > f");
    prepare("printf '" + std::string(encoded.after) + "' > f");

    EXPECT_EQ(shell("git difftool"), success);

    EXPECT_THAT(requests(), HasSubstr("<string>" + std::string(encoded.type_manager) + "<"));
}

INSTANTIATE_TEST_SUITE_P(
    OfAFile, GitEncoding,
    testing::Values(
        Encoded{"Plain", "", "a", "b", "utf8_file_delta"},
        Encoded{"Utf8", "UTF-8", "a", "b", "utf8_file_delta"},
        Encoded{"Utf16le", "UTF-16LE", "a\\0", "b\\0", "utf16le_file_delta"},
        Encoded{"LowerCase", "utf-16le", "a\\0", "b\\0", "utf16le_file_delta"},
        Encoded{"Utf16leBom", "UTF-16LE-BOM", "\\377\\376a\\0", "\\377\\376b\\0",
                "utf16le_file_delta"},
        Encoded{"Utf16be", "UTF-16BE", "\\0a", "\\0b", "utf16be_file_delta"},
        Encoded{"Utf16LittleEndian", "UTF-16", "\\377\\376a\\0", "\\377\\376b\\0",
                "utf16le_file_delta"},
        Encoded{"Utf32le", "UTF-32LE", "a\\0\\0\\0", "b\\0\\0\\0", "utf32le_file_delta"},
        Encoded{"Utf32be", "UTF-32BE", "\\0\\0\\0a", "\\0\\0\\0b", "utf32be_file_delta"},
        Encoded{"Utf32LittleEndian", "UTF-32", "\\377\\376\\0\\0a\\0\\0\\0",
                "\\377\\376\\0\\0b\\0\\0\\0", "utf32le_file_delta"},
        Encoded{"MarkOfUtf16le", "", "\\377\\376a\\0", "\\377\\376b\\0", "utf16le_file_delta"},
        Encoded{"MarkOfUtf16be", "", "\\376\\377\\0a", "\\376\\377\\0b", "utf16be_file_delta"},
        Encoded{"MarkOfUtf32le", "", "\\377\\376\\0\\0", "\\377\\376\\0\\0a\\0\\0\\0",
                "utf32le_file_delta"},
        Encoded{"MarkOfUtf32be", "", "\\0\\0\\376\\377", "\\0\\0\\376\\377\\0\\0\\0a",
                "utf32be_file_delta"},
        Encoded{"MarkBehindAnEmptySide", "", "", "\\377\\376a\\0", "utf16le_file_delta"}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(GitDifftool, TellsAnEncodingThatIsNotRead)
{
    commit("echo 'f working-tree-encoding=ISO-8859-1' > .gitattributes; printf a > f");
    prepare("printf b > f");

    EXPECT_EQ(shell("git difftool").err,
              "uquarndiffmrg: f: cannot read the working-tree-encoding ISO-8859-1\n");

    EXPECT_EQ(requests(), "");
}

} // namespace
