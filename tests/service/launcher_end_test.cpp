// A launcher that ends before it was answered: its FIFOs go, the next launcher is served.
#include "tests/service/fake_launcher.h"
#include "tests/service/huge_file.h"
#include "tests/service/service_process.h"

#include <gmock/gmock.h>

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class LauncherEnd : public ServiceProcess
{
  protected:
    LauncherEnd()
    {
        start_service();
        fake.emplace(scratch.user_directory());
        fake->make_fifos();
    }

    void kill_and_expect_nothing_left()
    {
        fake->kill();
        pass_through_service();
        EXPECT_THAT(scratch.user_listing(), Not(Contains(fake->request_name())));
        EXPECT_THAT(scratch.user_listing(), Not(Contains(fake->response_name())));
    }

    std::optional<FakeLauncher> fake;
};

TEST_F(LauncherEnd, BeforeItOpenedAnything)
{
    fake->announce();
    pass_through_service();

    kill_and_expect_nothing_left();

    EXPECT_THAT(service_log(), HasSubstr(": the launcher ended before it was answered\n"));
}

TEST_F(LauncherEnd, BeforeItsAnnouncementWasRead)
{
    const FakeLauncher& announcer = *fake;
    fake->kill();
    announcer.announce();

    kill_and_expect_nothing_left();

    EXPECT_THAT(service_log(), HasSubstr(": not served: the launcher: No such process\n"));
}

TEST_F(LauncherEnd, BetweenItsOpens)
{
    fake->announce();
    fake->open_request();

    kill_and_expect_nothing_left();
}

TEST_F(LauncherEnd, AfterItsOpens)
{
    fake->announce();
    fake->open_request();
    fake->open_response();

    kill_and_expect_nothing_left();
}

TEST_F(LauncherEnd, InTheMiddleOfItsRequest)
{
    fake->announce();
    fake->open_request();
    fake->open_response();
    fake->write_request("<methodCall><methodName>");

    kill_and_expect_nothing_left();
}

TEST_F(LauncherEnd, WhileItsFilesAreRead)
{
    fake->announce();
    fake->open_request();
    fake->open_response();
    fake->write_request(
        "<methodCall><methodName>RequestHandler.Compare</methodName><params><param><value><array>"
        "<data><value><string>huge</string></value></data></array></value></param><param><value>"
        "<array><data><value><string>" +
        huge_file(scratch) +
        "</string></value></data></array></value></param>"
        "<param><value><string>utf8_file_delta</string></value></param></params></methodCall>\n");
    pass_through_service(); // others are served beside a huge file

    kill_and_expect_nothing_left();
}

} // namespace
