// What the service does with its directory, lock and FIFO, and what it keeps of its starter.
#include "protocol/wire_names.h"
#include "tests/service/fake_launcher.h"
#include "tests/service/service_process.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr fs::perms owner_only = fs::perms::owner_all;
constexpr fs::perms owner_read_write = fs::perms::owner_read | fs::perms::owner_write;

class OwnDirectory : public ServiceProcess
{
  protected:
    fs::path in_directory(const std::string& name) const
    {
        return fs::path(scratch.user_directory()) / name;
    }

    static fs::perms mode(const fs::path& path) { return fs::symlink_status(path).permissions(); }

    fs::path of_service(const std::string& name) const
    {
        return fs::path("/proc") / std::to_string(running_service.pid()) / name;
    }

    Outcome run_service() const { return Program(service()).run(); }
};

TEST_F(OwnDirectory, IsClosedToEverybodyElse)
{
    scratch.make_user_directory();
    fs::permissions(scratch.user_directory(), fs::perms::all);

    start_service();
    pass_through_service();

    EXPECT_EQ(mode(scratch.user_directory()), owner_only);
    EXPECT_EQ(mode(in_directory(rendezvous_pipe)), owner_read_write);
    EXPECT_EQ(mode(in_directory(service_pid_file)), owner_read_write);
    EXPECT_EQ(mode(in_directory("tolm_service.log")), owner_read_write);
}

TEST_F(OwnDirectory, ARendezvousThatIsOpenToOthersIsClosedToThem)
{
    scratch.make_user_directory();
    ::mkfifo(in_directory(rendezvous_pipe).c_str(), 0600);
    fs::permissions(in_directory(rendezvous_pipe), fs::perms::all);

    start_service();
    pass_through_service();

    EXPECT_EQ(mode(in_directory(rendezvous_pipe)), owner_read_write);
}

TEST_F(OwnDirectory, ALinkInItsPlaceIsRefused)
{
    fs::create_directory(scratch / "elsewhere");
    fs::create_directory_symlink(scratch / "elsewhere", scratch.user_directory());

    const Outcome outcome = run_service();

    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_EQ(outcome.err, "tolm_service: " + scratch.user_directory() + ": Not a directory\n");
}

TEST_F(OwnDirectory, ARefusalByAServiceThatALauncherStartedGoesToTheSystemsLog)
{
    fs::create_directory(scratch / "elsewhere");
    fs::create_directory_symlink(scratch / "elsewhere", scratch.user_directory());
    // The shim is for the service only: setsid may be of another machine type.
    Invocation run = service({"--wait", "/usr/bin/env", std::string("LD_PRELOAD=") + SHIM_LIBRARY,
                              programs + "tolm_service", "Kelvanport"});
    run.path = "/usr/bin/setsid";
    shim(run, {});
    run.environment.erase("LD_PRELOAD");

    EXPECT_EQ(Program(run).run(), (Outcome{.exit_status = 1}));

    EXPECT_THAT(shim_record(), HasSubstr("syslog(3, %s, " + scratch.user_directory() + ": "));
}

TEST_F(OwnDirectory, AFileInPlaceOfTheRendezvousIsRefused)
{
    scratch.make_user_directory();
    std::filesystem::copy_file(scratch / "a", in_directory(rendezvous_pipe));

    const Outcome outcome = run_service();

    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_EQ(outcome.err, "tolm_service: launcher_wrapper_pipe is no FIFO of this user: "
                           "Operation not permitted\n");
    EXPECT_EQ(file_contents(in_directory(rendezvous_pipe)), "hello\n");
}

TEST_F(OwnDirectory, AMissingTemporaryDirectoryIsTold)
{
    Invocation homeless = service();
    homeless.environment["TMPDIR"] = scratch / "missing";

    EXPECT_EQ(Program(homeless).run(),
              (Outcome{.exit_status = 1,
                       .err = "tolm_service: cannot make the per-user temporary directory\n"}));
}

TEST_F(OwnDirectory, TheLockedPidFileHoldsTheServicesId)
{
    start_service();
    pass_through_service();

    EXPECT_EQ(file_contents(in_directory(service_pid_file)),
              std::to_string(running_service.pid()) + "\n");
}

TEST_F(OwnDirectory, AStalePidFileIsRewritten)
{
    scratch.make_user_directory();
    fs::copy_file(scratch / "a", in_directory(service_pid_file));

    start_service();
    pass_through_service();

    EXPECT_EQ(file_contents(in_directory(service_pid_file)),
              std::to_string(running_service.pid()) + "\n");
}

TEST_F(OwnDirectory, AReadOnlyPidFileIsPutRightSoThatLaunchersSeeTheService)
{
    scratch.make_user_directory();
    fs::copy_file(scratch / "a", in_directory(service_pid_file));
    fs::permissions(in_directory(service_pid_file), fs::perms::owner_read);

    running_service.start();

    EXPECT_TRUE(until([this] { return lock_holder() == running_service.pid(); }));
    EXPECT_EQ(mode(in_directory(service_pid_file)), owner_read_write);
}

TEST_F(OwnDirectory, ASecondServiceEndsQuietlyAndTouchesNothing)
{
    start_service();
    pass_through_service();

    EXPECT_EQ(run_service(), success);

    EXPECT_EQ(lock_holder(), running_service.pid());
    EXPECT_EQ(file_contents(in_directory(service_pid_file)),
              std::to_string(running_service.pid()) + "\n");
    pass_through_service();
}

TEST_F(OwnDirectory, FifoAndPidFileStayWhenTheServiceEnds)
{
    start_service();
    pass_through_service();

    running_service.send_signal(SIGTERM);
    running_service.wait();

    EXPECT_EQ(scratch.user_listing(),
              (Names{rendezvous_pipe, "tolm_service.log", service_pid_file}));
    EXPECT_EQ(lock_holder(), std::nullopt);
}

TEST_F(OwnDirectory, FifosOfDeadLaunchersAreSweptAndAllElseStays)
{
    scratch.make_user_directory();
    FakeLauncher dead(scratch.user_directory());
    const FakeLauncher alive(scratch.user_directory());
    dead.make_fifos();
    alive.make_fifos();
    dead.kill();
    ::mkfifo(in_directory("another_fifo").c_str(), 0600);
    fs::copy_file(scratch / "a", in_directory(std::string(request_pipe) + "1073741823"));

    start_service();
    pass_through_service();

    EXPECT_THAT(scratch.user_listing(), Not(Contains(dead.request_name())));
    EXPECT_THAT(scratch.user_listing(), Not(Contains(dead.response_name())));
    EXPECT_THAT(scratch.user_listing(), Contains(alive.request_name()));
    EXPECT_THAT(scratch.user_listing(), Contains(alive.response_name()));
    EXPECT_THAT(scratch.user_listing(), Contains("another_fifo"));
    EXPECT_THAT(scratch.user_listing(), Contains(std::string(request_pipe) + "1073741823"));
}

TEST_F(OwnDirectory, TheStartersWorkingDirectoryIsLeft)
{
    start_service();
    pass_through_service();

    EXPECT_EQ(fs::read_symlink(of_service("cwd")), "/");
}

TEST_F(OwnDirectory, ARelativeTemporaryDirectoryIsMeantFromWhereTheServiceStarted)
{
    scratch.make_user_directory();
    Invocation relative = launcher({"a", "b"});
    relative.environment["TMPDIR"] = "tmp";
    ::mkfifo(in_directory(rendezvous_pipe).c_str(), 0600);

    EXPECT_EQ(Program(relative).run(), success);
}

TEST_F(OwnDirectory, NoDescriptorOfTheStarterStaysOpen)
{
    scratch.make_user_directory();
    Invocation shell = service();
    shell.path = "/bin/sh";
    shell.arguments = {"-c", "exec 7>held; exec \"$0\" --foreground Kelvanport",
                       programs + "tolm_service"};
    Program starter(shell);

    starter.start();
    ASSERT_TRUE(until([&] { return lock_holder() == starter.pid(); }));

    const fs::path descriptors = "/proc/" + std::to_string(starter.pid()) + "/fd";
    for (const auto& entry : fs::directory_iterator(descriptors))
        EXPECT_NE(fs::read_symlink(entry), scratch / "held");
}

} // namespace
