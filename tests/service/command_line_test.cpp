// The service's command line.
#include "protocol/wire_names.h"
#include "tests/service/service_process.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class ServiceCommandLine : public ServiceProcess
{
  protected:
    Outcome run(std::vector<std::string> words) const
    {
        return Program(service(std::move(words))).run();
    }
};

TEST_F(ServiceCommandLine, HelpIsShown)
{
    const Outcome outcome = run({"--help"});

    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Usage: tolm_service"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ServiceCommandLine, TheVersionIsShown)
{
    EXPECT_EQ(run({"--version"}), (Outcome{.exit_status = 0, .out = "tolm_service 7.1.1.4\n"}));
}

TEST_F(ServiceCommandLine, AnUnknownOptionIsRefusedWithTheUsage)
{
    const Outcome outcome = run({"--no-such-option"});

    EXPECT_EQ(outcome.exit_status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("Usage: tolm_service"));
}

TEST_F(ServiceCommandLine, TheStatusOfNoServiceIsOne)
{
    EXPECT_EQ(run({"--status"}),
              (Outcome{.exit_status = 1, .out = "no tolm_service is running\n"}));
}

TEST_F(ServiceCommandLine, TheStatusTellsProcessTimeRequestsAndDisplays)
{
    start_service();
    launch({"a", "b"}, ":1");
    Program open(launcher({"a", "b"}, ":window"));
    open.start();
    ASSERT_TRUE(until([this] { return viewers_on(":window").size() == 2; }));
    ASSERT_TRUE(until([this] { return viewers_on(":1").size() == 1; }));

    const Outcome outcome = run({"--status"});

    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_THAT(outcome.out, MatchesRegex("tolm_service 7.1.1.4, process " +
                                          std::to_string(running_service.pid()) +
                                          ", since [0-9-]+T[0-9:]+Z\n"
                                          "requests served: 2\n"
                                          "display :1: windows open: 0, a viewer waits\n"
                                          "display :window: windows open: 1, a viewer waits\n"));
}

TEST_F(ServiceCommandLine, AServiceThatDoesNotTellIsStillRunning)
{
    start_service();
    ::kill(running_service.pid(), SIGSTOP);

    const Outcome outcome = run({"--status"});

    ::kill(running_service.pid(), SIGCONT);
    EXPECT_EQ(outcome, (Outcome{.exit_status = 0,
                                .out = "process " + std::to_string(running_service.pid()) +
                                       " runs, but does not answer\n"}));
}

TEST_F(ServiceCommandLine, StopEndsTheService)
{
    start_service();

    EXPECT_EQ(run({"--stop"}), success);

    EXPECT_EQ(running_service.wait(), success);
    EXPECT_EQ(lock_holder(), std::nullopt);
}

TEST_F(ServiceCommandLine, StopWithoutAServiceIsOne)
{
    EXPECT_EQ(run({"--stop"}), (Outcome{.exit_status = 1, .out = "no tolm_service is running\n"}));
}

TEST_F(ServiceCommandLine, WithoutForegroundItLeavesItsStarter)
{
    scratch.make_user_directory();

    EXPECT_EQ(run({"Kelvanport"}), success);

    ASSERT_TRUE(until([this] { return lock_holder().has_value(); }));
    const pid_t id = *lock_holder();
    EXPECT_EQ(::getsid(id), id);
    for (const char* stream : {"0", "1", "2"})
        EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(id) + "/fd/" + stream), "/dev/null");
}

TEST_F(ServiceCommandLine, TheInstallDirectoryIsTheViewersArgument)
{
    start_service();
    pass_through_service();
    ASSERT_TRUE(until([this] { return viewers().size() == 1; }));

    EXPECT_EQ(file_contents("/proc/" + std::to_string(viewers().front()) + "/cmdline"),
              programs + "quarnview" + '\0' + "Kelvanport" + '\0');
}

TEST_F(ServiceCommandLine, AComplaintAfterLeavingTheStarterGoesToTheSystemsLog)
{
    scratch.make_user_directory();
    fs::create_directory(scratch.user_directory() + "/" + service_pid_file);
    Invocation run = service({"Kelvanport"});
    shim(run, {});

    EXPECT_EQ(Program(run).run(), success);

    EXPECT_TRUE(until([this] {
        return shim_record().find("tolm_service.pid: Is a directory") != std::string::npos;
    }));
    EXPECT_THAT(shim_record(), HasSubstr("child syslog(3, "));
}

TEST_F(ServiceCommandLine, AHangUpOpensTheLogAnew)
{
    start_service();
    fs::rename(scratch.user_directory() + "/tolm_service.log", scratch / "moved");

    running_service.send_signal(SIGHUP);
    pass_through_service();
    launch({"a", "bad"});
    pass_through_service();

    EXPECT_THAT(service_log(), HasSubstr("a contributor is bad"));
    EXPECT_EQ(file_contents(scratch / "moved"), "");
}

} // namespace
