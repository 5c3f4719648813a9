// What the service makes of requests and announcements.
#include "protocol/wire_names.h"
#include "tests/service/fake_launcher.h"
#include "tests/service/service_process.h"

#include <fcntl.h>
#include <gmock/gmock.h>
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
};

TEST_F(Serving, WellFormedContributorsAreAnsweredWithSuccess)
{
    EXPECT_EQ(launch({"-encoding", "utf-8", "a", "b"}), success);

    EXPECT_EQ(scratch.user_listing(),
              (Names{rendezvous_pipe, "tolm_service.log", service_pid_file}));
    EXPECT_EQ(service_log(), "");
}

TEST_F(Serving, AMalformedContributorIsAnsweredWithFailureAndOneLogLine)
{
    Program run(launcher({"a", "bad"}));

    EXPECT_EQ(run.run(), silent_failure);

    EXPECT_THAT(service_log(), MatchesRegex("[0-9-]+T[0-9:]+Z launcher [0-9]+: " + scratch.path() +
                                            "/bad: offset 1: expected a valid utf-8 character\n"));
}

TEST_F(Serving, TextIsJudgedInTheEncodingThatTheCommandLineNames)
{
    scratch.write_file("wide", std::string("\x61\x00\xd8\x00\x61\x00", 6));

    EXPECT_EQ(launch({"-encoding", "utf-16le", "wide", "wide"}), success);
    EXPECT_EQ(launch({"-encoding", "utf-16be", "wide", "wide"}), silent_failure);
    EXPECT_THAT(service_log(), HasSubstr("/wide: offset 2: expected a valid utf-16be character\n"));
}

TEST_F(Serving, ACutFileIsToldByWhereItsLastCharacterBegins)
{
    scratch.write_file("cut", "ab\xe2\x82");

    EXPECT_EQ(launch({"a", "cut"}), silent_failure);

    EXPECT_THAT(service_log(),
                HasSubstr("/cut: offset 2: expected the rest of a utf-8 character\n"));
}

TEST_F(Serving, AMergeIsAnswered)
{
    EXPECT_EQ(launch({"-out", "m", "-base", "a", "a", "b"}), success);
    EXPECT_EQ(launch({"-out", "m", "-base", "bad", "a", "b"}), silent_failure);
}

TEST_F(Serving, DirectoriesAndEmptyFilesAreContributors)
{
    scratch.write_file("empty", "");

    EXPECT_EQ(launch({".", scratch.path()}), success);
    EXPECT_EQ(launch({"empty", "/dev/null"}), success);
}

TEST_F(Serving, AnUnreadableKindOfFileIsAnsweredWithFailure)
{
    const std::string fifo = scratch / "fifo";
    ::mkfifo(fifo.c_str(), 0600);
    const int both_sides = ::open(fifo.c_str(), O_RDWR | O_CLOEXEC); // so that no open blocks

    EXPECT_EQ(launch({"a", "fifo"}), silent_failure);

    ::close(both_sides);
    EXPECT_THAT(service_log(), HasSubstr("/fifo: expected a file or a directory\n"));
}

TEST_F(Serving, ARequestLargerThanAPipeHoldsIsServed)
{
    const std::vector<std::string> words(1000, "./././././././././././././././././././././././a");

    EXPECT_EQ(launch(words), success);
}

TEST_F(Serving, ANameMayHoldTheDocumentsOwnFragments)
{
    ::mkdir((scratch / "x<").c_str(), 0700);
    ::mkdir((scratch / "x</string><").c_str(), 0700);
    ::mkdir((scratch / "x</string></value><").c_str(), 0700);
    scratch.write_file("x</string></value></data><data><value><string>b", "hello\n");

    EXPECT_EQ(launch({"x</string></value></data><data><value><string>b", "a"}), success);
    EXPECT_EQ(launch({"a", "x</string></value></data><data><value><string>b", "bad"}),
              silent_failure);
    EXPECT_THAT(service_log(), HasSubstr(scratch.path() + "/bad: offset 1"));
}

TEST_F(Serving, ALineFeedInANameLeavesTheLogLineOne)
{
    scratch.write_file("two\nlines", "\xff");

    launch({"a", "two\nlines"});

    EXPECT_THAT(service_log(), HasSubstr("/two\\x0alines: offset 0"));
}

TEST_F(Serving, ARootRelativeToTheLaunchersDirectoryIsFollowedFromThere)
{
    Invocation run = launcher({"/a", "/b"});
    run.environment["QUARNFOLD_ROOT"] = ".";

    EXPECT_EQ(Program(run).run(), success);
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

    EXPECT_THAT(service_log(),
                HasSubstr(fake.request_name() + ": Too many levels of symbolic links"));
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

TEST_F(Serving, ADocumentThatIsNoRequestIsAnsweredWithFailure)
{
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    fake.announce();
    fake.open_request();
    fake.open_response();

    fake.write_request("<methodCall><params></params></methodCall>\n");

    EXPECT_THAT(fake.read_reply(), HasSubstr("<boolean>0</boolean>"));
    EXPECT_THAT(service_log(), HasSubstr("the request is none that this service knows\n"));
}

TEST_F(Serving, ARequestInPiecesIsWaitedFor)
{
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    fake.announce();
    fake.open_request();
    fake.open_response();

    fake.write_request("<methodCall><methodName>RequestHandler.Compare</methodName><params>");
    pass_through_service();
    fake.write_request("<param><value><array><data><value><string>n</string></value></data></array>"
                       "</value></param><param><value><array><data><value><string>/dev/null"
                       "</string></value></data></array></value></param><param><value><string>"
                       "utf8_file_delta</string></value></param></params></methodCall>");
    pass_through_service();
    fake.write_request("\n");

    const std::string reply = fake.read_reply();
    EXPECT_THAT(reply, HasSubstr("<boolean>1</boolean>"));
    EXPECT_LT(reply.size(), 1023U);
}

TEST_F(Serving, ARequestThatEndsTooEarlyIsAnsweredWithFailure)
{
    FakeLauncher fake(scratch.user_directory());
    fake.make_fifos();
    fake.announce();
    fake.open_request();
    fake.open_response();

    fake.write_request("<methodCall>");
    fake.close_request();

    EXPECT_THAT(fake.read_reply(), HasSubstr("<boolean>0</boolean>"));
    EXPECT_THAT(service_log(), HasSubstr("the request ended before it was complete\n"));
}

} // namespace
