// What the shells offer at the end of a line, asked of the shells themselves in a folder with two
// files, one of which has a blank in its name, and a folder.
#include "tests/harness/program.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::string>;

const Names encodings{"utf-16be", "utf-16le", "utf-32be", "utf-32le", "utf-8"};
const Names files{"folder", "other", "with blanks"};

/** Sorted, and written alike whatever the shell: without quoting, a folder's slash, and what
   follows a tab, which are fish's descriptions. */
Names offered_in(const std::string& output)
{
    Names names;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        line = line.substr(0, line.find('\t'));
        std::erase(line, '\\');
        if (line.ends_with('/'))
            line.pop_back();
        if (!line.empty())
            names.push_back(line);
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Completion : public testing::TestWithParam<std::string>
{
  protected:
    Completion()
    {
        std::filesystem::create_directories(scratch / "checkout/folder");
        std::filesystem::create_directory(scratch / "home");
        scratch.write_file("checkout/with blanks", "");
        scratch.write_file("checkout/other", "");
    }

    /** What is offered after "uquarndiffmrg " and `words`. */
    Names offered(const std::string& words) const
    {
        const std::string line = "uquarndiffmrg " + words;
        Invocation run = invocation(scratch, "/usr/bin/env");
        run.arguments = commands.at(GetParam());
        run.arguments.push_back(line);
        run.directory = scratch / "checkout";
        run.environment["HOME"] = scratch / "home";
        run.environment["XDG_CONFIG_HOME"] = scratch / "home";
        run.environment["XDG_DATA_HOME"] = scratch / "home";
        run.environment["ZDOTDIR"] = scratch / "home";
        const Outcome outcome = Program(run).run();
        EXPECT_EQ(outcome.exit_status, 0) << outcome;
        EXPECT_EQ(outcome.err, "");
        return offered_in(outcome.out);
    }

    Scratch scratch;

  private:
    // Of each shell, to be followed by the line.
    const std::map<std::string, Names> commands{
        {"bash", {"bash", DRIVERS "/complete.bash", COMPLETIONS "/uquarndiffmrg.bash"}},
        {"fish",
         {"fish", "--no-config", "-c",
          "source " COMPLETIONS "/uquarndiffmrg.fish; complete -C \"$argv\""}},
        {"zsh", {"zsh", "-f", DRIVERS "/complete.zsh", COMPLETIONS}},
    };
};

TEST_P(Completion, OffersEveryOption)
{
    EXPECT_THAT(offered("-"), ElementsAre("-base", "-blank_ignore", "-encoding", "-favor_contrib",
                                          "-fname", "-out"));
}

TEST_P(Completion, OffersTheOptionsThatBeginAlike)
{
    EXPECT_THAT(offered("-b"), ElementsAre("-base", "-blank_ignore"));
}

TEST_P(Completion, OffersNoBaseBehindAContributor)
{
    EXPECT_THAT(offered("other -b"), ElementsAre("-blank_ignore"));
    EXPECT_THAT(offered("-base other -b"), ElementsAre("-blank_ignore"));
}

TEST_P(Completion, TakesNoValueForAContributor)
{
    EXPECT_THAT(offered("-encoding utf-8 -out m -fname n -favor_contrib 1 -b"),
                ElementsAre("-base", "-blank_ignore"));
}

TEST_P(Completion, OffersTheEncodings)
{
    EXPECT_EQ(offered("-encoding "), encodings);
    EXPECT_THAT(offered("-encoding utf-16"), ElementsAre("utf-16be", "utf-16le"));
}

TEST_P(Completion, OffersFilesAsContributors)
{
    EXPECT_EQ(offered(""), files);
    EXPECT_THAT(offered("other w"), ElementsAre("with blanks"));
}

TEST_P(Completion, OffersFilesAsOutputAndBase)
{
    EXPECT_THAT(offered("-out w"), ElementsAre("with blanks"));
    EXPECT_THAT(offered("-base w"), ElementsAre("with blanks"));
}

TEST_P(Completion, OffersNothingForAnUnknownOption)
{
    EXPECT_THAT(offered("-unknown"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(In, Completion, testing::Values(SHELLS),
                         [](const auto& tested) { return tested.param; });

} // namespace
