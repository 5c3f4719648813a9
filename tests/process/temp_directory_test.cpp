// The per-user temporary directory as a run makes it; where that fails, prompt_test.cpp.
#include "tests/process/launcher_process.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class TempDirectory : public LauncherProcess
{
  protected:
    /** The service keeps out of the directory. */
    Invocation cold_launcher() const
    {
        Invocation cold = launcher();
        service.add_to(cold.environment);
        return cold;
    }

    mode_t mode() const
    {
        struct stat status {};
        EXPECT_EQ(::stat(scratch.user_directory().c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    ScriptedService service{scratch, "no-pid no-fifo wait"};
};

TEST_F(TempDirectory, IsMadeForEverybodyLessTheMask)
{
    for (const mode_t mask : {0000U, 0022U, 0077U}) {
        Invocation masked = cold_launcher();
        masked.file_mode_mask = mask;
        std::filesystem::remove(scratch.user_directory());

        EXPECT_EQ(run(masked), too_few_contributors);

        EXPECT_EQ(mode(), 0777U & ~mask);
    }
}

TEST_F(TempDirectory, ThatExistsIsLeftAsItIs)
{
    scratch.make_user_directory();
    std::filesystem::permissions(scratch.user_directory(), std::filesystem::perms::owner_all);

    EXPECT_EQ(run(cold_launcher()), too_few_contributors);

    EXPECT_EQ(mode(), 0700U);
    EXPECT_EQ(scratch.listing("tmp").size(), 1U);
}

TEST_F(TempDirectory, MayBeARegularFileAsFarAsItsCheckGoes)
{
    const std::string name = std::filesystem::path(scratch.user_directory()).filename().string();
    scratch.write_file("tmp/" + name, "a file");

    EXPECT_EQ(run(cold_launcher()), too_few_contributors);

    EXPECT_EQ(file_contents(scratch.user_directory()), "a file");
    EXPECT_EQ(scratch.listing("tmp"), (Names{name}));
}

TEST_F(TempDirectory, IsNamedAfterTheUserIdWhereTheUserHasNoEntry)
{
    Invocation nameless = cold_launcher();
    shim(nameless, {{"SHIM_FAIL", "getpwuid:*:2"}});

    EXPECT_EQ(run(nameless), too_few_contributors);

    EXPECT_EQ(scratch.listing("tmp"), (Names{std::to_string(::getuid()) + ".uquarndiffmrg"}));
}

TEST_F(LauncherProcess, DoesNotDoubleTheSlashesThatEndTmpdir)
{
    ScriptedService answering(scratch, script::answer_yes);
    answering.start();
    Invocation slashed = compare();
    slashed.environment["TMPDIR"] += "//";

    EXPECT_EQ(run(slashed), success);

    EXPECT_EQ(answering.wait().exit_status, 0);
    EXPECT_EQ(answering.record("announcement"), scratch.user_directory() + "/" + request_fifo() +
                                                    "\n" + scratch.user_directory() + "/" +
                                                    response_fifo() + "\n");
}

} // namespace
