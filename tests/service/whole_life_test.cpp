// One whole life of the service, under valgrind.
#include "tests/service/service_process.h"

#include <csignal>
#include <gmock/gmock.h>

namespace
{

class WholeLife : public ServiceProcess
{
  protected:
    /** The service in the foreground. valgrind's status is 99 where it found an error or a leak. */
    Invocation under_valgrind() const
    {
        Invocation run = invocation(scratch, VALGRIND,
                                    {"--track-fds=yes", "--leak-check=full", "--error-exitcode=99",
                                     "--child-silent-after-fork=yes", "--log-file=" + findings_file,
                                     programs + "tolm_service", "--foreground", "Kelvanport"});
        run.environment["LD_PRELOAD"] = PIDFD_LIBRARY;
        return run;
    }

    std::string findings() const { return file_contents(findings_file); }

    const std::string findings_file = scratch / "findings";
};

TEST_F(WholeLife, EndsWithNoDescriptorOpenAndNothingLost)
{
    scratch.make_user_directory();
    Program service_under_valgrind(under_valgrind());
    service_under_valgrind.start();
    ASSERT_TRUE(until([&] { return lock_holder() == service_under_valgrind.pid(); }));
    EXPECT_EQ(launch({"a", "b"}), success);
    EXPECT_EQ(launch({"a", "bad"}), silent_failure);

    service_under_valgrind.send_signal(SIGTERM);

    EXPECT_EQ(service_under_valgrind.wait(), success) << findings();
    EXPECT_THAT(findings(), testing::HasSubstr("FILE DESCRIPTORS: 3 open (3 std) at exit"));
}

} // namespace
