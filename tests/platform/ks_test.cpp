#include "platform/ks.h"

#include "tests/harness/process_state.h"
#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

/** A copy of the probe at a place of the test's choice. */
class ProductDirectory : public testing::Test
{
  protected:
    Scratch scratch;

    std::string placed(const std::string& folder) const
    {
        std::string program = scratch / folder + "/platform_probe";
        fs::create_directories(scratch / folder);
        fs::copy_file(PROBE, program);
        return program;
    }

    std::string shown_by(const std::string& program) const
    {
        Invocation run = invocation(scratch, program, {"product_dir"});
        run.directory = "."; // the test's: no path can name the deepest
        const Outcome outcome = Program(run).run();
        EXPECT_EQ(outcome.exit_status, 0);
        return outcome.out;
    }
};

TEST_F(ProductDirectory, IsTheParentOfTheProgramsBinFolder)
{
    EXPECT_EQ(shown_by(placed("bin")), scratch.path());
}

TEST_F(ProductDirectory, MayHaveBlanks)
{
    EXPECT_EQ(shown_by(placed("a product/bin")), scratch / "a product");
}

TEST_F(ProductDirectory, IsThatOfTheFileThatALinkLeadsTo)
{
    const std::string program = placed("product/bin");
    fs::create_directories(scratch / "links/bin");
    fs::create_symlink(program, scratch / "links/bin/platform_probe");

    EXPECT_EQ(shown_by(scratch / "links/bin/platform_probe"), scratch / "product");
}

TEST_F(ProductDirectory, IsTheInstallPrefixForAProgramOutsideABinFolder)
{
    EXPECT_EQ(shown_by(placed("other")), INSTALL_PREFIX);
}

TEST_F(ProductDirectory, IsTheInstallPrefixForAFolderWhoseNameOnlyEndsInBin)
{
    EXPECT_EQ(shown_by(placed("sbin")), INSTALL_PREFIX);
}

TEST_F(ProductDirectory, IsTheInstallPrefixBelowAFolderOfABinFolder)
{
    EXPECT_EQ(shown_by(placed("bin/sub")), INSTALL_PREFIX);
}

TEST_F(ProductDirectory, IsEmptyWhereTheProgramsPathIsLongerThanPathsAre)
{
    const WorkingDirectory here(scratch.path());
    const DeepWorkingDirectory deep;
    fs::create_directory("bin");
    fs::copy_file(PROBE, "bin/platform_probe");

    EXPECT_EQ(shown_by("bin/platform_probe"), "");

    fs::remove_all("bin");
}

constexpr int all_three = 1 | 2 | 4;

class SystemInit : public testing::Test
{
  protected:
    Scratch scratch;

    int status_of(const std::string& verb, const std::set<int>& closed) const
    {
        Invocation run = invocation(scratch, PROBE, {verb});
        run.closed_descriptors = closed;
        return Program(run).run().exit_status;
    }
};

TEST_F(SystemInit, OpensEveryStandardStreamThatItsStarterClosed)
{
    for (const auto& closed :
         std::vector<std::set<int>>{{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}})
        EXPECT_EQ(status_of("streams", closed), all_three);
}

TEST_F(SystemInit, OpensThemOnTheNullDevice)
{
    EXPECT_EQ(status_of("null_streams", {0, 1, 2}), all_three);
}

TEST_F(SystemInit, LeavesTheOpenOnesAsTheyAre)
{
    EXPECT_EQ(status_of("null_streams", {0}), 1);
}

} // namespace
