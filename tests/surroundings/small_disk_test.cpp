// Temporary directories on disks of their own, tiny or read-only: mounted in a namespace that ends
// with the test. The real launcher, service and viewer, without a display.
#include "tests/service/service_process.h"

#include <filesystem>

namespace
{

class SmallDisk : public ServiceProcess
{
  protected:
    SmallDisk() : ServiceProcess(PRODUCT_TREE)
    {
        std::filesystem::create_directory(scratch / "disk");
    }

    /** What a shell says that runs `commands` with TMPDIR on a disk of 64 KiB and 40 names, and the
        function "merge", which tells the launcher's status. */
    Outcome on_disk(const std::string& commands) const
    {
        Invocation run = invocation(scratch, "/usr/bin/unshare",
                                    {UNSHARE_OPTIONS, "sh", "-e", "-c",
                                     "mount -t tmpfs -o size=64k,nr_inodes=40 none disk\n"
                                     "merge() { s=0; uquarndiffmrg -out merged a a || s=$?; "
                                     "echo $s; }\n" +
                                         commands});
        run.environment["PATH"] = programs + ":" + run.environment["PATH"];
        run.environment["TMPDIR"] = scratch / "disk";
        return Program(run).run();
    }
};

// Until it serves: a launcher that comes before starts another one.
const std::string serve = "mkdir -m 700 \"$TMPDIR/$(id -un).uquarndiffmrg\"\n"
                          "tolm_service /nowhere\n"
                          "until tolm_service --status | grep -q requests; do :; done\n";
const std::string fill = "head -c 100k /dev/zero > disk/fill 2>/dev/null || :\n";
const std::string fill_names =
    "for name in $(seq 50); do touch disk/$name 2>/dev/null || break; done\n";

TEST_F(SmallDisk, FullBeforeTheServiceStartsServesAllTheSame)
{
    EXPECT_EQ(on_disk(fill + serve + "merge; tolm_service --stop"),
              (Outcome{.exit_status = 0, .out = "0\n"}));
}

TEST_F(SmallDisk, WithoutNamesLeftFailsAtOnceAndServesWhenThereAreSome)
{
    EXPECT_EQ(on_disk(serve + fill_names + "merge; rm disk/1 disk/2; merge"),
              (Outcome{.exit_status = 0, .out = "255\n0\n"}));
}

TEST_F(SmallDisk, WithoutNamesAndWithoutItsDirectoryIsToldByThePrompt)
{
    EXPECT_EQ(on_disk(fill_names + "merge"),
              (Outcome{.exit_status = 0,
                       .out = "255\n",
                       .err = "error: Could not set the temporary directory\n"}));
}

TEST_F(SmallDisk, ReadOnlyIsToldByThePrompt)
{
    EXPECT_EQ(on_disk("mount -o remount,ro disk; merge"),
              (Outcome{.exit_status = 0,
                       .out = "255\n",
                       .err = "error: Could not set the temporary directory\n"}));
}

TEST_F(SmallDisk, ReadOnlyIsToldByAServiceInTheForeground)
{
    const Outcome outcome =
        on_disk("mkdir \"$TMPDIR/$(id -un).uquarndiffmrg\"\n"
                "mount -o remount,ro disk; tolm_service --foreground || echo $?");

    EXPECT_EQ(outcome.out, "1\n");
    EXPECT_TRUE(outcome.err.ends_with(".uquarndiffmrg: Read-only file system\n")) << outcome;
}

// As a container sees a folder of its host.
TEST_F(SmallDisk, ReadOnlyForTheLauncherAloneFailsAtOnce)
{
    EXPECT_EQ(on_disk(serve + "mkdir view; mount --bind disk view\n"
                              "mount -o remount,bind,ro view; TMPDIR=$PWD/view; merge"),
              (Outcome{.exit_status = 0, .out = "255\n"}));
}

} // namespace
