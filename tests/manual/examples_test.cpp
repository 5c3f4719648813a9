// The manual pages' examples, run by a shell as they stand there. What the pages assume is made
// first: a product in /opt/quarnfold is an installation in the scratch folder, systemctl is a
// double.
#include "tests/manual/manual_page.h"
#include "tests/service/shell_process.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace
{

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;

constexpr std::string_view installed_in = "/opt/quarnfold";

class Examples : public ShellProcess
{
  protected:
    explicit Examples(const std::string& tree = SCRIPTED_VIEWER_TREE,
                      const std::string& display = ":0")
        : ShellProcess(tree, display)
    {
        prepare("seq 9 > base.txt; sed s/2/two/ base.txt > left.txt\n"
                "sed s/8/eight/ base.txt > right.txt; cp left.txt ./-left.txt\n"
                "cp right.txt ./-right.txt");
    }

    /** An example runs in a product that is installed in the scratch folder. */
    Outcome run(std::string example) const
    {
        for (auto at = example.find(installed_in); at != std::string::npos;
             at = example.find(installed_in, at + 1))
            example.replace(at, installed_in.size(), scratch / "opt");
        return shell(example);
    }

    /** Runs all of a page's examples, none of which may say anything. */
    void run_all(const std::string& page) const
    {
        for (const std::string& text : examples_of(page)) {
            prepare("cp base.txt merged.txt"); // which a saved merge leaves
            EXPECT_EQ(run(text), success) << text;
        }
    }

    /** What packaging/ adds to an installation, and a systemctl that notes its words and fails
       where one of them is the full path of no file. */
    void install() const
    {
        prepare("mkdir ../bin; cmake --install " PACKAGING " --prefix " + scratch.path() + "/opt");
        prepare("printf '%s\\n' '#!/bin/sh' 'echo \"$@\" >> ../systemctl.log' "
                "'for word; do case $word in /*) test -f \"$word\" || exit 1 ;; esac; done' "
                "> ../bin/systemctl; chmod +x ../bin/systemctl");
    }

    /** The one example that contains `part`. */
    static std::string example(const std::string& page, const std::string& part)
    {
        Names found = examples_of(page);
        std::erase_if(
            found, [&](const std::string& text) { return text.find(part) == std::string::npos; });
        EXPECT_THAT(found, SizeIs(1)) << part;
        return found.empty() ? "false" : found.front();
    }
};

TEST_F(Examples, OfTheLauncherSucceed)
{
    install();

    run_all("uquarndiffmrg.1");

    EXPECT_EQ(count(requests(), "RequestHandler.Compare<"), 5U);
    EXPECT_EQ(count(requests(), "RequestHandler.CompareMerge<"), 4U);
    EXPECT_THAT(scratch.user_listing(), Contains("uquarndiffmrg.log"));
    EXPECT_EQ(shell("git config diff.tool").out, "uquarndiffmrg\n");
}

TEST_F(Examples, OfTheServiceServeInTheForeground)
{
    prepare("mkdir -p product/Kelvanport; ln -s " + programs + " product/bin");
    Names examples = examples_of("tolm_service.8");
    ASSERT_THAT(examples, SizeIs(7));
    EXPECT_EQ(shell("cd product; " + examples[0]).exit_status, 0);

    const Outcome outcome = shell("cd product; " + examples[1] +
                                  " & until tolm_service --status | grep requests; do :; done; "
                                  "uquarndiffmrg ../left.txt ../right.txt; tolm_service --stop; "
                                  "wait $!");

    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_EQ(outcome.out, "requests served: 0\n");
}

TEST_F(Examples, OfTheServiceSwitchItsStartAtLoginOnAndOff)
{
    install();
    set("PATH", scratch / "bin:" + "/usr/bin:/bin");
    Names examples = examples_of("tolm_service.8");
    examples.erase(examples.begin(), examples.begin() + 2);
    const std::string entry = scratch / "home/.config/autostart/tolm_service.desktop";

    Names entries;
    for (const std::string& text : examples) {
        SCOPED_TRACE(text);
        EXPECT_EQ(run(text).exit_status, 0);
        entries.push_back(fs::exists(entry) ? "on" : "off");
    }

    EXPECT_EQ(entries, (Names{"off", "off", "on", "on", "off"}));
    EXPECT_THAT(file_contents(scratch / "systemctl.log"), HasSubstr("--user enable --now /"));
    EXPECT_THAT(file_contents(scratch / "systemctl.log"), HasSubstr("--user disable --now t"));
}

#ifdef REAL_VIEWER

/** Without a display, with the real viewer. */
class ExamplesUnattended : public Examples
{
  protected:
    ExamplesUnattended() : Examples(PRODUCT_TREE, "") {}
};

const std::string merged = "1\ntwo\n3\n4\n5\n6\n7\neight\n9\n";

TEST_F(ExamplesUnattended, OfMergesWriteTheirOutput)
{
    EXPECT_EQ(run(example("uquarndiffmrg.1", "env -u DISPLAY")), success);
    EXPECT_EQ(file("merged.txt"), merged);

    EXPECT_EQ(run(example("uquarndiffmrg.1", "if uquarndiffmrg")), success);
    EXPECT_EQ(file("left.txt"), merged);
}

TEST_F(ExamplesUnattended, OfThePromptToolPrintTheirText)
{
    const Names examples = examples_of("quarnprompt.1");
    ASSERT_THAT(examples, SizeIs(2));

    EXPECT_EQ(run(examples[0]),
              (Outcome{.exit_status = 0, .err = "error: Could not set the temporary directory\n"}));
    EXPECT_EQ(run(examples[1]), (Outcome{.exit_status = 1, .err = "warning: Replace the file?\n"}));
}

#endif

} // namespace
