#include "tests/harness/child_process.h"
#include "tests/harness/process_state.h"
#include "tests/harness/scratch.h"
#include "viewer/core/output_file.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using Names = std::vector<std::string>;

constexpr mode_t mask = 027;

struct stat entry_of(const std::string& path)
{
    struct stat entry {};
    EXPECT_EQ(::lstat(path.c_str(), &entry), 0) << path;
    return entry;
}

mode_t mode_of(const std::string& path)
{
    return entry_of(path).st_mode & 07777U;
}

/** From here on permissions count for root too. */
void drop_root_rights()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[2]{};
    ::syscall(SYS_capset, &header, none);
}

/** Writes as a user without special rights; whether that failed. */
bool is_refused(const std::string& path)
{
    return run_in_child([&] {
               drop_root_rights();
               return write_output(path, "new", mask) ? 1 : 0;
           }) == 1;
}

TEST(WriteOutput, ANewFileHoldsTheBytes)
{
    const Scratch scratch;

    EXPECT_EQ(write_output(scratch / "out", std::string_view("a\0b", 3), mask), std::nullopt);

    EXPECT_EQ(file_contents(scratch / "out"), std::string_view("a\0b", 3));
    EXPECT_EQ(scratch.listing(), (Names{"out", "tmp"}));
}

TEST(WriteOutput, ANewFileHasTheGivenUmasksMode)
{
    const Scratch scratch;
    const Umask of_the_process(077);

    EXPECT_EQ(write_output(scratch / "out", "a", mask), std::nullopt);

    EXPECT_EQ(mode_of(scratch / "out"), 0640U);
}

TEST(WriteOutput, AnOldFileIsReplaced)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("out", "something longer");

    EXPECT_EQ(write_output(path, "new", mask), std::nullopt);

    EXPECT_EQ(file_contents(path), "new");
}

TEST(WriteOutput, AnOldFileKeepsItsMode)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("out", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0751), 0);

    EXPECT_EQ(write_output(path, "new", mask), std::nullopt);

    EXPECT_EQ(mode_of(path), 0751U);
}

TEST(WriteOutput, AnOldFileKeepsItsOwner)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("out", "old");
    ASSERT_TRUE(::chown(path.c_str(), 12345, 54321) == 0 || ::geteuid() != 0);
    const struct stat before = entry_of(path);

    EXPECT_EQ(write_output(path, "new", mask), std::nullopt);

    EXPECT_EQ(entry_of(path).st_uid, before.st_uid);
    EXPECT_EQ(entry_of(path).st_gid, before.st_gid);
}

TEST(WriteOutput, ASymbolicLinkStaysAndItsFileIsWritten)
{
    const Scratch scratch;
    std::filesystem::create_directory(scratch / "folder");
    const std::string file = scratch.write_file("folder/file", "old");
    std::filesystem::create_symlink("folder/file", scratch / "link");
    std::filesystem::create_symlink(scratch / "link", scratch / "link_to_link");

    EXPECT_EQ(write_output(scratch / "link_to_link", "new", mask), std::nullopt);

    EXPECT_TRUE(std::filesystem::is_symlink(scratch / "link_to_link"));
    EXPECT_TRUE(std::filesystem::is_symlink(scratch / "link"));
    EXPECT_EQ(file_contents(file), "new");
}

TEST(WriteOutput, ALinkToAMissingFileMakesIt)
{
    const Scratch scratch;
    std::filesystem::create_symlink("file", scratch / "link");

    EXPECT_EQ(write_output(scratch / "link", "new", mask), std::nullopt);

    EXPECT_EQ(file_contents(scratch / "file"), "new");
}

TEST(WriteOutput, ACircleOfLinksIsRefused)
{
    const Scratch scratch;
    std::filesystem::create_symlink("b", scratch / "a");
    std::filesystem::create_symlink("a", scratch / "b");

    EXPECT_EQ(write_output(scratch / "a", "new", mask),
              scratch / "a" + ": Too many levels of symbolic links");
}

TEST(WriteOutput, ANameInTheWorkingDirectoryNeedsNoFolder)
{
    const Scratch scratch;
    const WorkingDirectory here(scratch.path());

    EXPECT_EQ(write_output("out", "new", mask), std::nullopt);

    EXPECT_EQ(file_contents(scratch / "out"), "new");
}

TEST(WriteOutput, AMissingFolderIsToldWithTheReason)
{
    const Scratch scratch;

    EXPECT_EQ(write_output(scratch / "no/out", "new", mask),
              "cannot make a file in " + scratch / "no/" + ": No such file or directory");
}

TEST(WriteOutput, ADirectoryIsRefused)
{
    const Scratch scratch;

    EXPECT_EQ(write_output(scratch / "tmp", "new", mask), scratch / "tmp" + ": Is a directory");
}

TEST(WriteOutput, ADeviceIsRefused)
{
    EXPECT_EQ(write_output("/dev/null", "new", mask), "/dev/null: not a regular file");
}

TEST(WriteOutput, AReadOnlyFileStaysAsItIs)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("out", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);

    EXPECT_TRUE(is_refused(path));

    EXPECT_EQ(file_contents(path), "old");
    EXPECT_EQ(scratch.listing(), (Names{"out", "tmp"}));
}

TEST(WriteOutput, AFileInAReadOnlyFolderStaysAsItIs)
{
    const Scratch scratch;
    std::filesystem::create_directory(scratch / "folder");
    const std::string path = scratch.write_file("folder/out", "old");
    ASSERT_EQ(::chmod((scratch / "folder").c_str(), 0555), 0);

    EXPECT_TRUE(is_refused(path));

    EXPECT_EQ(file_contents(path), "old");
}

TEST(WriteOutput, AFullDiskLeavesTheOldFileAndNothingElse)
{
    const Scratch scratch;
    const std::string path = scratch.write_file("out", "old");

    const int status = run_in_child([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit one_block{4096, 4096};
        ::setrlimit(RLIMIT_FSIZE, &one_block);
        return write_output(path, std::string(10'000, 'x'), mask) ? 1 : 0;
    });

    EXPECT_EQ(status, 1);
    EXPECT_EQ(file_contents(path), "old");
    EXPECT_EQ(scratch.listing(), (Names{"out", "tmp"}));
}

} // namespace
