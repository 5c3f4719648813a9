// What the service makes of announcements.
#include "protocol/wire_names.h"
#include "tests/service/fake_launcher.h"
#include "tests/service/service_process.h"

#include <climits>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;

class Serving : public ServiceProcess
{
  protected:
    Serving() { start_service(); }

    void write_to_rendezvous(const std::string& bytes) const
    {
        const std::string path = scratch.user_directory() + "/" + rendezvous_pipe;
        const int rendezvous = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        EXPECT_EQ(::write(rendezvous, bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
        ::close(rendezvous);
    }

    bool rendezvous_is_empty() const
    {
        const std::string path = scratch.user_directory() + "/" + rendezvous_pipe;
        const int rendezvous = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        int waiting = -1;
        ::ioctl(rendezvous, FIONREAD, &waiting);
        ::close(rendezvous);
        return waiting == 0;
    }
};

TEST_F(Serving, TheViewersAnswerIsTheLaunchers)
{
    EXPECT_EQ(launch({"a", "b"}), success);
    EXPECT_EQ(launch({"a", "bad"}), silent_failure);
}

TEST_F(Serving, ASuccessLeavesNothingBehindAndLogsNothing)
{
    EXPECT_EQ(launch({"a", "b"}), success);

    EXPECT_TRUE(until([this] { return scratch.user_listing() == files_of_service(); }));
    EXPECT_EQ(service_log(), "");
}

TEST_F(Serving, AViewersReasonIsOneLogLine)
{
    launch({"a", "bad"});
    pass_through_service();

    EXPECT_THAT(service_log(),
                MatchesRegex("[0-9-]+T[0-9:]+Z launcher [0-9]+: a contributor is bad\n"));
}

TEST_F(Serving, SeveralAnnouncementsInOneReadAreAllServed)
{
    ::kill(running_service.pid(), SIGSTOP);
    Program one(launcher({"a", "b"}));
    Program two(launcher({"a", "bad"}));
    one.start();
    two.start();
    // Both have announced themselves when they wait in the opening of their own FIFOs.
    ASSERT_TRUE(until([this] { return scratch.user_listing().size() == 8; }));

    ::kill(running_service.pid(), SIGCONT);

    EXPECT_EQ(one.wait(), success);
    EXPECT_EQ(two.wait(), silent_failure);
}

TEST_F(Serving, AnAnnouncementInPiecesIsWaitedFor)
{
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    const std::string announcement = scratch.user_directory() + "/" + fake.request_name() + "\n" +
                                     scratch.user_directory() + "/" + fake.response_name() + "\n";

    write_to_rendezvous(announcement.substr(0, 20));
    EXPECT_TRUE(until([this] { return rendezvous_is_empty(); }));
    write_to_rendezvous(announcement.substr(20));

    fake.open_request();
    fake.open_response();
    fake.write_request("\n");
    EXPECT_THAT(fake.read_reply(), HasSubstr("<boolean>1</boolean>"));
}

TEST_F(Serving, AnAnnouncementLongerThanPipesKeepWholeIsServed)
{
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    const std::string detour(PIPE_BUF / 2, '/'); // means no more than one of them
    const std::string folder =
        scratch.path() + detour + scratch.user_directory().substr(scratch.path().size() + 1);

    write_to_rendezvous(folder + "/" + fake.request_name() + "\n" + folder + "/" +
                        fake.response_name() + "\n");

    fake.open_request();
    fake.open_response();
    fake.write_request("\n");
    EXPECT_THAT(fake.read_reply(), HasSubstr("<boolean>1</boolean>"));
}

TEST_F(Serving, AFileModeMaskOfTheStarterIsNotKept)
{
    pass_through_service();

    EXPECT_THAT(file_contents("/proc/" + std::to_string(running_service.pid()) + "/status"),
                HasSubstr("Umask:\t0077\n"));
}

TEST_F(Serving, ARequestLargerThanAPipeHoldsIsServed)
{
    const std::vector<std::string> words(1000, "./././././././././././././././././././././././a");

    EXPECT_EQ(launch(words), success);
}

TEST_F(Serving, ADirectoryNamedInAnotherWayIsTheSameDirectory)
{
    Invocation run = launcher({"a", "b"});
    run.environment["TMPDIR"] = scratch / "tmp/../tmp";

    EXPECT_EQ(Program(run).run(), success);
}

TEST_F(Serving, RubbishOnTheRendezvousDisturbsNobodyAndIsLogged)
{
    write_to_rendezvous("rubbish\n/etc/passwd\n");

    pass_through_service();

    EXPECT_THAT(service_log(), HasSubstr(" dropped an announcement: rubbish\n"));
    EXPECT_THAT(service_log(), HasSubstr(" dropped an announcement: /etc/passwd\n"));
}

TEST_F(Serving, ALinkInPlaceOfAFifoIsRefused)
{
    const FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    const std::string request = scratch.user_directory() + "/" + fake.request_name();
    ::rename(request.c_str(), (scratch / "moved").c_str());
    ASSERT_EQ(::symlink((scratch / "moved").c_str(), request.c_str()), 0);

    fake.announce();
    pass_through_service();

    EXPECT_THAT(service_log(), HasSubstr(fake.request_name() + " is no FIFO of this user"));
}

TEST_F(Serving, AFileInPlaceOfAFifoIsRefusedAndKept)
{
    const FakeLauncher fake(scratch.user_directory());
    const std::string path =
        "tmp/" + scratch.user_directory().substr(scratch.user_directory().rfind('/') + 1);
    const std::string response = scratch.write_file(path + "/" + fake.response_name(), "precious");
    ::mkfifo((scratch.user_directory() + "/" + fake.request_name()).c_str(), 0600);

    fake.announce();
    pass_through_service();

    EXPECT_THAT(service_log(), HasSubstr(fake.response_name() + " is no FIFO of this user"));
    EXPECT_EQ(file_contents(response), "precious");
}

TEST_F(Serving, AMissingFifoIsRefused)
{
    const FakeLauncher fake(scratch.user_directory());
    ::mkfifo((scratch.user_directory() + "/" + fake.request_name()).c_str(), 0600);

    fake.announce();
    pass_through_service();

    EXPECT_THAT(service_log(), HasSubstr(fake.response_name() + " is no FIFO of this user"));
}

} // namespace
