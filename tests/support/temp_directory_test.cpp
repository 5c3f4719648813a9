#include "support/temp_directory.h"

#include "platform/sysutl.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class TempDirectory : public testing::Test
{
  protected:
    Scratch scratch;
    std::string name = std::string(sysutl_myloginname()) + ".uquarndiffmrg";
    std::string parent = scratch / "tmp";
    std::string expected = parent + "/" + name;
    EnvironmentVariable tmpdir{"TMPDIR", parent};

    static unsigned mode_of(const std::string& path)
    {
        return static_cast<unsigned>(fs::status(path).permissions());
    }
};

TEST_F(TempDirectory, IsTheLoginNameAndTheProgramsNameBelowTheSystemsOne)
{
    ASSERT_TRUE(set_temp_directory());

    EXPECT_EQ(modified_temp_directory, expected);
    EXPECT_EQ(get_temp_directory(), expected);
    EXPECT_TRUE(fs::is_directory(expected));
}

TEST_F(TempDirectory, IsComputedAnewByEveryCall)
{
    modified_temp_directory = "/earlier";

    set_temp_directory();

    EXPECT_EQ(modified_temp_directory, expected);
}

TEST_F(TempDirectory, HasNoTrailingSlashWhenTheSystemsOneHas)
{
    const EnvironmentVariable with_slash("TMPDIR", parent + "/");

    ASSERT_TRUE(set_temp_directory());

    EXPECT_EQ(get_temp_directory(), expected);
}

TEST_F(TempDirectory, IsMadeForAllWithAnEmptyUmask)
{
    const Umask all(0);

    ASSERT_TRUE(set_temp_directory());

    EXPECT_EQ(mode_of(expected), 0777U);
}

TEST_F(TempDirectory, FollowsTheUmask)
{
    const Umask group(027);

    ASSERT_TRUE(set_temp_directory());

    EXPECT_EQ(mode_of(expected), 0750U);
}

TEST_F(TempDirectory, ThatExistsIsSuccessAndStaysAsItIs)
{
    fs::create_directory(expected);
    fs::permissions(expected, fs::perms::owner_all);
    write_file(expected + "/kept", "text");

    EXPECT_TRUE(set_temp_directory());

    EXPECT_EQ(mode_of(expected), 0700U);
    EXPECT_EQ(file_contents(expected + "/kept"), "text");
}

TEST_F(TempDirectory, ARegularFileInItsPlaceIsSuccess)
{
    write_file(expected, "a file");

    EXPECT_TRUE(set_temp_directory());

    EXPECT_EQ(get_temp_directory(), expected);
    EXPECT_EQ(file_contents(expected), "a file");
}

TEST_F(TempDirectory, ADanglingLinkInItsPlaceIsSuccess)
{
    fs::create_symlink("nowhere", expected);

    EXPECT_TRUE(set_temp_directory());
}

TEST_F(TempDirectory, AMissingParentIsAFailureThatKeepsThePath)
{
    const EnvironmentVariable missing("TMPDIR", scratch / "missing");

    EXPECT_FALSE(set_temp_directory());

    EXPECT_EQ(get_temp_directory(), scratch / "missing/" + name);
    EXPECT_FALSE(fs::exists(scratch / "missing"));
}

TEST_F(TempDirectory, ACreationThatFailsIsNoSuccessAfterAnEarlierEexist)
{
    const EnvironmentVariable missing("TMPDIR", scratch / "missing");
    errno = EEXIST;

    EXPECT_FALSE(set_temp_directory());
}

TEST_F(TempDirectory, WithoutASystemsOneFailsWithAnEmptyPath)
{
    const EnvironmentVariable too_long("TMPDIR", "/" + std::string(4096, 'x'));
    const WorkingDirectory here(parent);
    modified_temp_directory = "/earlier";

    EXPECT_FALSE(set_temp_directory());

    EXPECT_EQ(get_temp_directory(), "");
    EXPECT_TRUE(fs::is_empty(parent));
}

TEST_F(TempDirectory, TakesASystemsOneOf4095BytesAndFailsOnlyInCreatingIt)
{
    const std::string longest = "/" + std::string(4094, 'x');
    const EnvironmentVariable tmp("TMPDIR", longest);

    EXPECT_FALSE(set_temp_directory());

    EXPECT_EQ(get_temp_directory(), longest + "/" + name);
}

} // namespace
